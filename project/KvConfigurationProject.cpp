#include "project/KvConfigurationProject.h"

#include "project/KvConfigurationTexts.h"

struct CKvConfigurationProject::CTables
{
    using T = CKvConfigurationProject;
    static constexpr TKvNamedText<T> kAttributes[] = {
        {"ProjectFile", &T::m_projectFile}, {"ProjectCMakeLists", &T::m_projectCMakeLists}};
    static constexpr TKvRequiredText<T> kRequired[] = {
        {&T::m_projectFile, "\tMissing Project File Path !\n"},
        {&T::m_projectCMakeLists, "\tMissing CMakeLists Path !\n"}};
};

CKvConfigurationProject::~CKvConfigurationProject() = default;

void CKvConfigurationProject::Initialize(const CKvScriptTreeNode* node)
{
    if (node != nullptr)
        KvReadAttributes<CKvConfigurationProject>(*node, CTables::kAttributes, *this);
}

void CKvConfigurationProject::ToCKvScriptTreeNode(CKvScriptTreeNode* node) const
{
    if (node != nullptr)
        KvWriteAttributes<CKvConfigurationProject>(*node, CTables::kAttributes, *this);
}

TKvString<char> CKvConfigurationProject::WellFormed() const
{
    return KvUnderHeading("Warnings : \n",
                          KvListMissing<CKvConfigurationProject>(CTables::kRequired, *this));
}
