#include "reflection/KvReflectionState.h"

CKvReflectionState::CKvReflectionState(void* object,
                                       const CKvArray<CKvReflectionInformation>& informations)
    : m_informations(informations)
{
    for (const CKvReflectionInformation& information : m_informations) {
        CKvReflectionValue value;
        value.type = information.GetType();
        const CKvBasicVariant current = information.GetValueVariant(object);
        if (current.ByteSize() <= static_cast<int>(value.bytes.size()))
            current.MemoryCopyTo(value.bytes.data());
        m_values.Add(value);
    }
}
