// What all builds of a game start from: its project file and its CMake lists.

#pragma once

#include <utility>

#include "core/KvString.h"

class CKvScriptTreeNode;

/// A plain value. Fields stand in the documented order.
class CKvConfigurationProject
{
public:
    CKvConfigurationProject() = default;
    CKvConfigurationProject(const CKvConfigurationProject&) = default;
    CKvConfigurationProject& operator=(const CKvConfigurationProject&) = default;
    virtual ~CKvConfigurationProject();

    TKvString<char> GetProjectFile() const { return m_projectFile; }
    TKvString<char> GetProjectCMakeLists() const { return m_projectCMakeLists; }

    void SetProjectFile(TKvString<char> file) { m_projectFile = std::move(file); }
    void SetProjectCMakeLists(TKvString<char> path) { m_projectCMakeLists = std::move(path); }

    /// Takes all fields from a node; what the node lacks becomes empty. Null changes nothing.
    void Initialize(const CKvScriptTreeNode* node);

    /// Sets the node's attributes; those that it lacks are appended. Null is left alone.
    void ToCKvScriptTreeNode(CKvScriptTreeNode* node) const;

    /// What is missing, one line for each under a heading; empty when nothing is.
    TKvString<char> WellFormed() const;

private:
    struct CTables;

    TKvString<char> m_projectFile;
    TKvString<char> m_projectCMakeLists;
};
