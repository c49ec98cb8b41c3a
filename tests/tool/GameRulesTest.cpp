// What rules, templates and levels come to: the documents in, the game document out.

#include <fstream>
#include <iterator>

#include "tests/tool/GameFileCreatorFixture.h"

namespace {

namespace fs = std::filesystem;

/// The folders of tests/tool/cases: each has a level, rules, up to two template files and, as XML,
/// the game document that they come to. A new case is a new folder.
std::vector<fs::path> Cases()
{
    const fs::path all = fs::path(KV_SOURCE_PATH) / "tests/tool/cases";
    return {fs::directory_iterator(all), fs::directory_iterator()};
}

class GameRulesTest : public GameFileCreatorFixture, public testing::WithParamInterface<fs::path>
{
};

class GameRulesFailureTest : public GameFileCreatorFixture
{
};

}  // namespace

TEST_P(GameRulesTest, DocumentsComeTo)
{
    std::ifstream expected(GetParam() / "game.xml");
    fs::copy(GetParam(), m_folder.Path(), fs::copy_options::recursive);
    EXPECT_EQ(CreateGame(), std::string(std::istreambuf_iterator<char>(expected), {}));
}

INSTANTIATE_TEST_SUITE_P(Cases, GameRulesTest, testing::ValuesIn(Cases()),
                         [](const auto& row) { return row.param.filename().string(); });

TEST_F(GameRulesFailureTest, ARuleThatBindsTwoTypesIsNamedWithBothObjects)
{
    WriteLevel(R"(<entity_list><entity name="lamp_0"/><entity name="lamp_1"/></entity_list>)"
               R"(<light_list><light name="lamp_2"/></light_list>)");
    for (const char* kind : {"fsm_create", "simple_fsm_create"}) {
        const std::string rule =
            std::string("<") + kind + R"( fsm_name="glow" name_include_string="Lamp">)";
        WriteRules(rule + "</" + kind + ">");
        ExpectFailure(Arguments(),
                      kBanner +
                          "Movable (entity) name = 'lamp_0'\n"
                          "Movable (entity) name = 'lamp_1'\n"
                          "Movable (light) name = 'lamp_2'\n",
                      "ERROR : fsm 'lamp' (type='glow') is affecting two objects with different "
                      "types 1:'lamp_1' vs. 2:'lamp_2'\n");
        WriteRules(rule + R"(<excepted name_include_string="_2"/></)" + kind + ">");
        EXPECT_EQ(Run().status, 0);
        std::filesystem::remove(m_folder.Path("a.game"));
    }
}

TEST_F(GameRulesFailureTest, TemplatesThatDoubleAreStoppedBeforeTheyFillTheMemory)
{
    WriteLevel("");
    WriteRules("");
    // The content of t0 decides which limit is met: parameters count one by one, values do not.
    const auto writeDoubling = [&](const std::string& content, int count) {
        std::string templates =
            R"(<template name="t0"><parameter name="p">)" + content + "</parameter></template>";
        for (int i = 1; i <= count; ++i) {
            std::string include("<template name=\"t");
            include.append(std::to_string(i - 1)).append("\"/>");
            templates.append("<template name=\"t").append(std::to_string(i)).append("\">");
            templates.append(include).append(include).append("</template>");
        }
        WriteTemplates(1, templates);
    };
    const auto expectTooMany = [&](const std::string& what) {
        ExpectFailure(Arguments(), kBanner,
                      "ERROR : " + what + " too many parameters and sub-objects\n");
    };
    writeDoubling("", 60);
    expectTooMany("template 't20' holds");

    std::string values;
    for (int i = 0; i < 1000; ++i)
        values += "<v/>";
    writeDoubling(values, 60);
    expectTooMany("template 't13' includes");

    writeDoubling(values, 11);
    const std::string twice = R"(<template name="t11"/><template name="t11"/>)";
    WriteRules(R"(<simple_fsm_create fsm_name="f">)" + twice + twice + "</simple_fsm_create>");
    expectTooMany("rule 'f' includes");
}
