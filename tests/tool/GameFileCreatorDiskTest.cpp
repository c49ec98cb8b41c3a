// The run with every single disk operation failing in turn.

#include "tests/support/KvFaultyDisk.h"
#include "tests/tool/GameFileCreatorFixture.h"
#include "tool/GameFileCreator.h"

namespace {

using EFaults = CKvFaultyDisk::EFaults;

class GameFileCreatorDiskTest : public GameFileCreatorFixture
{
protected:
    /// Runs in this process, where the disk can be made to fail.
    int RunHere()
    {
        const std::string level = m_folder.Path("a.level");
        const std::string rules = m_folder.Path("a.gamerules");
        const std::string game = m_folder.Path("a.game");
        const std::string templates = m_folder.Path("1.template");
        const char* arguments[] = {"tool", level.c_str(),     rules.c_str(), game.c_str(),
                                   "",     templates.c_str(), "BE"};
        testing::internal::CaptureStdout();
        const int status = RunGameFileCreator(7, arguments);
        testing::internal::GetCapturedStdout();
        return status;
    }
};

}  // namespace

TEST_F(GameFileCreatorDiskTest, EveryFailureIsToldOrHarmlessAndNeverHarmsTheOldOutput)
{
    WriteLevel(R"(<entity_list><entity name="door"/></entity_list>)");
    WriteRules(R"(<fsm_create fsm_name="f" name_include_string="door"><template name="t"/>)"
               "</fsm_create>");
    // The template file is one that may be missing: without it the run succeeds with less.
    WriteTemplates(1, R"(<template name="t"><parameter name="p" value="1"/></template>)");
    ASSERT_EQ(RunHere(), 0);
    const std::string complete = m_folder.Read("a.game");
    std::filesystem::rename(m_folder.Path("1.template"), m_folder.Path("moved"));
    ASSERT_EQ(RunHere(), 0);
    const std::string lacking = m_folder.Read("a.game");
    std::filesystem::rename(m_folder.Path("moved"), m_folder.Path("1.template"));
    const std::vector<std::string> names = m_folder.Names();

    int runs = 0;
    for (const EFaults faults : {EFaults::Once, EFaults::FromThenOn}) {
        bool failed = true;
        for (int n = 1; failed; ++n, ++runs) {
            SCOPED_TRACE(testing::Message() << "operation " << n);
            m_folder.Write("a.game", "old");
            CKvFaultyDisk disk(n, faults);
            const int status = RunHere();
            failed = disk.HasFailed();
            const std::string game = m_folder.Read("a.game");
            if (status == 0)
                EXPECT_TRUE(game == complete || (failed && game == lacking));
            else
                EXPECT_EQ(game, "old");
            EXPECT_EQ(m_folder.Names(), names);
        }
    }
    EXPECT_GT(runs, 40);
}
