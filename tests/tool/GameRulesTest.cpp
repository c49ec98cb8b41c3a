// What rules, templates and levels come to: the documents in, the game document out.

#include <ostream>

#include "tests/tool/GameFileCreatorFixture.h"

namespace {

/// One run: what the documents hold and what the game document becomes.
struct CCase
{
    const char* name;
    const char* level;
    const char* rules;
    const char* firstTemplates;
    const char* secondTemplates;
    const char* game;

    friend std::ostream& operator<<(std::ostream& out, const CCase& row) { return out << row.name; }
};

class GameRulesTest : public GameFileCreatorFixture, public testing::WithParamInterface<CCase>
{
};

class GameRulesFailureTest : public GameFileCreatorFixture
{
};

constexpr const char* kDoors =
    R"(<entity_list><entity name="door_a"/><entity name="door_b"/></entity_list>)";

const CCase kCases[] = {
    {"NoRules", kDoors, "", "", "", ""},

    {"OverriddenParametersFollowTheSubObjects", kDoors,
     R"(<fsm_create fsm_name="logic" name_include_string="door">
          <parameter name="speed" type="float" value="2"/>
          <sub_object name="lock"><parameter name="key" type="string" value="k"/></sub_object>
          <parameter name="sound" type="string" value="s"/>
          <entity name="door_b"><parameter name="speed" type="float" value="5"/>
            <other name="x" value="y"/><parameter name="extra" type="int" value="1"/></entity>
          <entity name="door_b"><parameter name="sound" type="string" value="late"/></entity>
          <entity name="door_c"><parameter name="speed" type="float" value="9"/></entity>
        </fsm_create>)",
     "", "",
     "entity_list{"
     "entity(name=door_a){fsm(name=logic){parameter(name=speed,type=float,value=2) "
     "parameter(name=sound,type=string,value=s) "
     "sub_object(name=lock){parameter(name=key,type=string,value=k)}}} "
     "entity(name=door_b){fsm(name=logic){parameter(name=sound,type=string,value=s) "
     "sub_object(name=lock){parameter(name=key,type=string,value=k)} "
     "parameter(name=speed,type=float,value=5) parameter(name=extra,type=int,value=1)}}}"},

