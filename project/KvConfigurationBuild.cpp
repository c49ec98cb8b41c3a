#include "project/KvConfigurationBuild.h"

#include "project/KvConfigurationTexts.h"

namespace {

constexpr const char* kNode = "build";
constexpr const char* kArchitecture = "Architecture";
constexpr const char* kName = "Name";

}  // namespace

struct CKvConfigurationBuild::CTables
{
    using T = CKvConfigurationBuild;
    static constexpr TKvNamedText<T> kAttributes[] = {
        {kName, &T::m_name}, {"Platform", &T::m_platform},     {"Distribution", &T::m_distribution},
        {"Api", &T::m_api},  {"HeaderPath", &T::m_headerPath}, {"LibraryPath", &T::m_libraryPath},
        {"Args", &T::m_args}};
    static constexpr TKvRequiredText<T> kRequired[] = {
        {&T::m_platform, "\tMissing Platform !\n"},
        {&T::m_name, "\tMissing Configuration Name !\n"},
        {&T::m_api, "\tMissing Api !\n"},
        {&T::m_libraryPath, "\tMissing KVSDK Library Directory !\n"},
        {&T::m_headerPath, "\tMissing Headers Directory !\n"}};
};

CKvConfigurationBuild::~CKvConfigurationBuild() = default;

void CKvConfigurationBuild::SetName(const TKvString<char>& name)
{
    m_name = KvReplaceAll(name, " ", "_");
}

void CKvConfigurationBuild::SetArgs(const TKvString<char>& args)
{
    m_args = KvReplaceAll(args, "\"", "&quot;");
}

int CKvConfigurationBuild::FindArchitecture(const TKvString<char>& architecture) const
{
    for (int i = 0; i < m_architectures.GetCount(); ++i) {
        if (m_architectures[i] == architecture)
            return i;
    }
    return -1;
}

void CKvConfigurationBuild::AddArchitecture(const TKvString<char>& architecture)
{
    if (FindArchitecture(architecture) < 0)
        m_architectures.Add(architecture);
}

void CKvConfigurationBuild::RemoveArchitecture(const TKvString<char>& architecture)
{
    const int index = FindArchitecture(architecture);
    if (index >= 0)
        m_architectures.RemoveAt(index);
}

void CKvConfigurationBuild::Initialize(const CKvScriptTreeNode* node)
{
    if (node == nullptr)
        return;
    KvReadAttributes<CKvConfigurationBuild>(*node, CTables::kAttributes, *this);
    SetName(m_name);
    SetArgs(m_args);
    m_architectures.Clear();
    CKvArray<const CKvScriptTreeNode*> architectures;
    node->GetChildrenByIdArray(CKvIdentifier(kArchitecture), architectures);
    for (const CKvScriptTreeNode* architecture : architectures)
        AddArchitecture(architecture->GetAttributeValueAsString(CKvIdentifier(kName)));
}

CKvScriptTreeNode* CKvConfigurationBuild::ToCKvScriptTreeNode() const
{
    CKvOwnedScriptTreeNode node(new CKvScriptTreeNode(CKvIdentifier(kNode)));
    KvWriteAttributes<CKvConfigurationBuild>(*node, CTables::kAttributes, *this);
    for (const TKvString<char>& architecture : m_architectures)
        KvSetAttribute(*node->AddNewChild(CKvIdentifier(kArchitecture)), kName, architecture);
    return node.release();
}

TKvString<char> CKvConfigurationBuild::WellFormed() const
{
    TKvString<char> complaints = KvListMissing<CKvConfigurationBuild>(CTables::kRequired, *this);
    if (m_platform == "Android" && m_architectures.IsEmpty())
        complaints += "\tAndroid requires at least one Achitecture !\n";
    return KvUnderHeading("\"" + m_name + "\" warnings : \n", complaints);
}
