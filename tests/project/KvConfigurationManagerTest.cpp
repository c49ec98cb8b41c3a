#include "project/KvConfigurationManager.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "tests/scripttree/KvAllocationWatch.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

constexpr const char* kName = "game.configurations";
constexpr const char* kDamaged = "game.configurations.damaged";

using Manager = CKvConfigurationManager;
using Build = CKvConfigurationBuild;
using Distribution = CKvConfigurationDistribution;

/// All that a manager holds, as one text.
std::string Describe(const Manager& manager)
{
    CKvScriptTree tree;
    CKvScriptTreeNode* root = tree.CreateRootNode(CKvIdentifier("all"));
    manager.GetProject()->ToCKvScriptTreeNode(root);
    manager.GetSourceControl()->ToCKvScriptTreeNode(root);
    for (const auto& name : manager.GetListBuild())
        root->AddChild(manager.GetBuild(CKvIdentifier(name))->ToCKvScriptTreeNode());
    for (const auto& name : manager.GetListDistrib())
        root->AddChild(manager.GetDistrib(CKvIdentifier(name))->ToCKvScriptTreeNode());
    TKvString<char> text;
    EXPECT_TRUE(CKvScriptTreeSerializerXML().Dump(tree, text));
    return text.GetText();
}

std::string Join(const CKvArray<TKvString<char>>& names)
{
    std::string text;
    for (const auto& name : names)
        (text += name.GetText()) += ' ';
    return text;
}

class KvConfigurationManagerTest : public testing::Test
{
protected:
    /// What a manager that loads the file anew holds.
    std::string Stored() const
    {
        Manager manager;
        manager.Initialize(m_path.c_str());
        return Describe(manager);
    }

    std::string StoredBuilds() const
    {
        Manager manager;
        manager.Initialize(m_path.c_str());
        return Join(manager.GetListBuild());
    }

    /// Makes the file the only one in the folder.
    void Renew(const std::string& content) const
    {
        for (const std::string& name : m_folder.Names())
            std::filesystem::remove(m_folder.Path(name));
        m_folder.Write(kName, content);
    }

    /// What an operation prints on standard error.
    static std::string Told(const std::function<void()>& operation)
    {
        testing::internal::CaptureStderr();
        operation();
        return testing::internal::GetCapturedStderr();
    }

    enum class EAfterwards
    {
        AsBefore,
        /// On a disk that removes nothing, the copy of a damaged file stays.
        MayLeaveCopy,
        /// The manager must not outlive the fault.
        Gone
    };
    template <class TMakeFault>
    void SweepFaults(EAfterwards afterwards, TMakeFault makeFault);

    CKvTemporaryFolder m_folder;
    const std::string m_path = m_folder.Path(kName);
    const std::string m_refusal = "Cannot save file " + m_path + "\n";
    Manager m_manager;
};

TEST_F(KvConfigurationManagerTest, RandomConfigurationsReadBackEqual)
{
    const char* const kPieces[] = {"a", " ", "\\",   "/",  "'",  ">",
                                   "=", ";", "\xC3", "\n", "%s", "]]>"};
    std::mt19937 random(92);
    m_manager.Initialize(m_path.c_str());
    for (int round = 0; round < 50; ++round) {
        const auto text = [&] {
            TKvString<char> pieces;
            for (auto count = random() % 4; count > 0; --count)
                pieces += kPieces[random() % std::size(kPieces)];
            return pieces;
        };
        const TKvString<char> unique = std::to_string(round).c_str();
        m_manager.GetProject()->SetProjectFile(text());
        m_manager.GetSourceControl()->SetUserPwd(text());
        Build& build = *m_manager.AddBuild(unique + text());
        build.SetPlatform(text());
        build.SetArgs(text() + "\"" + text() + "\"");
        build.AddArchitecture(text());
        Distribution& distribution = *m_manager.AddDistrib(unique + text());
        distribution.SetSteamAccount(text());
        distribution.SetSteamPassword(text());
        if (random() % 4 == 0)
            m_manager.RemoveBuild(CKvIdentifier(build.GetName()));
        m_manager.SaveAll();
        ASSERT_EQ(Stored(), Describe(m_manager));
    }
}

TEST_F(KvConfigurationManagerTest, TheShippedExampleIsReadAndWrittenAsItIs)
{
    std::ifstream file(std::string(KV_SOURCE_PATH) + "/examples/harbour.configurations");
    const std::string example{std::istreambuf_iterator<char>(file), {}};
    m_folder.Write(kName, example);
    m_manager.Initialize(m_path.c_str());
    m_manager.SaveAll();
    EXPECT_EQ(m_folder.Read(kName), example);
}

