// The program as a process: arguments, streams, status, and which files it touches.

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "core/KvCrc64.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/tool/GameFileCreatorFixture.h"

namespace {

const std::string kUsage =
    "Usage: KvGameFileCreator.exe example.level example.gamerules [LE|BE]\n"
    "Will output 'example.game' file in example.level file directory.\n";
const std::string kByteOrderMessage = "Must supply 'BE' or 'LE' as parameter #6\n";

/// What a debug build traces about a level or rules file that does not load.
std::string TraceOf([[maybe_unused]] const std::string& path)
{
#ifdef NDEBUG
    return "";
#else
    return "ERROR : Unable to load file : \"" + path + "\"\n";
#endif
}

class GameFileCreatorTest : public GameFileCreatorFixture
{
protected:
    GameFileCreatorTest()
    {
        WriteLevel(R"(<entity_list><entity name="door_a"/></entity_list>)");
        WriteRules(R"(<fsm_create fsm_name="logic" name_include_string="door"/>)");
    }

    const std::string m_list = "Movable (entity) name = 'door_a'\n";
};

}  // namespace

TEST_F(GameFileCreatorTest, MemoryThatRunsOutFailsTheRunAndKeepsTheOldOutput)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer's own memory exceeds any limit";
#endif
    std::string many;
    for (int i = 0; i < 150000; ++i)
        many += "<entity name='a value that takes a block of its own'/>";
    const std::string few = "<entity name='door'/>";
    WriteRules(
        "<fsm_create fsm_name='f' name_include_string='door'><template name='t'/></fsm_create>");
    const int stepKiB = static_cast<int>(sizeof(void*)) * 5 * 1024;  // half the size, half the need
    for (const bool isLevelLarge : {false, true}) {
        WriteLevel("<entity_list>" + (isLevelLarge ? few + many : few) + "</entity_list>");
        WriteTemplates(1,
                       (isLevelLarge ? "" : many) + "<template name='t'><parameter/></template>");
        ASSERT_EQ(Run().status, 0);
        const std::string complete = m_folder.Read("a.game");
        int failed = 0;
        int written = 0;
        for (int limitKiB = stepKiB * 8 / 5; limitKiB <= stepKiB * 28 / 5; limitKiB += stepKiB) {
            m_folder.Write("a.game", "old");
            CKvProcessOptions options;
            options.memoryLimitKiB = limitKiB;
            const int status = Run(Arguments(), options).status;
            EXPECT_TRUE(status == 0 || status == 255) << status;
            EXPECT_EQ(m_folder.Read("a.game"), status == 0 ? complete : "old");
            ++(status == 0 ? written : failed);
        }
        EXPECT_TRUE(failed > 0 && written > 0) << failed;
    }
}

TEST_F(GameFileCreatorTest, AnythingButSixArgumentsGivesTheUsageAndTouchesNothing)
{
    std::vector<std::string> arguments = Arguments();
    arguments.emplace_back("more");
    for (; arguments.size() != 6; arguments.pop_back())
        ExpectFailure(arguments, kBanner + kUsage, "");
    for (arguments.pop_back(); !arguments.empty(); arguments.pop_back())
        ExpectFailure(arguments, kBanner + kUsage, "");
    ExpectFailure({}, kBanner + kUsage, "");
}

TEST_F(GameFileCreatorTest, TheByteOrderIsTakenInAnyCaseAndCheckedBeforeAnyFileIsRead)
{
    for (const char* order : {"", "L", "LEX", "EL", " LE"})
        ExpectFailure({"missing", "missing", "out", "", "", order}, kBanner, kByteOrderMessage);

    std::string little;
    for (const char* order : {"LE", "le", "lE", "BE", "be", "Be"}) {
        EXPECT_EQ(Run(Arguments(order)).status, 0) << order;
        const bool isLittle = (order[0] | 0x20) == 'l';
        // The count of the root's children follows its identifier and its attribute count.
        const std::string count = m_folder.Read("a.game").substr(12, 4);
        EXPECT_EQ(count, isLittle ? std::string("\5\0\0\0", 4) : std::string("\0\0\0\5", 4))
            << order;
    }
}

