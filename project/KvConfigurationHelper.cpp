#include "project/KvConfigurationHelper.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string>

#include "core/KvIdentifier.h"
#include "file/KvFile.h"
#include "file/KvFileOperations.h"
#include "file/KvFilePath.h"
#include "file/KvFileSystemUnCached.h"
#include "platform/KvPlatformEnvironment.h"
#include "project/KvConfigurationManager.h"
#include "project/KvDocumentFile.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

namespace {

using Text = TKvString<char>;

// The places of platforms that commands are particular about.
constexpr int kWindows = 0;
constexpr int kIos = 8;
constexpr int kAndroid = 9;

constexpr const char* kPlatforms[] = {"Windows", "Linux",  "Mac", "Xbox360", "XboxOne", "PS3",
                                      "PS4",     "PSVita", "iOS", "Android", "WiiU",    "3DS"};
constexpr const char* kApis[] = {"DX9", "DX11", "OpenGL3", "OpenGLES2", "GCM",
                                 "GNM", "GXM",  "GX",      "GX2"};

/// Sets \a index to the place of a text in a table, if it is there.
template <std::size_t kCount>
void FindPlace(const char* const (&table)[kCount], const Text& text, int& index)
{
    for (std::size_t i = 0; i < kCount; ++i) {
        if (text == table[i])
            index = static_cast<int>(i);
    }
}

void MakeFolder(Text path)
{
    KvCreatePath(path);
}

/// The first cmake on the search path; empty when there is none.
Text FindCMake()
{
    const std::string folders = KvPlatformEnvironmentVariable("PATH");
    const Text file("\\" + Text(KvPlatformProgramFileName("cmake").c_str()));
    const char separator = KvPlatformSearchPathSeparator();
    for (std::size_t begin = 0; begin < folders.size();) {
        const std::size_t end = std::min(folders.find(separator, begin), folders.size());
        if (end > begin) {
            Text path = Text(folders.substr(begin, end - begin).c_str()) + file;
            if (CKvFileSystemUnCached::Exists(path))
                return path;
        }
        begin = end + 1;
    }
    return {};
}

bool Fail(const char* fault, const Text& file)
{
    std::fprintf(stderr, "%s file %s\n", fault, file.GetText());
    return false;
}

/// Gives the temporary folder as the project file has it. False, with a message, when it has none.
bool ReadTemporaryFolder(const Text& projectFile, Text& folder)
{
    CKvFile file;
    if (file.Open(projectFile, EKvFileSystemOpenMode::ReadBinary, true) !=
        EKvFileSystemError::Success)
        return Fail("Cannot open", projectFile);
    CKvScriptTree project;
    if (!CKvScriptTreeSerializerXML().LoadXmlFromFileHandle(project, file.GetHandle()))
        return Fail("Cannot load XML from", projectFile);
    const CKvScriptTreeNode* settings =
        project.GetRootNode()->FindChild(CKvIdentifier("project_settings"));
    if (settings == nullptr)
        return Fail("Cannot find project_settings node in", projectFile);
    const CKvScriptTreeNode* general = settings->FindChild(CKvIdentifier("general"));
    if (general == nullptr)
        return Fail("Cannot find general node in", projectFile);
    const CKvScriptTreeNode* setting = general->FindChildByIdAndAttributeValue(
        CKvIdentifier("setting"), CKvIdentifier("name"), CKvIdentifier("generalTmp"));
    if (setting == nullptr)
        return Fail("project_settings temp not found in", projectFile);
    folder = setting->GetAttributeValueAsString(CKvIdentifier("value"));
    return true;
}

}  // namespace

CKvConfigurationHelper::~CKvConfigurationHelper() = default;

