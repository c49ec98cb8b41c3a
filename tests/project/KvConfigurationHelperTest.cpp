#include "project/KvConfigurationHelper.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "file/KvFilePath.h"
#include "project/KvConfigurationManager.h"
#include "project/KvConfigurationTexts.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using Helper = CKvConfigurationHelper;
using Text = TKvString<char>;

constexpr auto kConfigure = &Helper::GetBuildProjectCommand;
constexpr auto kCompile = &Helper::GetCompileProjectCommand;
constexpr auto kAssets = &Helper::GetCompileAssetsCommand;
constexpr auto kPackage = &Helper::GetPackageCommand;

constexpr const char* kProject =
    "<project><project_settings><General><setting name='generalTmp' value='../tmp'/></General>"
    "</project_settings></project>";

class KvConfigurationHelperTest : public testing::Test
{
protected:
    KvConfigurationHelperTest()
    {
        for (const char* name : {"game", "bin", "empty"})
            fs::create_directory(m_folder.Path(name));
        m_folder.Write("bin/cmake", "");
        m_folder.Write("game/a.project", kProject);
        setenv("PATH", (m_folder.Path("empty") + "::" + m_folder.Path("bin")).c_str(), 1);
        unsetenv("ANDROID_NDK_ROOT");
        m_manager.Initialize(m_configurations.c_str());
        m_manager.GetProject()->SetProjectFile("a.project");
        m_manager.GetProject()->SetProjectCMakeLists("src/CMakeLists");
        m_manager.AddDistrib("steam")->SetDistribution("Steam");
    }

    ~KvConfigurationHelperTest() override { setenv("PATH", m_path.c_str(), 1); }

    CKvConfigurationBuild& AddBuild(const char* name, const char* platform)
    {
        CKvConfigurationBuild& build = *m_manager.AddBuild(name);
        build.SetPlatform(platform);
        build.SetApi("DX9");
        build.SetHeaderPath("inc");
        build.SetLibraryPath("lib");
        build.SetArgs("-DA=\"1\"");
        return build;
    }

    /// Initialises and gives what that prints on standard error.
    std::string Initialize(Helper& helper, const char* build) const
    {
        testing::internal::CaptureStderr();
        helper.Initialize(m_configurations.c_str(), m_manager, build, "tools");
        return testing::internal::GetCapturedStderr();
    }

    /// The text with the paths of this test's folder, which differ from run to run, as N for the
    /// native form and P for the other one.
    std::string Shorten(std::string text) const
    {
        Text native = m_folder.Path().c_str();
        CKvFilePath::ConvertToNativePath(native);
        for (const auto& [path, sign] :
             {std::pair{native, "N"}, {Text(m_folder.Path().c_str()), "P"}})
            text = KvReplaceAll(text.c_str(), path.GetText(), sign).GetText();
        return text;
    }

    /// "PROGRAM|ARGUMENTS".
    template <class TCommand>
    std::string Compose(Helper& helper, TCommand command) const
    {
        Text program = "before";
        Text arguments = "before";
        (helper.*command)(program, arguments);
        return Shorten((program + "|" + arguments).GetText());
    }

    const std::string m_path = std::getenv("PATH");
    CKvTemporaryFolder m_folder;
    const std::string m_configurations = m_folder.Path("game/g.configurations");
    CKvConfigurationManager m_manager;
};

TEST_F(KvConfigurationHelperTest, CommandsOfEveryPlatform)
{
    const std::string kWords = " -DKORVA_SDK_LIB_PATH=lib -DCMAKE_CONFIGURATION_TYPES=Release ";
    const std::pair<const char*, std::string> kOptions[] = {
        {"Windows", "-G \"Visual Studio 10\"" + kWords},
        {"iOS", "-G \"Xcode\"" + kWords},
        {"Android",
         "-G \"MinGW Makefiles\" -DANDROID_NATIVE_API_LEVEL=android-9 -DANDROID_ABI= "
         "-DKORVA_SDK_LIB_PATH=lib/ -DCMAKE_BUILD_TYPE=Release "}};
    for (const std::string platform : {"Windows", "Linux", "Mac", "Xbox360", "XboxOne", "PS3",
                                       "PS4", "PSVita", "iOS", "Android", "WiiU", "3DS"}) {
        SCOPED_TRACE(platform);
        std::string options;
        for (const auto& [name, text] : kOptions)
            options = platform == name ? text : options;
        const auto expected = [&](const char* text) {
            const Text filled = KvReplaceAll(text, "$options", options.c_str());
            return std::string(KvReplaceAll(filled, "$", platform.c_str()).GetText());
        };
        AddBuild(platform.c_str(), platform.c_str());
        const bool isMobile = platform == "iOS" || platform == "Android";
        Helper helper;
        EXPECT_EQ(Initialize(helper, platform.c_str()), "");
        EXPECT_EQ(
            Compose(helper, kConfigure),
            expected("P/bin\\cmake|-E chdir N\\game\\..\\tmp\\$\\tmp \"P/bin\\cmake\" $options"
                     "-DKORVA_SDK_HEADER_PATH=\"inc\" -DBUILD_FILE_PATH=\"P/game/\" "
                     "-DBUILD_CONFIG_NAME=\"$\" -DKORVA_TOOLS_DIR=\"tools\"  "
                     "-DA=&quot;1&quot; N\\game\\src\\CMakeLists"));
        EXPECT_EQ(Compose(helper, kCompile),
                  expected("P/bin\\cmake|-E chdir N\\game\\..\\tmp\\$\\tmp \"P/bin\\cmake\" "
                           " --build . --target BuildQUAY --config Release"));
        EXPECT_EQ(Compose(helper, kAssets),
                  expected("tools\\KvAssetCompiler.exe|N\\game\\a.project $ DX9 ") +
                      (isMobile ? "" : "-no_sprite_downscale"));
        EXPECT_EQ(Compose(helper, kPackage),
                  expected("toolsKvGamePackager.exe |--build P/game/ $ "));
        for (const char* made : {"tmp/$/tmp", "tmp/$/DX9"})
            EXPECT_TRUE(fs::is_directory(m_folder.Path(expected(made)))) << made;
        EXPECT_FALSE(helper.HasAnotherArchitecture());
    }
}

