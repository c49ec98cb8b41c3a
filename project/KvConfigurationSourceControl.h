// How to reach the source control that a game is kept in.

#pragma once

#include "core/KvString.h"

class CKvScriptTreeNode;

/// A plain value. Fields stand in the documented order. The password is kept and stored in clear
/// text.
class CKvConfigurationSourceControl
{
public:
    CKvConfigurationSourceControl() = default;
    CKvConfigurationSourceControl(const CKvConfigurationSourceControl&) = default;
    CKvConfigurationSourceControl& operator=(const CKvConfigurationSourceControl&) = default;
    virtual ~CKvConfigurationSourceControl();

    const TKvString<char>& GetType() const { return m_type; }
    const TKvString<char>& GetUrl() const { return m_url; }
    const TKvString<char>& GetUserId() const { return m_userId; }
    const TKvString<char>& GetUserPwd() const { return m_userPwd; }

    void SetType(const TKvString<char>& type) { m_type = type; }
    void SetUrl(const TKvString<char>& url) { m_url = url; }
    void SetUserId(const TKvString<char>& userId) { m_userId = userId; }
    void SetUserPwd(const TKvString<char>& userPwd) { m_userPwd = userPwd; }

    /// Takes all fields from a node; what the node lacks becomes empty. Null changes nothing.
    void Initialize(const CKvScriptTreeNode* node);

    /// Sets the node's attributes; those that it lacks are appended. Null is left alone.
    void ToCKvScriptTreeNode(CKvScriptTreeNode* node) const;

    /// What is missing, one line for each under a heading; empty when nothing is.
    TKvString<char> WellFormed() const;

private:
    struct CTables;

    TKvString<char> m_type;
    TKvString<char> m_url;
    TKvString<char> m_userId;
    TKvString<char> m_userPwd;
};
