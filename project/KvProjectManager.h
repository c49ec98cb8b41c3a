// The project that a tool is working on.

#pragma once

#include <memory>

#include "core/KvArray.h"
#include "core/KvString.h"

class CKvProject;
class CKvScriptTreeNode;

/// Fields stand in the documented order.
///
/// Errors: without a current project texts and lists are empty, nodes null, and changes do nothing.
class CKvProjectManager
{
public:
    /// The one instance, made on the first call and never destroyed.
    static CKvProjectManager& GetInstance();

    CKvProjectManager(const CKvProjectManager&) = delete;
    CKvProjectManager& operator=(const CKvProjectManager&) = delete;
    virtual ~CKvProjectManager();

    /// Null for none.
    CKvProject* GetCurrentProject() const { return m_current.get(); }

    /// Ownership: the manager takes the project; another one that was current is deleted.
    void SetCurrentProject(CKvProject* project);

    /// Makes the project of that file current.
    ///
    /// Errors: always true. A file that cannot be read gives a project with default settings.
    bool LoadProject(const TKvString<char>& file);

    // The current project's.
    TKvString<char> GetCurrentProjectFile() const;
    TKvString<char> GetCurrentProjectDirectory() const;
    CKvArray<TKvString<char>> GetCurrentProjectExtensions() const;
    void AddExtensionInCurrentProject(const TKvString<char>& extension);
    void AddExtensionsInCurrentProject(const CKvArray<TKvString<char>>& extensions);
    void RemoveExtensionInCurrentProject(const TKvString<char>& extension);
    void RemoveAllExtensionsInCurrentProject();

    /// A copy of what the current project's file holds for the editor.
    ///
    /// Ownership: the caller's, to release with CKvScriptTreeNodeRelease.
    /// Errors:    null when the file cannot be loaded or holds none.
    CKvScriptTreeNode* GetEditorProjectSettings() const;

    /// Whether \a folder, which ends in a backslash, has the folders of a game's assets: "Generic"
    /// with "Game", "Levels", "Resources" and "Videos" alone, and one for each kind of resource in
    /// "Resources". Names count with their letter case.
    ///
    /// As in all listings, a symbolic link is no folder, whatever it leads to.
    static bool IsAcceptableWorkspace(const TKvString<char>& folder);

    /// For the tools: the library neither fills nor reads it.
    CKvArray<void*>& GetToolData() { return m_toolData; }

private:
    CKvProjectManager();

    std::unique_ptr<CKvProject> m_current;
    CKvArray<void*> m_toolData;
};