TEST_F(GameFileCreatorTest, ASuccessPrintsBannerAndListAndWritesTheOutputAlone)
{
    const std::string level = m_folder.Read("a.level");
    const CKvProcessResult result = Run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput, kBanner + m_list);
    EXPECT_EQ(result.standardError, "");
    EXPECT_EQ(m_folder.Names(), (std::vector<std::string>{"a.game", "a.gamerules", "a.level"}));
    EXPECT_EQ(m_folder.Read("a.level"), level);
}

TEST_F(GameFileCreatorTest, DocumentsWithAWrongRootAreNamedByTheirKind)
{
    const std::string wrong = m_folder.Write("wrong", "<scene/>");
    ExpectFailure({"wrong", "a.gamerules", "a.game", "", "", "LE"},
                  kBanner + "Error: Invalid .level file\n", "");
    ExpectFailure({"a.level", "wrong", "a.game", "", "", "LE"},
                  kBanner + m_list + "Error: Invalid .gamerules file\n", "");
    for (int place : {3, 4}) {
        std::vector<std::string> arguments = Arguments();
        arguments[static_cast<std::size_t>(place)] = "wrong";
        ExpectFailure(arguments, kBanner + m_list + "Error: Invalid .template file\n", "");
    }
}

TEST_F(GameFileCreatorTest, WhatDoesNotLoadFailsAsLevelOrRulesAndIsSkippedAsTemplate)
{
    std::filesystem::create_directory(m_folder.Path("folder"));
    m_folder.Write("empty", "");
    m_folder.Write("binary", std::string("\x7F"
                                         "ELF\x02\x01\x00\x00\x3C\x00",
                                         10));
    m_folder.Write("truncated", R"(<level><entity_list><entity name="door_a")");
    m_folder.Write("compressed", KvCompressedFile(KvCompressBlock("<level/>"), 20));
    m_folder.Write("zero", std::string("<level>\0</level>", 16));
    m_folder.Write("utf8", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><level>\xE2\x82");
    m_folder.Write("deep", std::string("<level>") + std::string(20000, '<') + "a>");
    std::string nested = "<level>";
    for (int i = 0; i < 1000000; ++i)
        nested += "<a>";
    m_folder.Write("nested", nested);

    for (const char* name : {"missing", "folder", "empty", "binary", "truncated", "compressed",
                             "zero", "utf8", "deep", "nested", "folder/missing", "a.level/x"}) {
        SCOPED_TRACE(name);
        ExpectFailure({name, "a.gamerules", "a.game", "", "", "LE"}, kBanner, TraceOf(name));
        ExpectFailure({"a.level", name, "a.game", "", "", "LE"}, kBanner + m_list, TraceOf(name));
        const CKvProcessResult result = Run({"a.level", "a.gamerules", "a.game", name, name, "LE"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardOutput, kBanner + m_list);
        std::filesystem::remove(m_folder.Path("a.game"));
    }
}

TEST_F(GameFileCreatorTest, CompressedDocumentsAreReadLikePlainOnes)
{
    EXPECT_EQ(Run().status, 0);
    const std::string game = m_folder.Read("a.game");
    for (const char* name : {"a.level", "a.gamerules"})
        m_folder.Write(name, KvCompressFile(m_folder.Read(name)));
    std::filesystem::remove(m_folder.Path("a.game"));
    EXPECT_EQ(Run().standardOutput, kBanner + m_list);
    EXPECT_EQ(m_folder.Read("a.game"), game);
}

TEST_F(GameFileCreatorTest, AnUnknownEncodingIsReadAsSingleBytes)
{
    m_folder.Write("a.level",
                   "<?xml version=\"1.0\" encoding=\"KLINGON\"?>"
                   "<level><entity_list><entity name=\"door_\xE9\"/></entity_list></level>");
    const CKvProcessResult result = Run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput, kBanner + "Movable (entity) name = 'door_\xE9'\n");
}

TEST_F(GameFileCreatorTest, AnOutputThatCannotBeWrittenFailsAndLeavesTheOldOne)
{
    ExpectFailure({"a.level", "a.gamerules", "missing/a.game", "", "", "LE"}, kBanner + m_list, "");
    ExpectFailure({"a.level", "a.gamerules", ".", "", "", "LE"}, kBanner + m_list, "");

    m_folder.Write("a.game", "old");
    std::filesystem::permissions(m_folder.Path("a.game"), std::filesystem::perms::owner_read);
    std::filesystem::permissions(m_folder.Path(), std::filesystem::perms::all);
    CKvProcessOptions options;
    options.asOrdinaryUser = true;  // root may write the one and replace the other
    EXPECT_EQ(Run(Arguments(), options).status, 255);
    EXPECT_EQ(m_folder.Read("a.game"), "old");
    const CKvProcessResult full =
        Run({"a.level", "a.gamerules", "/dev/full", "", "", "LE"}, options);
    EXPECT_EQ(full.status, 255);
    EXPECT_EQ(full.standardOutput, kBanner + m_list);
    EXPECT_EQ(full.standardError, "");
}

TEST_F(GameFileCreatorTest, AReaderOfTheListThatLeavesEarlyDoesNotCostTheOutput)
{
    std::string objects;
    for (int i = 0; i < 5000; ++i)
        objects += "<entity name=\"door_" + std::to_string(i) + "\"/>";
    WriteLevel("<entity_list>" + objects + "</entity_list>");
    CKvProcessOptions options;
    options.outputReaderIsGone = true;
    EXPECT_EQ(Run(Arguments(), options).status, 0);
    const std::string cut = m_folder.Read("a.game");
    EXPECT_EQ(Run().status, 0);
    EXPECT_EQ(cut, m_folder.Read("a.game"));
}

TEST_F(GameFileCreatorTest, LongNamesAndManyRulesAreTakenAsTheyAre)
{
    const std::string name(100000, 'n');
    WriteLevel("<entity_list><entity name=\"" + name + "\"/></entity_list>");
    std::string rules = "<fsm_create fsm_name=\"" + name + "\" name_include_string=\"" + name +
                        "\">" + "<parameter name=\"" + name + "\" value=\"" + name +
                        "\"/></fsm_create>";
    for (int i = 0; i < 100000; ++i)
        rules += "<fsm_create fsm_name=\"f\" name_include_string=\"x" + std::to_string(i) + "\"/>";
    WriteRules(rules);
    const std::string game = CreateGame();
    EXPECT_NE(
        game.find("<entity name=\"" + name + "\">\n            <fsm name=\"" + name + "\">\n"),
        std::string::npos);
    EXPECT_EQ(game.find("name=\"f\""), std::string::npos);
}

TEST_F(GameFileCreatorTest, SubObjectsNestAsDeepAsADocumentCan)
{
    constexpr std::size_t kLevels = 200000;
    std::string objects;
    for (std::size_t i = 0; i < 2 * kLevels; ++i)
        objects += i < kLevels ? "<sub_object>" : "</sub_object>";
    WriteTemplates(1, "<template name='t'>" + objects + "</template>");
    WriteRules("<simple_fsm_create fsm_name='f'><template name='t'/></simple_fsm_create>");
    EXPECT_EQ(Run().status, 0);
    EXPECT_GT(m_folder.Read("a.game").size(), 24 * kLevels);
}

TEST_F(GameFileCreatorTest, TheShippedExampleGivesTheSameBytesEverywhere)
{
    const std::string examples = std::string(KV_SOURCE_PATH) + "/examples/";
    const struct
    {
        const char* order;
        std::uint64_t crc;
    } rows[] = {{"LE", 0x75F4C57743001C04u}, {"BE", 0x249091BECD15DD59u}};
    for (const auto& row : rows) {
        const CKvProcessResult result =
            Run({examples + "harbour.level", examples + "harbour.gamerules", "a.game",
                 examples + "common.template", examples + "harbour.template", row.order});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(std::count(result.standardOutput.begin(), result.standardOutput.end(), '\n'),
                  3 + 61);
        const std::string game = m_folder.Read("a.game");
        EXPECT_EQ(game.size(), 29407u);
        EXPECT_EQ(CreateCrc64(game.data(), static_cast<unsigned int>(game.size())), row.crc);
    }
}
