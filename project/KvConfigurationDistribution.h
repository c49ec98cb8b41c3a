// One way to ship a game: the kind of distribution and what its service wants to know.

#pragma once

#include <utility>

#include "core/KvString.h"

class CKvScriptTreeNode;

/// A plain value. Fields stand in the documented order. The password is kept and stored in clear
/// text.
class CKvConfigurationDistribution
{
public:
    CKvConfigurationDistribution() = default;
    CKvConfigurationDistribution(const CKvConfigurationDistribution&) = default;
    CKvConfigurationDistribution& operator=(const CKvConfigurationDistribution&) = default;
    virtual ~CKvConfigurationDistribution();

    TKvString<char> GetName() const { return m_name; }

    /// The kind, such as "Steam".
    TKvString<char> GetDistribution() const { return m_distribution; }

    TKvString<char> GetSteamBuildersPath() const { return m_steamBuildersPath; }
    TKvString<char> GetSteamAccount() const { return m_steamAccount; }
    TKvString<char> GetSteamPassword() const { return m_steamPassword; }
    TKvString<char> GetAppID() const { return m_appId; }
    TKvString<char> GetDesc() const { return m_desc; }
    TKvString<char> GetDepotID() const { return m_depotId; }

    void SetName(TKvString<char> name) { m_name = std::move(name); }
    void SetDistribution(TKvString<char> distribution) { m_distribution = std::move(distribution); }
    void SetSteamBuildersPath(TKvString<char> path) { m_steamBuildersPath = std::move(path); }

    /// Every blank becomes "_".
    void SetSteamAccount(const TKvString<char>& account);

    void SetSteamPassword(TKvString<char> password) { m_steamPassword = std::move(password); }
    void SetAppID(TKvString<char> appId) { m_appId = std::move(appId); }
    void SetDesc(TKvString<char> desc) { m_desc = std::move(desc); }
    void SetDepotID(TKvString<char> depotId) { m_depotId = std::move(depotId); }

    /// Whether builds for a platform can be shipped this way: Steam takes those for Windows, Linux
    /// and Mac.
    bool IsCompatibleWith(const TKvString<char>& platform) const;

    // --- The form in the file

    /// Takes all fields from a node; what the node lacks becomes empty. Null changes nothing.
    void Initialize(const CKvScriptTreeNode* node);

    /// Ownership: the caller's, with all below it.
    [[nodiscard]] CKvScriptTreeNode* ToCKvScriptTreeNode() const;

    /// What is missing, one line for each under a heading; empty when nothing is.
    TKvString<char> WellFormed() const;

private:
    struct CTables;

    TKvString<char> m_name;
    TKvString<char> m_distribution;
    TKvString<char> m_steamBuildersPath;
    TKvString<char> m_steamAccount;
    TKvString<char> m_steamPassword;
    TKvString<char> m_appId;
    TKvString<char> m_desc;
    TKvString<char> m_depotId;
};