void CKvConfigurationHelper::Initialize(const Text& configurationFile,
                                        const CKvConfigurationManager& manager,
                                        const Text& buildName, const Text& toolsDirectory)
{
    Forget();
    const CKvConfigurationProject* project = manager.GetProject();
    const CKvConfigurationSourceControl* sourceControl = manager.GetSourceControl();
    const CKvConfigurationBuild* build = manager.GetBuild(CKvIdentifier(buildName));
    if (project == nullptr || sourceControl == nullptr || build == nullptr) {
        std::fprintf(stderr, "Cannot find build %s in file %s\n", buildName.GetText(),
                     configurationFile.GetText());
        return;
    }
    const Text distributionName = build->GetDistribution();
    const CKvConfigurationDistribution* distribution =
        manager.GetDistrib(CKvIdentifier(distributionName));
    if (distribution == nullptr && !distributionName.IsEmpty()) {
        std::fprintf(stderr, "Cannot find distribution %s in file %s\n", distributionName.GetText(),
                     configurationFile.GetText());
        return;
    }

    m_configurationDirectory = CKvFilePath(configurationFile, false).getFilePath();
    m_projectFile = KvResolveDocumentPath(project->GetProjectFile(), m_configurationDirectory);
    m_cmakeListsPath =
        KvResolveDocumentPath(project->GetProjectCMakeLists(), m_configurationDirectory);
    m_sourceControlUserId = sourceControl->GetUserId();
    m_sourceControlUserPwd = sourceControl->GetUserPwd();
    m_sourceControlUrl = sourceControl->GetUrl();
    m_toolsDirectory = toolsDirectory;
    m_cmakePath = FindCMake();
    TakeOver(*build);
    m_isReady = true;

    Text outputSubdirectory;
    if (distribution != nullptr && distribution->GetDistribution() == "Steam")
        outputSubdirectory = ".\\content\\";
    if (m_platform == kPlatforms[kAndroid])
        outputSubdirectory = ".\\libs\\";
    if (!FindTmpDirectory(outputSubdirectory))
        std::fprintf(stderr, "Can't read project file !\n");
}

bool CKvConfigurationHelper::HasAnotherArchitecture() const
{
    return m_architectureIndex < m_architectures.GetCount();
}

void CKvConfigurationHelper::GetBuildProjectCommand(Text& program, Text& arguments) const
{
    Text options = GetGeneratorOptions();
    options += "-DKORVA_SDK_HEADER_PATH=\"" + m_headerPath + "\" ";
    options += "-DBUILD_FILE_PATH=\"" + m_configurationDirectory + "\" ";
    options += "-DBUILD_CONFIG_NAME=\"" + m_buildName + "\" ";
    options += "-DKORVA_TOOLS_DIR=\"" + m_toolsDirectory + "\" ";
    GetCMakeCommand(options + " " + m_args + " " + m_cmakeListsPath, program, arguments);
}

void CKvConfigurationHelper::GetCompileProjectCommand(Text& program, Text& arguments)
{
    GetCMakeCommand(" --build . --target BuildQUAY --config Release", program, arguments);
    if (CanCompile())
        ++m_architectureIndex;
}

void CKvConfigurationHelper::GetCompileAssetsCommand(Text& program, Text& arguments) const
{
    program = arguments = Text();
    if (!m_isReady)
        return;
    if (!m_temporaryDirectory.IsEmpty())
        MakeFolder(m_temporaryDirectory + "\\" + m_platform + "\\" + m_api);
    const bool isMobile = m_platformIndex == kIos || m_platformIndex == kAndroid;
    program = m_toolsDirectory + "\\KvAssetCompiler.exe";
    arguments = m_projectFile + " " + m_platform + " " + m_api + " ";
    arguments += isMobile ? "" : "-no_sprite_downscale";
}

void CKvConfigurationHelper::GetConfigurePackagerCommand(Text& program, Text& arguments) const
{
    GetKvGamePackagerCommand(program, arguments, "--configure");
}

void CKvConfigurationHelper::GetPackageCommand(Text& program, Text& arguments) const
{
    GetKvGamePackagerCommand(program, arguments, "--build");
}

void CKvConfigurationHelper::GetCleanCommand(Text&, Text&) const {}

Text CKvConfigurationHelper::GetTargetBuildAsString() const
{
    return m_platform + "\\" + m_api;
}