    {"TypesHaveTheirListsAndBoxesPrecedeSpheres",
     R"(<dummy_sphere_list><dummy_sphere name="s"/></dummy_sphere_list>
        <Light_List><LIGHT name="l"/><entity name="l2"/></Light_List>
        <particle_system_list><particle_system instancename="p" name="q"/></particle_system_list>
        <dummy_aabb3_list><dummy_aabb3 name="b"/></dummy_aabb3_list>
        <entity_list><entity name="e"/></entity_list><entity name="loose_e"/>)",
     R"(<fsm_create fsm_name="1" name_include_string="s"/>
        <fsm_create fsm_name="2" name_include_string="l"/>
        <fsm_create fsm_name="3" name_include_string="p"/>
        <fsm_create fsm_name="4" name_include_string="b"/>
        <fsm_create fsm_name="5" name_include_string="e"/>
        <fsm_create fsm_name="6" name_include_string="q"/>)",
     "", "",
     "entity_list{entity(name=e){fsm(name=5)}} "
     "dummy_list{dummy_aabb3(name=b){fsm(name=4)} dummy_sphere(name=s){fsm(name=1)}} "
     "particle_system_list{particle_system(name=p){fsm(name=3)}} "
     "light_list{light(name=l){fsm(name=2)}}"},

    {"GlobalRules", kDoors,
     R"(<simple_fsm_create fsm_name="a" name_include_string="door">
          <entity name="door_a"><parameter name="p" value="1"/></entity></simple_fsm_create>
        <fsm_create fsm_name="b"/><fsm_create fsm_name="c" name_include_string=""/>
        <global_fsm_create fsm_name="d"/><FSM_Create fsm_name="e"/>)",
     "", "", "object_list{fsm(name=a) fsm(name=b) fsm(name=c) fsm(name=e)}"},

    {"PatternsAreLoweredAndNamesAreNot",
     R"(<entity_list><entity name="door01"/><entity name="Door02"/><entity name=""/><entity/>
        </entity_list>)",
     R"(<fsm_create fsm_name="a" name_include_string="DOOR"/>
        <fsm_create fsm_name="b" name_include_string="Oor0"/>)",
     "", "",
     "entity_list{entity(name=door01){fsm(name=a)} entity(name=door01){fsm(name=b)} "
     "entity(name=Door02){fsm(name=b)}}"},

    {"ExceptedTextsAreTakenAsWritten", kDoors,
     R"(<fsm_create fsm_name="a" name_include_string="door">
          <excepted name_include_string="_A"/><excepted name_include_string="r_b"/></fsm_create>
        <fsm_create fsm_name="b" name_include_string="door"><excepted/></fsm_create>)",
     "", "", "entity_list{entity(name=door_a){fsm(name=a)}}"},

    {"ObjectsOfOneNameAndSeveralRulesEachGetABlock",
     R"(<entity_list><entity name="x"/><entity name="x"/></entity_list>)",
     R"(<fsm_create fsm_name="a" name_include_string="x"/>
        <fsm_create fsm_name="b" name_include_string="x"/>)",
     "", "",
     "entity_list{entity(name=x){fsm(name=a)} entity(name=x){fsm(name=a)} "
     "entity(name=x){fsm(name=b)} entity(name=x){fsm(name=b)}}"},

    {"ParametersKeepKindAndValues", "",
     R"(<simple_fsm_create fsm_name="a">
          <parameter name="single" type="t" value=""><item value="unseen"/></parameter>
          <parameter name="list" type="t"><item value="1"/><other value=".5"/><item/></parameter>
          <parameter name="empty"/>
        </simple_fsm_create>)",
     "", "",
     "object_list{fsm(name=a){parameter(name=single,type=t,value=) "
     "parameter(name=list,type=t){parameter(value=1) parameter(value=0.500000) parameter(value=)} "
     "parameter(name=empty,type=)}}"},

    {"TemplatesIncludeWhatCameBefore", "",
     R"(<simple_fsm_create fsm_name="a"><parameter name="own" value="0"/><template name="both"/>
          <template name="late"/><template name="unknown"/><template name="Base"/>
        </simple_fsm_create>)",
     R"(<template name="base"><parameter name="old" value="1"/></template>
        <template name="early"><template name="late"/></template>
        <template name="base"><parameter name="new" value="2"/>
          <sub_object name="s1"><sub_object name="s2"><sub_object name="s3">
            <parameter name="deep" value="3"/></sub_object></sub_object></sub_object></template>)",
     R"(<template name="both"><parameter name="first" value="4"/><template name="base"/>
          <template name="early"/><sub_object name="last"><template name="base"/></sub_object>
        </template>
        <template name="base"><parameter name="newest" value="5"/></template>
        <template name="late"><parameter name="late" value="6"/></template>)",
     "object_list{fsm(name=a){parameter(name=own,type=,value=0) "
     "parameter(name=first,type=,value=4) parameter(name=new,type=,value=2) "
     "parameter(name=late,type=,value=6) "
     "sub_object(name=s1){sub_object(name=s2){sub_object(name=s3){"
     "parameter(name=deep,type=,value=3)}}} "
     "sub_object(name=last){parameter(name=new,type=,value=2) "
     "sub_object(name=s1){sub_object(name=s2){sub_object(name=s3){"
     "parameter(name=deep,type=,value=3)}}}}}}"},
};

}  // namespace

TEST_P(GameRulesTest, DocumentsComeTo)
{
    const CCase& row = GetParam();
    WriteLevel(row.level);
    WriteRules(row.rules);
    if (*row.firstTemplates != '\0')
        WriteTemplates(1, row.firstTemplates);
    if (*row.secondTemplates != '\0')
        WriteTemplates(2, row.secondTemplates);
    EXPECT_EQ(CreateGame(), row.game);
}

INSTANTIATE_TEST_SUITE_P(Cases, GameRulesTest, testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

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