TEST_F(KvConfigurationManagerTest, HostileTextsAreRefusedWhereTheyDoNotReadBack)
{
    const struct
    {
        const char* text;
        bool inArgs;
        bool elsewhere;
    } kCases[] = {
        {"\"", true, false},     {"&quot;", true, false},  {"&quot", false, false},
        {"a<b", false, false},   {"\" x=\"", true, false}, {"&&quot;quot;", false, false},
        {"\xC3\"", true, false}, {"\xC3", true, true},
    };
    m_manager.Initialize(m_path.c_str());
    Build& build = *m_manager.AddBuild("b");
    CKvConfigurationSourceControl& sourceControl = *m_manager.GetSourceControl();
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        for (const bool inArgs : {true, false}) {
            build.SetArgs(inArgs ? c.text : "");
            sourceControl.SetUserPwd(inArgs ? "" : c.text);
            const std::string before = Stored();
            const std::string told = Told([&] { m_manager.SaveAll(); });
            EXPECT_EQ(told, (inArgs ? c.inArgs : c.elsewhere) ? "" : m_refusal);
            EXPECT_EQ(Stored(), told.empty() ? Describe(m_manager) : before);
        }
    }
}

TEST_F(KvConfigurationManagerTest, EditingAndSavingFollowTheRules)
{
    m_folder.Write(kName,
                   "<Configurations><keep a='1'/><BuildConfigs>"
                   "<build Name='My Game' Args='-D \"x y\"' Api='DX9'/><build Name='b'/>"
                   "<build Name='c'/></BuildConfigs></Configurations>");
    m_manager.Initialize(m_path.c_str());
    EXPECT_EQ(Join(m_manager.GetListBuild()), "My_Game b c ");
    Build& game = *m_manager.GetBuild(CKvIdentifier("my_GAME"));

    // Unsaved changes are dropped, stored ones come back although others were saved meanwhile.
    game.SetApi("DX11");
    m_manager.SaveCurrentBuild(CKvIdentifier("b"));
    EXPECT_EQ(StoredBuilds(), "My_Game c b ");
    m_manager.ResetBuild(CKvIdentifier("My_Game"));
    EXPECT_EQ(game.GetApi(), "DX9");
    EXPECT_EQ(game.GetArgs(), "-D &quot;x y&quot;");
    m_manager.SaveCurrentBuild(CKvIdentifier("My_Game"));
    EXPECT_EQ(StoredBuilds(), "c b My_Game ");
    EXPECT_NE(m_folder.Read(kName).find("<keep a=\"1\"/>"), std::string::npos);

    // A save that is refused leaves what a reset goes back to.
    game.SetApi("<");
    EXPECT_EQ(Told([&] { m_manager.SaveAllBuild(); }), m_refusal);
    m_manager.ResetBuild(CKvIdentifier("My_Game"));
    EXPECT_EQ(game.GetApi(), "DX9");

    for (const char* architecture : {"x86", "arm", "x86"})
        game.AddArchitecture(architecture);
    game.RemoveArchitecture("X86");
    EXPECT_EQ(Join(game.GetArchitectures()), "x86 arm ");
    m_manager.RemoveBuild(CKvIdentifier("B"));
    m_manager.SaveAllBuild();
    EXPECT_EQ(StoredBuilds(), "My_Game c ");

    EXPECT_EQ(m_manager.GenerateAutoNameBuild(), "NewConfig_001");
    m_manager.AddBuild("newconfig_002");
    EXPECT_EQ(m_manager.GenerateAutoNameBuild(), "NewConfig_003");
    EXPECT_EQ(m_manager.GenerateAutoNameDistrib(), "NewDistrib_001");

    m_manager.AddDistrib("on steam")->SetDistribution("Steam");
    m_manager.AddDistrib("elsewhere")->SetDistribution("steam");
    m_manager.GetDistrib(CKvIdentifier("on steam"))->SetSteamAccount("a b");
    m_manager.SaveCurrentDistrib(CKvIdentifier("on steam"));
    m_manager.LoadConfig();
    EXPECT_EQ(Join(m_manager.GetListDistrib()), "on steam ");
    EXPECT_EQ(m_manager.GetDistrib(CKvIdentifier("on steam"))->GetSteamAccount(), "a_b");
    EXPECT_EQ(Join(m_manager.GetListDistribForPlatform("Mac")), "on steam ");
    EXPECT_EQ(Join(m_manager.GetListDistribForPlatform("Android")), "");
}

TEST_F(KvConfigurationManagerTest, WhatIsMissingIsListedInOrder)
{
    m_manager.Initialize(m_path.c_str());
    m_manager.AddBuild("a b");
    m_manager.AddBuild("c")->SetPlatform("Android");
    m_manager.AddDistrib("d");
    EXPECT_EQ(m_manager.AllWellFormedBuild(),
              "\"a_b\" warnings : \n\tMissing Platform !\n\tMissing Api !\n"
              "\tMissing KVSDK Library Directory !\n\tMissing Headers Directory !\n"
              "\"c\" warnings : \n\tMissing Api !\n\tMissing KVSDK Library Directory !\n"
              "\tMissing Headers Directory !\n\tAndroid requires at least one Achitecture !\n");
    EXPECT_EQ(m_manager.AllWellFormedDistrib(), "\"d\" warnings : \n\tMissing Distribution !\n");
    m_manager.GetProject()->SetProjectFile("p");
    EXPECT_EQ(m_manager.GetProject()->WellFormed(), "Warnings : \n\tMissing CMakeLists Path !\n");
    EXPECT_EQ(m_manager.GetSourceControl()->WellFormed(),
              "Warnings : \n\tMissing Type !\n\tMissing Url !\n\tMissing User Identifier !\n"
              "\tMissing User Password !\n");
}

