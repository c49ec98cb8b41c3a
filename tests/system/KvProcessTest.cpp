#include "system/KvProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>

#include "platform/KvPlatform.h"
#include "system/KvBrowser.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using EStatus = CKvProcess::EStatus;

TEST(KvProcessTest, TellsHowAProgramEnded)
{
    const int inherited = open("/dev/null", O_RDONLY);  // without asking to be closed
    const std::string lookForIt =
        "sh -c \"[ ! -e /proc/$$/fd/" + std::to_string(inherited) + " ]\"";
    const struct
    {
        std::string command;
        EStatus status;
        int code;
    } kRows[] = {
        {"\t\\bin\\sh -c \"exit 255\"", EStatus::Exited, 255},
        {"sh -c \"kill -PIPE $$\"", EStatus::Killed, SIGPIPE},
        {lookForIt, EStatus::Exited, 0},
        {"", EStatus::NotStarted, -1},
        {"\"\"", EStatus::NotStarted, -1},
        {"/bin/absent", EStatus::NotStarted, -1},
        {"/dev/null", EStatus::NotStarted, -1},
    };
    KvPlatformIgnoreBrokenPipes();
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.command);
        CKvProcess process(row.command.c_str());
        EXPECT_EQ(process.Start(), row.status != EStatus::NotStarted);
        EXPECT_EQ(process.Wait(), row.status);
        EXPECT_EQ(process.GetExitCode(), row.code);
    }
    std::signal(SIGPIPE, SIG_DFL);
    close(inherited);

    std::signal(SIGCHLD, SIG_IGN);
    CKvProcess forgotten("/bin/true");
    EXPECT_TRUE(forgotten.Start());
    EXPECT_EQ(forgotten.Wait(), EStatus::Lost);
    std::signal(SIGCHLD, SIG_DFL);
}

TEST(KvProcessTest, SplitsACommandIntoWords)
{
    const CKvTemporaryFolder folder;
    const std::string command = R"(sh -c "for word; do printf '<%s>' \"$word\"; done >)" +
                                folder.Path("words") + "\" -\ta " +
                                R"("b c" d"e "f "" "g""h" \"i "j\\" "k\\\"l" m\\n\ )" +
                                R"("-DX=\"o p\"" $HOME * "q r)";
    CKvProcess process(command.c_str());
    ASSERT_TRUE(process.Start());
    EXPECT_EQ(process.Wait(), EStatus::Exited);
    EXPECT_EQ(folder.Read("words"),
              R"(<a><b c><de f><><g"h><"i><j\><k\"l><m\\n\><-DX="o p"><$HOME><*><q r>)");
}

TEST(KvProcessTest, NothingIsLeftOfAProcessWhoseOwnerGoes)
{
    pid_t id = 0;
    {
        CKvProcess process("sleep 1000");
        for (int run = 0; run < 2; ++run) {
            ASSERT_TRUE(process.Start());
            EXPECT_EQ(process.Poll(), EStatus::Running);
            EXPECT_FALSE(process.Start());
            id = static_cast<pid_t>(process.GetWaitHandle());
            EXPECT_EQ(kill(id, 0), 0);
            if (run == 0) {
                process.Kill();
                EXPECT_EQ(process.GetStatus(), EStatus::Killed);
            }
        }
    }
    EXPECT_EQ(kill(id, 0), -1);
}

TEST(KvBrowserTest, GivesTheOpenerTheUrlAsItsOneWord)
{
    const CKvTemporaryFolder folder;
    const std::string calls = folder.Path("calls");
    ASSERT_EQ(mkfifo(calls.c_str(), 0600), 0);
    const std::string opener =
        folder.Write("xdg-open", "#!/bin/sh\necho noise\necho $$ $# \"$1\" >'" + calls + "'\n");
    ASSERT_EQ(chmod(opener.c_str(), 0700), 0);
    const std::string path = getenv("PATH");
    setenv("PATH", folder.Path().c_str(), 1);
    testing::internal::CaptureStdout();
    KvOpenBrowser("--help");
    KvOpenBrowser("http://a/?b=$(c);d&e='f g'");
    setenv("PATH", path.c_str(), 1);

    int opened = 0;
    std::string rest;
    std::ifstream call(calls);
    call >> opened;
    std::getline(call, rest);
    EXPECT_EQ(rest, " 1 http://a/?b=$(c);d&e='f g'");
    while (kill(opened, 0) == 0)  // until it is gone for good
        std::this_thread::yield();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace
