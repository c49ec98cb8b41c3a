// Turns one build configuration into the command lines that configure and compile the game, compile
// its assets and package it. It starts no process.
//
// The sequence: Initialize(); while HasAnotherArchitecture(), the build-project command and then
// the compile-project command, which moves on to the next architecture (once for a build without
// architectures); the compile-assets command; the two commands of the packager.
//
// Words are joined as they are. Most paths, the build's name and the architectures stand in the
// command lines without quotes: one with a blank falls apart into several words. The path of the
// headers, the folders of the tools and of the configurations file stand in quotes, which a
// backslash at their end would take with it. Whoever writes the configurations file decides what
// is run.

#pragma once

#include "core/KvArray.h"
#include "core/KvString.h"

class CKvConfigurationBuild;
class CKvConfigurationManager;

/// A plain value. Fields stand in the documented order.
///
/// Each command is a program and its arguments. Both are empty when there is none to give: before
/// Initialize() has succeeded and, for the build-project and compile-project commands, when all
/// architectures have been compiled.
class CKvConfigurationHelper
{
public:
    CKvConfigurationHelper() = default;
    CKvConfigurationHelper(const CKvConfigurationHelper&) = default;
    CKvConfigurationHelper& operator=(const CKvConfigurationHelper&) = default;
    virtual ~CKvConfigurationHelper();

    /// Takes over what the commands of a build need. Relative paths in the configurations are
    /// relative to the folder of \a configurationFile. The output and temporary folders are made.
    /// The folder of the tools ends in a slash: some commands append to it as it is.
    ///
    /// Errors: a message on standard error.
    ///         - The build is not there, or the distribution that it names: no commands.
    ///         - The project file cannot be read or has no temporary folder: the commands lack it.
    void Initialize(const TKvString<char>& configurationFile,
                    const CKvConfigurationManager& manager, const TKvString<char>& buildName,
                    const TKvString<char>& toolsDirectory);

    /// Whether an architecture is left to compile; false for a build without architectures.
    bool HasAnotherArchitecture() const;

    /// CMake's configuring and compiling for the current architecture. Both make the folder that
    /// they work in.
    void GetBuildProjectCommand(TKvString<char>& program, TKvString<char>& arguments) const;

    /// Moves on to the next architecture.
    void GetCompileProjectCommand(TKvString<char>& program, TKvString<char>& arguments);

    /// The asset compiler. Makes the folder for the assets.
    void GetCompileAssetsCommand(TKvString<char>& program, TKvString<char>& arguments) const;

    /// The game packager, whose program text ends in a blank.
    void GetConfigurePackagerCommand(TKvString<char>& program, TKvString<char>& arguments) const;
    void GetPackageCommand(TKvString<char>& program, TKvString<char>& arguments) const;

    /// There is nothing to clean with: both texts stay as they are.
    void GetCleanCommand(TKvString<char>& program, TKvString<char>& arguments) const;

    /// "PLATFORM\API".
    TKvString<char> GetTargetBuildAsString() const;

protected:
    /// Reads the temporary folder from the project file and makes the folders of this build.
    ///
    /// Errors: false with a message on standard error when the file does not tell it.
    bool FindTmpDirectory(const TKvString<char>& outputSubdirectory);

    void GetKvGamePackagerCommand(TKvString<char>& program, TKvString<char>& arguments,
                                  const char* mode) const;

    /// Indices into the tables of known platforms and APIs; an unknown text leaves them as they
    /// were.
    int m_platformIndex = 0;
    int m_apiIndex = 0;
    TKvString<char> m_platform;
    TKvString<char> m_api;
    int m_architectureIndex = 0;
    CKvArray<TKvString<char>> m_architectures;
    TKvString<char> m_toolsDirectory;
    TKvString<char> m_cmakePath;
    TKvString<char> m_buildName;
    TKvString<char> m_args;
    TKvString<char> m_outputDirectory;
    TKvString<char> m_platformTemporaryDirectory;
    TKvString<char> m_temporaryDirectory;
    TKvString<char> m_cmakeListsPath;
    TKvString<char> m_libraryPath;
    TKvString<char> m_headerPath;
    TKvString<char> m_projectFile;
    TKvString<char> m_configurationDirectory;
    TKvString<char> m_sourceControlUserId;
    TKvString<char> m_sourceControlUserPwd;
    TKvString<char> m_sourceControlUrl;

private:
    void Forget();
    void TakeOver(const CKvConfigurationBuild& build);

    /// Whether there is anything to configure and compile.
    bool CanCompile() const;

    /// CMake run in the folder of the current architecture, which is made, with these words.
    void GetCMakeCommand(const TKvString<char>& words, TKvString<char>& program,
                         TKvString<char>& arguments) const;

    /// Empty when there is none.
    TKvString<char> GetCurrentArchitecture() const;
    TKvString<char> GetGeneratorOptions() const;

    bool m_isReady = false;
};
