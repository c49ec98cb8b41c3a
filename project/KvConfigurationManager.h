// The configurations file of a game: read, edited, checked and written. It holds the build inputs,
// the source-control access and any number of build and distribution configurations.
// docs/formats/configurations.md describes the file.

#pragma once

#include <memory>

#include "core/KvArray.h"
#include "core/KvIdentifier.h"
#include "core/KvString.h"
#include "project/KvConfigurationBuild.h"
#include "project/KvConfigurationDistribution.h"
#include "project/KvConfigurationProject.h"
#include "project/KvConfigurationSourceControl.h"
#include "project/KvDocumentFile.h"
#include "scripttree/KvScriptTree.h"

/// Fields stand in the documented order.
///
/// Configurations are named by their names' identifiers, in any ASCII case; of several with one
/// name the first counts. What they hold may differ from the file until it is saved.
///
/// Ownership: the manager owns the configurations that it gives out. A build or distribution is
///            valid until it is removed or the next LoadConfig(); the other two as long as the
///            manager.
class CKvConfigurationManager
{
public:
    CKvConfigurationManager() = default;
    CKvConfigurationManager(const CKvConfigurationManager&) = delete;
    CKvConfigurationManager& operator=(const CKvConfigurationManager&) = delete;
    virtual ~CKvConfigurationManager();

    // --- Loading

    /// Stores the path and loads.
    void Initialize(const char* path);

    /// Reads the file anew; one that is not there is made, for its owner alone to read. Unsaved
    /// changes are dropped. An empty or damaged file reads as one without configurations.
    ///
    /// Errors: "Cannot open file PATH" on standard error. The configurations are then as they were,
    ///         but cannot be saved or reset until a load succeeds.
    void LoadConfig();

    const TKvString<char>& GetBuildFilePath() const { return m_buildFilePath; }

    // --- Single configurations. Null when there is none: before the first load that succeeded, or
    // of that name.

    CKvConfigurationProject* GetProject() const { return m_project.get(); }
    CKvConfigurationSourceControl* GetSourceControl() const { return m_sourceControl.get(); }
    CKvConfigurationBuild* GetBuild(const CKvIdentifier& name) const;
    CKvConfigurationDistribution* GetDistrib(const CKvIdentifier& name) const;

    // --- The lists. Nothing is saved.

    /// Appends a configuration, whatever names are there. Blanks in a build's name become "_".
    CKvConfigurationBuild* AddBuild(const TKvString<char>& name);
    CKvConfigurationDistribution* AddDistrib(const TKvString<char>& name);

    /// Remove the configuration of that name, if there is one.
    void RemoveBuild(const CKvIdentifier& name);
    void RemoveDistrib(const TKvString<char>& name);

    /// Read a configuration again as it was loaded or last saved. Nothing when the list or the file
    /// has none of that name.
    void ResetBuild(const CKvIdentifier& name);
    void ResetDistrib(const CKvIdentifier& name);

    /// A name that no configuration of the list has, "NewConfig_001" or "NewDistrib_001" at first.
    /// No number comes twice in a run of the program.
    TKvString<char> GenerateAutoNameBuild();
    TKvString<char> GenerateAutoNameDistrib();

    /// The names in list order, of all or of those that are compatible with a platform.
    CKvArray<TKvString<char>> GetListBuild() const;
    CKvArray<TKvString<char>> GetListDistrib() const;
    CKvArray<TKvString<char>> GetListDistribForPlatform(const TKvString<char>& platform) const;

    /// What is missing in any of them.
    TKvString<char> AllWellFormedBuild() const;
    TKvString<char> AllWellFormedDistrib() const;

    // --- Saving. Each replaces the file in one step by a new one that differs in the named part
    // alone. A damaged file is first kept as a copy, see KvSaveDocumentFile().
    //
    // Errors: "Cannot save file PATH" on standard error, and the file as it was, when there is no
    //         document or no configuration of that name, a text could not be read back (see
    //         KvCanStoreText(); double quotes in a build's arguments are stored as "&quot;"), or
    //         writing fails.

    /// Everything.
    void SaveAll();

    /// The list of builds or distributions.
    void SaveAllBuild();
    void SaveAllDistrib();

    /// One configuration, which becomes the last of its list in the file.
    void SaveCurrentBuild(const CKvIdentifier& name);
    void SaveCurrentDistrib(const CKvIdentifier& name);

private:
    void ForgetDocument();
    void FindSections();
    bool ReadDocument();

    /// Lets \a edit change the document and saves that; the document is as before if either fails.
    template <class TEdit>
    void SaveEdited(TEdit edit);

    TKvString<char> m_buildFilePath;
    CKvScriptTree m_document;
    CKvScriptTreeNode* m_projectNode = nullptr;
    CKvScriptTreeNode* m_sourceControlNode = nullptr;
    CKvScriptTreeNode* m_buildsNode = nullptr;
    CKvScriptTreeNode* m_distribsNode = nullptr;
    std::unique_ptr<CKvConfigurationProject> m_project;
    std::unique_ptr<CKvConfigurationSourceControl> m_sourceControl;
    CKvArray<std::unique_ptr<CKvConfigurationBuild>> m_builds;
    CKvArray<std::unique_ptr<CKvConfigurationDistribution>> m_distribs;

    /// What the file held when it was loaded or last saved.
    EKvDocumentFile m_file = EKvDocumentFile::Absent;
};