/// Saves under every single fault. The file is the old one or the complete new one, and what
/// stopped a save is told.
template <class TMakeFault>
void KvConfigurationManagerTest::SweepFaults(EAfterwards afterwards, TMakeFault makeFault)
{
    const std::function<void(Manager&)> kSaves[] = {
        [](Manager& m) { m.SaveAll(); },
        [](Manager& m) { m.SaveCurrentBuild(CKvIdentifier("b")); }};
    for (const std::string before : {"<configurations/>", "damaged <", ""})
        for (const auto& save : kSaves) {
            int failing = 0;
            bool failed = true;
            while (failed) {
                SCOPED_TRACE(before + ", failing " + std::to_string(++failing));
                Renew(before);
                auto manager = std::make_unique<Manager>();
                manager->Initialize(m_path.c_str());
                manager->AddBuild("b");
                const std::string told = Told([&] {
                    const auto fault = makeFault(failing);
                    save(*manager);
                    failed = fault.HasFailed();
                    if (afterwards == EAfterwards::Gone)
                        manager = nullptr;
                });
                // What fails once may be overcome, and then nothing is told.
                EXPECT_TRUE(told.empty() || (failed && told == m_refusal)) << told;
                const auto names = m_folder.Names().size();
                const bool isKept = told.empty() && before == "damaged <";
                EXPECT_TRUE(names == (isKept ? 2 : 1) || afterwards == EAfterwards::MayLeaveCopy);
                EXPECT_EQ(told.empty(), m_folder.Read(kName) != before);
                if (manager != nullptr)
                    save(*manager);
                EXPECT_EQ(StoredBuilds(), told.empty() || manager != nullptr ? "b " : "");
            }
            EXPECT_GT(failing, 4);
        }
}

TEST_F(KvConfigurationManagerTest, AFaultWhileSavingLeavesTheOldFileAndIsTold)
{
    using EFaults = CKvFaultyDisk::EFaults;
    SweepFaults(EAfterwards::AsBefore, [](int n) { return CKvFaultyDisk(n, EFaults::Once); });
    SweepFaults(EAfterwards::MayLeaveCopy,
                [](int n) { return CKvFaultyDisk(n, EFaults::FromThenOn); });
    SweepFaults(EAfterwards::Gone, [](int n) { return CKvAllocationWatch(n); });
}

TEST_F(KvConfigurationManagerTest, WhatAFaultKeptFromBeingLoadedIsNotReplaced)
{
    using EFaults = CKvFaultyDisk::EFaults;
    const std::string good = "<c><buildconfigs><build name=\"b\"/></buildconfigs></c>";
    for (const std::string& before : {good, std::string("damaged <")})
        for (const EFaults faults : {EFaults::Once, EFaults::FromThenOn}) {
            bool failed = true;
            for (int failing = 1; failed; ++failing) {
                Renew(before);
                Manager manager;
                const std::string told = Told([&] {
                    const CKvFaultyDisk disk(failing, faults);
                    manager.Initialize(m_path.c_str());
                    failed = disk.HasFailed();
                });
                EXPECT_EQ(Told([&] { manager.SaveAllDistrib(); }).empty(), told.empty());
                if (told.empty() && before == good) {
                    EXPECT_EQ(StoredBuilds(), "b ");
                } else {
                    EXPECT_EQ(m_folder.Read(told.empty() ? kDamaged : kName), before);
                }
            }
        }
}

TEST_F(KvConfigurationManagerTest, FilesThatItMakesAreTheirOwnersAlone)
{
    const auto mode = [&] {
        struct stat status = {};
        stat(m_path.c_str(), &status);
        return status.st_mode & 0777;
    };
    m_manager.Initialize(m_path.c_str());
    EXPECT_EQ(mode(), 0600U);
    std::filesystem::remove(m_path);
    m_manager.SaveAll();
    EXPECT_EQ(mode(), 0600U);
    chmod(m_path.c_str(), 0640);
    m_manager.SaveAll();
    EXPECT_EQ(mode(), 0640U);
}

TEST_F(KvConfigurationManagerTest, WithoutADocumentNothingIsSavedAndNothingCrashes)
{
    m_manager.Initialize(m_path.c_str());
    m_manager.AddBuild("kept");
    std::filesystem::remove(m_path);
    std::filesystem::create_directory(m_path);
    EXPECT_EQ(Told([&] { m_manager.LoadConfig(); }), "Cannot open file " + m_path + "\n");
    EXPECT_EQ(Join(m_manager.GetListBuild()), "kept ");
    Manager unloaded;
    for (Manager* manager : {&m_manager, &unloaded}) {
        const std::string told = Told([&] {
            manager->ResetBuild(CKvIdentifier("kept"));
            manager->SaveAll();
            manager->SaveAllDistrib();
            manager->SaveCurrentBuild(CKvIdentifier("kept"));
        });
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 3);
    }
    EXPECT_TRUE(std::filesystem::is_empty(m_path));
}

}  // namespace
