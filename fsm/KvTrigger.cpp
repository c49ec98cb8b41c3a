#include "fsm/KvTrigger.h"

CKvTrigger::~CKvTrigger() = default;

void CKvTrigger::Initialize(CKvScriptTreeNode* /*node*/) {}
