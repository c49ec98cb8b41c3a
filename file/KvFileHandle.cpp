#include "file/KvFileHandle.h"

CKvFileHandle::~CKvFileHandle() = default;