bool CKvConfigurationHelper::FindTmpDirectory(const Text& outputSubdirectory)
{
    Text folder;
    if (!ReadTemporaryFolder(m_projectFile, folder))
        return false;
    m_temporaryDirectory =
        KvResolveDocumentPath(folder, CKvFilePath(m_projectFile, false).getFilePath());
    m_platformTemporaryDirectory = m_temporaryDirectory + "\\" + m_platform;
    m_outputDirectory =
        m_platformTemporaryDirectory + "\\" + m_buildName + "\\" + outputSubdirectory + "\\";
    CKvFilePath::ConvertToNativePath(m_outputDirectory);
    MakeFolder(m_outputDirectory);
    MakeFolder(m_platformTemporaryDirectory);
    return true;
}

void CKvConfigurationHelper::GetKvGamePackagerCommand(Text& program, Text& arguments,
                                                      const char* mode) const
{
    program = arguments = Text();
    if (!m_isReady)
        return;
    program = m_toolsDirectory + "KvGamePackager.exe ";
    arguments = Text(mode) + " " + m_configurationDirectory + " " + m_buildName + " ";
    arguments += GetCurrentArchitecture();
}

/// What stays are the indices.
void CKvConfigurationHelper::Forget()
{
    CKvConfigurationHelper fresh;
    fresh.m_platformIndex = m_platformIndex;
    fresh.m_apiIndex = m_apiIndex;
    *this = fresh;
}

void CKvConfigurationHelper::TakeOver(const CKvConfigurationBuild& build)
{
    m_platform = build.GetPlatform();
    m_api = build.GetApi();
    FindPlace(kPlatforms, m_platform, m_platformIndex);
    FindPlace(kApis, m_api, m_apiIndex);
    m_architectures = build.GetArchitectures();
    m_buildName = build.GetName();
    m_args = build.GetArgs();
    m_libraryPath = build.GetLibraryPath();
    m_headerPath = build.GetHeaderPath();
}

bool CKvConfigurationHelper::CanCompile() const
{
    return m_isReady && (m_architectures.IsEmpty() || HasAnotherArchitecture());
}

void CKvConfigurationHelper::GetCMakeCommand(const Text& words, Text& program,
                                             Text& arguments) const
{
    program = arguments = Text();
    if (!CanCompile())
        return;
    const Text folder = m_platformTemporaryDirectory + "\\" +
                        (m_architectures.IsEmpty() ? Text("tmp") : GetCurrentArchitecture());
    // Without temporary folder this would be one at the root of the disk.
    if (!m_platformTemporaryDirectory.IsEmpty())
        MakeFolder(folder);
    program = m_cmakePath;
    arguments = "-E chdir " + folder + " \"" + m_cmakePath + "\" " + words;
}

Text CKvConfigurationHelper::GetCurrentArchitecture() const
{
    return HasAnotherArchitecture() ? m_architectures[m_architectureIndex] : Text();
}

Text CKvConfigurationHelper::GetGeneratorOptions() const
{
    const Text architecture = GetCurrentArchitecture();
    const Text libraries = "-DKORVA_SDK_LIB_PATH=" + m_libraryPath;
    switch (m_platformIndex) {
        case kWindows:
            return "-G \"Visual Studio 10\" " + libraries + " -DCMAKE_CONFIGURATION_TYPES=Release ";
        case kIos:
            return "-G \"Xcode\" " + libraries + " -DCMAKE_CONFIGURATION_TYPES=Release ";
        case kAndroid: {
            Text options = "-G \"MinGW Makefiles\" -DANDROID_NATIVE_API_LEVEL=android-9 ";
            options += "-DANDROID_ABI=" + architecture + " ";
            const Text ndk(KvPlatformEnvironmentVariable("ANDROID_NDK_ROOT").c_str());
            if (!ndk.IsEmpty())
                options += "-DCMAKE_MAKE_PROGRAM=\"" + ndk +
                           "\\prebuilt\\windows-x86_64\\bin\\make.exe\" ";
            return options + libraries + "/" + architecture + " -DCMAKE_BUILD_TYPE=Release ";
        }
        default:
            return {};
    }
}
