// A game project as its tools see it: the settings, the file extensions that they handle, and the
// project file that holds both. docs/formats/project.md describes the file.

#pragma once

#include <memory>

#include "core/KvArray.h"
#include "core/KvIdentifier.h"
#include "core/KvString.h"
#include "file/KvFilePath.h"
#include "project/KvProjectSettingsGroups.h"

class CKvScriptTreeNode;

/// Fields stand in the documented order.
///
/// Whenever the file is written, all in it that this class does not know stays as it is, and the
/// file takes the old one's place when it is complete: see KvSaveDocumentFile().
class CKvProject
{
public:
    /// Reads the file. When that fails, a project with default settings and no extensions.
    explicit CKvProject(const TKvString<char>& file);

    /// The same, with these settings on top. Nothing is saved.
    CKvProject(const TKvString<char>& name, const TKvString<char>& file,
               const TKvString<char>& genericPath, const TKvString<char>& temporaryPath,
               const TKvString<char>& icon, const TKvString<char>& splashScreen, int major,
               int minor);

    CKvProject(const CKvProject&) = delete;
    CKvProject& operator=(const CKvProject&) = delete;
    virtual ~CKvProject();

    /// Starts again from default settings and reads the file.
    ///
    /// Errors: false when the file cannot be loaded, has no "project_settings" or is of a version
    ///         before 1.1; the extensions are then as they were.
    bool Initialize();

    /// Writes settings and extensions to the file. Extensions that are in the file alone stay
    /// there.
    ///
    /// Errors: as KvSaveDocumentFile(); so one setting or extension with '"', '<' or '&' keeps the
    ///         whole project from being saved.
    [[nodiscard]] bool Save();

    const TKvString<char>& GetProjectFile() const { return m_projectFile.GetAsString(); }

    /// Takes over the path in native form. Reads and writes nothing.
    void SetProjectFile(const TKvString<char>& file);

    /// With its separator.
    TKvString<char> GetProjectDirectory() const { return m_projectFile.getFilePath(); }

    // --- Settings

    /// The group of that name, the root included, or null.
    CKvProjectSettings* FindGroupSettings(const CKvIdentifier& identifier) const;

    /// Sets a field from the bool, int, float or TKvString<char> at \a value, by the field's kind.
    ///
    /// Errors: false, and nothing changed, when value is null or there is no such group or field.
    bool SetProperty(const CKvIdentifier& group, const CKvIdentifier& key, void* value);

    const TKvString<char>& GetProjectGenericPath() const;
    const TKvString<char>& GetProjectTempDirectory() const;

    // The settings' paths made absolute against the project's directory, a backslash at the end:
    // see KvResolveDocumentPath().
    void GetRealGenericPath(TKvString<char>& out) const;
    void GetRealTemporaryPath(TKvString<char>& out) const;

    /// "Windows\DX9\" below the real temporary path.
    void GetRealCompiledPath(TKvString<char>& out) const;

    /// Appends the languages that are on, in the order English, French, Italian, German, Spanish.
    void GetProjectLanguagesArray(CKvArray<CKvIdentifier>& out) const;

    // --- Extensions. Texts are compared byte for byte. Whatever becomes of the file, the list
    // changes; a file that is not there yet is left to Save().
    //
    // Errors: when the file cannot be loaded or saved it is as it was, and KvReportUnsavedFile()
    //         tells on standard error.

    const CKvArray<TKvString<char>>& GetExtensions() const { return m_extensions; }
    bool ContainsExtension(const TKvString<char>& extension) const;

    /// Nothing is saved.
    void SetExtensions(const CKvArray<TKvString<char>>& extensions) { m_extensions = extensions; }

    /// Also when it is in the list already.
    void AddExtension(const TKvString<char>& extension);

    /// Only those that are not in the list yet.
    void AddExtensions(const CKvArray<TKvString<char>>& extensions);

    /// The first equal one, if any.
    void RemoveExtension(const TKvString<char>& extension);

    void RemoveAllExtensions();

    /// Makes the extensions in the file those of the list.
    void SaveExtensions();

protected:
    bool SerializeTo();
    bool SerializeFrom();

private:
    const TKvString<char>& GetGeneralText(const char* key) const;
    void GetRealPath(const TKvString<char>& setting, TKvString<char>& out) const;

    /// Loads the file, lets \a edit change the document and saves it.
    template <class TEdit>
    void EditFile(TEdit edit);

    CKvFilePath m_projectFile;
    CKvArray<TKvString<char>> m_extensions;
    std::unique_ptr<CKvProjectSettingsGeneral> m_settings;
};