TEST_F(KvConfigurationHelperTest, ArchitecturesAreBuiltOneAfterTheOther)
{
    setenv("ANDROID_NDK_ROOT", "N:\\dk", 1);
    CKvConfigurationBuild& build = AddBuild("a", "Android");
    build.SetDistribution("steam");
    Helper helper;
    for (const char* architecture : {"arm", "x86"})
        build.AddArchitecture(architecture);
    EXPECT_EQ(Initialize(helper, "A"), "");
    EXPECT_TRUE(fs::is_directory(m_folder.Path("tmp/Android/a/libs")));
    EXPECT_EQ(Compose(helper, &Helper::GetConfigurePackagerCommand),
              "toolsKvGamePackager.exe |--configure P/game/ a arm");
    for (const char* architecture : {"arm", "x86"}) {
        const auto startsWith = [&](const std::string& text, const char* start) {
            return text.rfind(KvReplaceAll(start, "$", architecture).GetText(), 0) == 0;
        };
        EXPECT_TRUE(helper.HasAnotherArchitecture());
        EXPECT_TRUE(startsWith(
            Compose(helper, kConfigure),
            "P/bin\\cmake|-E chdir N\\game\\..\\tmp\\Android\\$ \"P/bin\\cmake\" -G \"MinGW "
            "Makefiles\" "
            "-DANDROID_NATIVE_API_LEVEL=android-9 -DANDROID_ABI=$ -DCMAKE_MAKE_PROGRAM=\"N:\\dk\\"
            "prebuilt\\windows-x86_64\\bin\\make.exe\" -DKORVA_SDK_LIB_PATH=lib/$ "
            "-DCMAKE_BUILD_TYPE"));
        EXPECT_TRUE(startsWith(Compose(helper, kCompile),
                               "P/bin\\cmake|-E chdir N\\game\\..\\tmp\\Android\\$ \"P/bin"));
    }
    EXPECT_FALSE(helper.HasAnotherArchitecture());
    EXPECT_EQ(Compose(helper, kConfigure) + Compose(helper, kCompile), "||");
    EXPECT_EQ(Compose(helper, kPackage), "toolsKvGamePackager.exe |--build P/game/ a ");
    EXPECT_EQ(Compose(helper, &Helper::GetCleanCommand), "before|before");

    AddBuild("l", "Linux").SetDistribution("STEAM");
    EXPECT_EQ(Initialize(helper, "l"), "");
    EXPECT_TRUE(fs::is_directory(m_folder.Path("tmp/Linux/l/content")));
    EXPECT_EQ(helper.GetTargetBuildAsString(), "Linux\\DX9");
}

TEST_F(KvConfigurationHelperTest, WhatIsMissingIsToldAndMakesNoFolders)
{
    AddBuild("orphan", "Linux").SetDistribution("nowhere");
    AddBuild("good", "Linux");
    Helper helper;
    const auto all = [&] {
        return Compose(helper, kConfigure) + Compose(helper, kCompile) + Compose(helper, kAssets) +
               Compose(helper, kPackage);
    };
    EXPECT_EQ(all(), "||||");
    for (const auto& [build, told] : {std::pair{"absent", "Cannot find build absent in file "},
                                      {"orphan", "Cannot find distribution nowhere in file "}}) {
        EXPECT_EQ(Initialize(helper, "good"), "");
        EXPECT_EQ(Initialize(helper, build), told + m_configurations + "\n");
        EXPECT_EQ(all(), "||||");
    }
    testing::internal::CaptureStderr();
    helper.Initialize("c", CKvConfigurationManager(), "b", "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Cannot find build b in file c\n");

    fs::remove_all(m_folder.Path("tmp"));
    for (const auto& [content, told] :
         {std::pair{"<", "Cannot load XML from"},
          {"<a/>", "Cannot find project_settings node in"},
          {"<a><project_settings/></a>", "Cannot find general node in"},
          {"<a><project_settings><general/></project_settings></a>",
           "project_settings temp not found in"},
          {"", "Cannot open"}}) {
        m_folder.Write("game/a.project", content);
        if (*content == '\0')
            fs::remove(m_folder.Path("game/a.project"));
        EXPECT_EQ(Shorten(Initialize(helper, "good")),
                  std::string(told) + " file N\\game\\a.project\nCan't read project file !\n");
        EXPECT_EQ(Compose(helper, kCompile).rfind("P/bin\\cmake|-E chdir \\tmp \"P/", 0), 0U);
        EXPECT_NE(Compose(helper, kAssets), "|");
        EXPECT_FALSE(fs::exists(m_folder.Path("tmp")));
    }
    setenv("PATH", "/absent::", 1);
    Initialize(helper, "good");
    EXPECT_EQ(Compose(helper, kCompile).rfind("|-E chdir ", 0), 0U);
}

}  // namespace
