#include "fsm/KvAction.h"

CKvAction::~CKvAction() = default;
