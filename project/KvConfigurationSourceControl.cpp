#include "project/KvConfigurationSourceControl.h"

#include "project/KvConfigurationTexts.h"

struct CKvConfigurationSourceControl::CTables
{
    using T = CKvConfigurationSourceControl;
    static constexpr TKvNamedText<T> kAttributes[] = {{"Using", &T::m_type},
                                                      {"Url", &T::m_url},
                                                      {"username", &T::m_userId},
                                                      {"password", &T::m_userPwd}};
    static constexpr TKvRequiredText<T> kRequired[] = {
        {&T::m_type, "\tMissing Type !\n"},
        {&T::m_url, "\tMissing Url !\n"},
        {&T::m_userId, "\tMissing User Identifier !\n"},
        {&T::m_userPwd, "\tMissing User Password !\n"}};
};

CKvConfigurationSourceControl::~CKvConfigurationSourceControl() = default;

void CKvConfigurationSourceControl::Initialize(const CKvScriptTreeNode* node)
{
    if (node != nullptr)
        KvReadAttributes<CKvConfigurationSourceControl>(*node, CTables::kAttributes, *this);
}

void CKvConfigurationSourceControl::ToCKvScriptTreeNode(CKvScriptTreeNode* node) const
{
    if (node != nullptr)
        KvWriteAttributes<CKvConfigurationSourceControl>(*node, CTables::kAttributes, *this);
}

TKvString<char> CKvConfigurationSourceControl::WellFormed() const
{
    return KvUnderHeading("Warnings : \n",
                          KvListMissing<CKvConfigurationSourceControl>(CTables::kRequired, *this));
}
