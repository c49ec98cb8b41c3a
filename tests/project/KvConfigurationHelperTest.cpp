#include "project/KvConfigurationHelper.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
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

// The commands as wholes are in the example that plans builds.
TEST_F(KvConfigurationHelperTest, CommandsDifferByPlatform)
{
    const std::string kWords = "-DKORVA_SDK_LIB_PATH=lib -DCMAKE_CONFIGURATION_TYPES=Release ";
    std::map<std::string, std::string> options = {
        {"Windows", "-G \"Visual Studio 10\" " + kWords},
        {"iOS", "-G \"Xcode\" " + kWords},
        {"Android",
         "-G \"MinGW Makefiles\" -DANDROID_NATIVE_API_LEVEL=android-9 -DANDROID_ABI= "
         "-DKORVA_SDK_LIB_PATH=lib/ -DCMAKE_BUILD_TYPE=Release "}};
    for (const std::string platform : {"Windows", "Linux", "Mac", "Xbox360", "XboxOne", "PS3",
                                       "PS4", "PSVita", "iOS", "Android", "WiiU", "3DS"}) {
        SCOPED_TRACE(platform);
        AddBuild(platform.c_str(), platform.c_str());
        Helper helper;
        EXPECT_EQ(Initialize(helper, platform.c_str()), "");
        std::string start = "P/bin\\cmake|-E chdir N\\game\\..\\tmp\\" + platform;
        start.append("\\tmp \"P/bin\\cmake\" ").append(options[platform]);
        EXPECT_EQ(Compose(helper, kConfigure).find(start + "-DKORVA_SDK_HEADER_PATH"), 0U);
        const bool isMobile = platform == "iOS" || platform == "Android";
        EXPECT_EQ(Compose(helper, kAssets).ends_with(" DX9 "), isMobile);
        for (const char* made : {"/tmp", "/DX9"})
            EXPECT_TRUE(fs::is_directory(m_folder.Path("tmp/" + platform + made))) << made;
    }
}

// Builds of several architectures are in the example that plans builds.
TEST_F(KvConfigurationHelperTest, OutputGoesWherePlatformAndDistributionWantIt)
{
    CKvConfigurationBuild& build = AddBuild("a", "Android");
    build.SetDistribution("steam");
    build.AddArchitecture("arm");
    Helper helper;
    EXPECT_EQ(Initialize(helper, "A"), "");
    EXPECT_TRUE(fs::is_directory(m_folder.Path("tmp/Android/a/libs")));
    EXPECT_EQ(Compose(helper, &Helper::GetConfigurePackagerCommand),
              "toolsKvGamePackager.exe |--configure P/game/ a arm");
    Compose(helper, kCompile);
    EXPECT_EQ(Compose(helper, kConfigure) + Compose(helper, kCompile), "||");
    EXPECT_EQ(Compose(helper, &Helper::GetCleanCommand), "before|before");

    AddBuild("l", "Linux").SetDistribution("STEAM");
    EXPECT_EQ(Initialize(helper, "l"), "");
    EXPECT_TRUE(fs::is_directory(m_folder.Path("tmp/Linux/l/content")));
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
