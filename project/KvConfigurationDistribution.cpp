#include "project/KvConfigurationDistribution.h"

#include "project/KvConfigurationTexts.h"

namespace {

constexpr const char* kNode = "distrib";
constexpr const char* kValue = "Value";

}  // namespace

struct CKvConfigurationDistribution::CTables
{
    using T = CKvConfigurationDistribution;
    static constexpr TKvNamedText<T> kAttributes[] = {{"Name", &T::m_name},
                                                      {"Distribution", &T::m_distribution}};
    static constexpr TKvNamedText<T> kChildren[] = {{"SteamBuildersPath", &T::m_steamBuildersPath},
                                                    {"SteamAccount", &T::m_steamAccount},
                                                    {"SteamPassword", &T::m_steamPassword},
                                                    {"AppID", &T::m_appId},
                                                    {"Desc", &T::m_desc},
                                                    {"DepotID", &T::m_depotId}};
    static constexpr TKvRequiredText<T> kRequired[] = {
        {&T::m_name, "\tMissing Name !\n"}, {&T::m_distribution, "\tMissing Distribution !\n"}};
};

CKvConfigurationDistribution::~CKvConfigurationDistribution() = default;

void CKvConfigurationDistribution::SetSteamAccount(const TKvString<char>& account)
{
    m_steamAccount = KvReplaceAll(account, " ", "_");
}

bool CKvConfigurationDistribution::IsCompatibleWith(const TKvString<char>& platform) const
{
    return m_distribution == "Steam" &&
           (platform == "Windows" || platform == "Linux" || platform == "Mac");
}

void CKvConfigurationDistribution::Initialize(const CKvScriptTreeNode* node)
{
    if (node == nullptr)
        return;
    KvReadAttributes<CKvConfigurationDistribution>(*node, CTables::kAttributes, *this);
    for (const auto& text : CTables::kChildren)
        this->*text.text = TKvString<char>();
    for (int i = 0; i < node->GetChildCount(); ++i) {
        const CKvScriptTreeNode& child = *node->GetChild(i);
        for (const auto& text : CTables::kChildren) {
            if (child.GetIdentifier() == CKvIdentifier(text.name))
                this->*text.text = child.GetAttributeValueAsString(CKvIdentifier(kValue));
        }
    }
    SetSteamAccount(m_steamAccount);
}

CKvScriptTreeNode* CKvConfigurationDistribution::ToCKvScriptTreeNode() const
{
    CKvOwnedScriptTreeNode node(new CKvScriptTreeNode(CKvIdentifier(kNode)));
    KvWriteAttributes<CKvConfigurationDistribution>(*node, CTables::kAttributes, *this);
    for (const auto& text : CTables::kChildren)
        KvSetAttribute(*node->AddNewChild(CKvIdentifier(text.name)), kValue, this->*text.text);
    return node.release();
}

TKvString<char> CKvConfigurationDistribution::WellFormed() const
{
    return KvUnderHeading("\"" + m_name + "\" warnings : \n",
                          KvListMissing<CKvConfigurationDistribution>(CTables::kRequired, *this));
}
