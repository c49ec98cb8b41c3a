#include "core/KvLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <utility>

#include "platform/KvPlatform.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

std::string s_debuggerText;

/// Of texts whose only colons are those of the stamps.
std::string WithoutStamps(std::string lines)
{
    for (std::size_t colon = 0; (colon = lines.find(':')) != std::string::npos;)
        lines.erase(colon - 2, sizeof "hh:mm:ss " - 1);
    return lines;
}

/// Runs in an empty folder of its own, with the debugger's output caught.
class KvLogTest : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::current_path(m_folder.Path());
        s_debuggerText.clear();
        KvPlatformSetDebugOutput([](const char* line) { s_debuggerText += line; });
    }

    void TearDown() override
    {
        KvLogRelease();
        KvPlatformSetDebugOutput(nullptr);
        fs::current_path(m_before);
    }

    fs::path m_before = fs::current_path();
    CKvTemporaryFolder m_folder;
};

TEST_F(KvLogTest, EachMessageReachesTheFilesOfItsLevels)
{
    const auto log = [](unsigned int level, unsigned int type, int indent) {
        KvLog(ELogLevel{level}, ELogType{type}, indent, "%d", indent);
    };
    KvLogInit("tool");
    log(1, 0x1, 0);
    log(2, 0x400, 1);
    log(4, 0x2, -1);
    log(8, 0x10000, 2);
    log(16, 0x2, 7);  // what the masks keep back
    log(8, 0x800, 7);
    log(1 | 2, 0x2, 3);
    log(8 | 16, 0x802, 4);

    // Read before the files are closed: no line waits in a buffer.
    const std::string error = "[  ERROR]     2\n";
    const std::string both = "      3\n";
    const std::string grave = "        4\n";
    const std::string all = "[   INFO] 0\n[PROFILE]   1\n[WARNING] -1\n" + error + both + grave;
    EXPECT_EQ(WithoutStamps(s_debuggerText), all);
    EXPECT_EQ(WithoutStamps(m_folder.Read("_logs/tool.log")), all);
    EXPECT_EQ(WithoutStamps(m_folder.Read("_logs/tool_info.log")), "[   INFO] 0\n" + both);
    EXPECT_EQ(WithoutStamps(m_folder.Read("_logs/tool_error.log")), error + grave);
    KvLogRelease();
    log(16, 0x800, 7);
    EXPECT_EQ(WithoutStamps(m_folder.Read("_logs/tool_fatal.log")), grave);
}

TEST_F(KvLogTest, ANameWhosePathsWouldBeCutGivesNoFiles)
{
    for (const auto& [length, files] : {std::pair<std::size_t, int>{237, 6}, {238, 0}}) {
        KvLogInit(std::string(length, 'n').c_str());
        const fs::directory_iterator logs(m_folder.Path("_logs"));
        EXPECT_EQ(std::distance(logs, fs::directory_iterator()), files) << length;
        KvLogRelease();
        fs::remove_all(m_folder.Path("_logs"));
    }
}

TEST_F(KvLogTest, LongLinesAreCutAndKeepTheirLineFeed)
{
    constexpr std::size_t kFrame = sizeof "hh:mm:ss [  ERROR] " - 1;
    for (const std::size_t length : {8189 - kFrame, 8190 - kFrame, 8191 - kFrame, 20000 - kFrame}) {
        s_debuggerText.clear();
        KvLog(ELogLevel::Error, ELogType::Resource, 0, "%s", std::string(length, 'm').c_str());
        EXPECT_EQ(s_debuggerText.size(), std::min<std::size_t>(kFrame + length + 1, 8191));
        EXPECT_TRUE(s_debuggerText.ends_with("m\n"));
    }
    KvLog(ELogLevel::Error, ELogType::Resource, 0x7FFFFFFF, "out of sight");
    EXPECT_EQ(s_debuggerText.size(), 2 * 8191U);
}

}  // namespace
