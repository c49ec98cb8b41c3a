#include "tool/FSMInstance.h"

namespace {

void DeleteAll(const CKvArray<CFSMInstance*>& instances)
{
    for (const CFSMInstance* instance : instances)
        delete instance;
}

}  // namespace

CFSMInstance::~CFSMInstance() = default;

CFSMInstanceLists::~CFSMInstanceLists()
{
    DeleteAll(global);
    for (const CKvArray<CFSMInstance*>& instances : byType)
        DeleteAll(instances);
}
