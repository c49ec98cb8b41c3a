// One way to build a game: for which platform and graphics API, against which libraries, and where
// the result is shipped.

#pragma once

#include <utility>

#include "core/KvArray.h"
#include "core/KvString.h"

class CKvScriptTreeNode;

/// A plain value. Fields stand in the documented order.
class CKvConfigurationBuild
{
public:
    CKvConfigurationBuild() = default;
    CKvConfigurationBuild(const CKvConfigurationBuild&) = default;
    CKvConfigurationBuild& operator=(const CKvConfigurationBuild&) = default;
    virtual ~CKvConfigurationBuild();

    TKvString<char> GetName() const { return m_name; }
    TKvString<char> GetPlatform() const { return m_platform; }

    /// The name of a distribution configuration; empty for a build that is not shipped.
    TKvString<char> GetDistribution() const { return m_distribution; }

    TKvString<char> GetApi() const { return m_api; }

    /// Where the engine's headers and libraries lie.
    TKvString<char> GetHeaderPath() const { return m_headerPath; }
    TKvString<char> GetLibraryPath() const { return m_libraryPath; }

    /// More arguments for CMake.
    TKvString<char> GetArgs() const { return m_args; }

    /// Every blank becomes "_".
    void SetName(const TKvString<char>& name);

    void SetPlatform(TKvString<char> platform) { m_platform = std::move(platform); }
    void SetDistribution(TKvString<char> distribution) { m_distribution = std::move(distribution); }
    void SetApi(TKvString<char> api) { m_api = std::move(api); }
    void SetHeaderPath(TKvString<char> path) { m_headerPath = std::move(path); }
    void SetLibraryPath(TKvString<char> path) { m_libraryPath = std::move(path); }

    /// Every double quote becomes "&quot;", here and in the command lines made of it.
    void SetArgs(const TKvString<char>& args);

    // --- The architectures to build for, without duplicates. Texts are compared byte for byte.

    CKvArray<TKvString<char>> GetArchitectures() const { return m_architectures; }

    /// The index of an architecture, or -1.
    int FindArchitecture(const TKvString<char>& architecture) const;

    /// Appends one that is not there yet.
    void AddArchitecture(const TKvString<char>& architecture);

    /// Removes it if it is there.
    void RemoveArchitecture(const TKvString<char>& architecture);

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
    TKvString<char> m_platform;
    TKvString<char> m_distribution;
    TKvString<char> m_api;
    TKvString<char> m_headerPath;
    TKvString<char> m_libraryPath;
    TKvString<char> m_args;
    CKvArray<TKvString<char>> m_architectures;
};
