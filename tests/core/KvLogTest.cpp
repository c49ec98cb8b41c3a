#include "core/KvLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/KvPlatform.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

std::string s_debuggerText;

constexpr std::size_t kStampLength = sizeof "hh:mm:ss " - 1;

/// The text without the stamps at its lines' starts; "no stamp: ..." when one is not well formed.
std::string WithoutStamps(const std::string& text)
{
    std::string rest;
    for (std::size_t start = 0; start < text.size();) {
        std::string pattern = text.substr(start, kStampLength);
        std::replace_if(
            pattern.begin(), pattern.end(), [](unsigned char c) { return std::isdigit(c); }, '0');
        if (pattern != "00:00:00 ")
            return "no stamp: " + text.substr(start);
        const std::size_t end = text.find('\n', start);
        rest += text.substr(start + kStampLength, end - start - kStampLength + 1);
        start = end == std::string::npos ? text.size() : end + 1;
    }
    return rest;
}

/// Runs in an empty folder of its own, with the debugger's output caught.
class KvLogTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_before = fs::current_path();
        fs::current_path(m_folder.Path());
        s_debuggerText.clear();
        KvPlatformSetDebugOutput([](const char* line) { s_debuggerText += line; });
    }

    void TearDown() override
    {
        KvLogRelease();
        KvLogSetMasks({});
        KvPlatformSetDebugOutput(nullptr);
        fs::current_path(m_before);
    }

    /// The content of a log file.
    std::string Content(const std::string& fileName) const
    {
        return m_folder.Read("_logs/" + fileName);
    }

private:
    fs::path m_before;
    CKvTemporaryFolder m_folder;
};

TEST_F(KvLogTest, EachMessageReachesTheFilesOfItsLevels)
{
    struct Row
    {
        ELogLevel level;
        unsigned int type;
        int indent;
        std::string line;                     // without stamp; empty when the message is dropped
        std::vector<std::string> levelFiles;  // besides the main one
    };
    const Row rows[] = {
        {ELogLevel::Info, 0x1, 0, "[   INFO] x 7\n", {"info"}},
        {ELogLevel::Profile, 0x400, 0, "[PROFILE] x 7\n", {"profile"}},
        {ELogLevel::Warning, 0x2, 0, "[WARNING] x 7\n", {"warning"}},
        {ELogLevel::Error, 0x4, 1, "[  ERROR]   x 7\n", {"error"}},
        {ELogLevel::Error, 0x10000, -1, "[  ERROR] x 7\n", {"error"}},
        {ELogLevel::Fatal, 0x2, 0, "", {}},
        {ELogLevel::Error, 0x800, 0, "", {}},
        {ELogLevel::Info | ELogLevel::Profile, 0x2, 2, "    x 7\n", {"info", "profile"}},
        {ELogLevel::Error | ELogLevel::Fatal, 0x802, 0, "x 7\n", {"error", "fatal"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        s_debuggerText.clear();
        KvLogInit("tool");
        KvLog(row.level, static_cast<ELogType>(row.type), row.indent, "x %d", 7);

        // Read before the files are closed: no line waits in a buffer.
        EXPECT_EQ(WithoutStamps(s_debuggerText), row.line);
        EXPECT_EQ(WithoutStamps(Content("tool.log")), row.line);
        for (const std::string level : {"info", "profile", "warning", "error", "fatal"}) {
            const bool listed =
                std::count(row.levelFiles.begin(), row.levelFiles.end(), level) != 0;
            EXPECT_EQ(WithoutStamps(Content("tool_" + level + ".log")), listed ? row.line : "");
        }
    }
}

TEST_F(KvLogTest, WritesToFilesOnlyBetweenInitAndRelease)
{
    KvLog(ELogLevel::Error, ELogType::Resource, 0, "before");
    EXPECT_FALSE(fs::exists("_logs"));
    KvLogInit("tool");
    KvLog(ELogLevel::Error, ELogType::Resource, 0, "between");
    KvLogRelease();
    KvLog(ELogLevel::Error, ELogType::Resource, 0, "after");
    EXPECT_EQ(WithoutStamps(Content("tool.log")), "[  ERROR] between\n");
    EXPECT_EQ(WithoutStamps(s_debuggerText),
              "[  ERROR] before\n[  ERROR] between\n[  ERROR] after\n");
}

TEST_F(KvLogTest, LongLinesAreCutAndKeepTheirLineFeed)
{
    constexpr std::size_t kFrame = kStampLength + sizeof "[  ERROR] " - 1;
    KvLogInit("tool");
    for (const std::size_t length : {8189 - kFrame, 8190 - kFrame, 8191 - kFrame, 20000 - kFrame}) {
        s_debuggerText.clear();
        const std::string message(length, 'm');
        KvLog(ELogLevel::Error, ELogType::Resource, 0, "%s", message.c_str());
        EXPECT_EQ(s_debuggerText.size(), std::min<std::size_t>(kFrame + length + 1, 8191));
        EXPECT_EQ(s_debuggerText.substr(s_debuggerText.size() - 2), "m\n");
    }
    s_debuggerText.clear();
    KvLog(ELogLevel::Error, ELogType::Resource, 0x7FFFFFFF, "out of sight");
    EXPECT_EQ(s_debuggerText.size(), 8191U);
    EXPECT_EQ(s_debuggerText.back(), '\n');
    EXPECT_EQ(Content("tool.log").size(), 8190U + 3 * 8191U + 8191U);
}

TEST_F(KvLogTest, ANameWhosePathsDoNotFitOpensNoFile)
{
    const std::string longest(237, 'n');
    KvLogInit(longest.c_str());
    EXPECT_EQ(Content(longest + ".log"), "");
    EXPECT_EQ(Content(longest + "_profile.log"), "");
    KvLogInit((longest + "n").c_str());
    EXPECT_EQ(std::distance(fs::directory_iterator("_logs"), fs::directory_iterator()), 6);
}

TEST_F(KvLogTest, LinesForAFolderThatCannotBeMadeAreLostSilently)
{
    std::ofstream("_logs") << "a file in the way";
    KvLogInit("tool");
    KvLog(ELogLevel::Error, ELogType::Resource, 0, "x");
    EXPECT_EQ(WithoutStamps(s_debuggerText), "[  ERROR] x\n");
    EXPECT_EQ(fs::file_size("_logs"), 17U);
}

TEST_F(KvLogTest, MasksChooseLevelsTypesAndOutputs)
{
    KvLogSetMasks({.levels = 16, .types = 0x800, .outputs = 4});
    testing::internal::CaptureStdout();
    KvLog(ELogLevel::Fatal, static_cast<ELogType>(0x800), 0, "100%%");
    KvLog(ELogLevel::Error, static_cast<ELogType>(0x800), 0, "no");
    KvLog(ELogLevel::Fatal, ELogType::Resource, 0, "no");
    EXPECT_EQ(WithoutStamps(testing::internal::GetCapturedStdout()), "[  FATAL] 100%\n");
    EXPECT_EQ(s_debuggerText, "");
}

}  // namespace
