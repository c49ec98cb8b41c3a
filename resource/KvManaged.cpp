#include "resource/KvManaged.h"

const CKvRTTI CKvManaged::TYPE("CKvManaged", nullptr);

CKvManaged::~CKvManaged() = default;

const CKvArray<CKvReflectionInformation>& CKvManaged::GetReflectionInformationArray() const
{
    static const CKvArray<CKvReflectionInformation> s_none;
    return s_none;
}

void CKvManaged::SaveVariables()
{
    for (const CKvReflectionInformation& information : GetReflectionInformationArray())
        m_savedValues.Add(CKvReflectionInformationSnapShot(information, this));
}

void CKvManaged::ResetVariables()
{
    for (CKvReflectionInformationSnapShot& saved : m_savedValues)
        saved.BackUp();
}
