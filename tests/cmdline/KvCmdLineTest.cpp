#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <deque>
#include <string>
#include <vector>

#include "cmdline/KvParser.h"

namespace {

using namespace KvCmdLine;
using Value = CKvParameterValue;

/// Puts whatever is second in a result away from its start.
struct CBallast
{
    virtual ~CBallast() = default;
    int ballast = 1;
};

/// Tells the whole parse as one text.
class CRecordingResult : public CBallast, public CKvResult
{
public:
    EKvParseResult OnAddEnd() { return Tell("/add"); }
    EKvParseResult OnAdd() { return Tell("add"); }
    EKvParseResult OnFlag(const CKvParameterValue& value)
    {
        return Tell(std::string("flag=") + (value ? "on" : "off"));
    }
    EKvParseResult OnInt(const CKvParameterValue& value)
    {
        return Tell("int=" + std::to_string(static_cast<int>(value)));
    }
    /// Stores the parameter anew, which must not pull its value away from under the callback.
    EKvParseResult OnText(const CKvParameterValue& value)
    {
        for (int i = 0; i < 40; ++i)
            m_others.push_back({Value(i), 0, 0});
        for (const ParameterDescriptor& other : m_others)
            ProcessArgument(&other, "1");
        return Tell("text=" + std::string(static_cast<const char*>(value)));
    }
    static EKvParseResult OnDeepEnd(CKvResult* result)
    {
        return static_cast<CRecordingResult*>(result)->Tell("/deep");
    }

    EKvParseResult Tell(const std::string& what)
    {
        story += story.empty() ? what : " " + what;
        return PARSE_RESULT_INVALID_COMMAND_LINE;  // nobody looks at it
    }

    std::string story;

private:
    std::deque<ParameterDescriptor> m_others;
};

/// Every kind of switch at the root; a command with a switch, arguments and a command of its own.
void Declare(CKvDescriptor& descriptor)
{
    using Result = CRecordingResult;
    descriptor.SetHelp("Builds things")
        .BeginCommand(nullptr, "dropped")
        .AddCommand(nullptr, "dropped")
        .AddSwitch("v", "verbose", "More output", {}, &Result::OnFlag)
        .AddAlias("talk")
        .AddLongAlias("talk")
        .AddSwitch("b", "bool", "A bool", false, &Result::OnFlag)
        .AddSwitch("n", "number", "A number", 7, &Result::OnInt)
        .AddAlias("num")
        .AddLongAlias("")
        .AddSwitch("n", "number", "Later, so without a name", 8)
        .AddSwitch("f", nullptr, "A float", 0.5F)
        .AddSwitch("", "text", "A text", "none", &Result::OnText)
        .AddArgument("input", "Input file", "", &Result::OnText)
        .AddAlias("x")
        .BeginCommand("add", "Adds one", &Result::OnAddEnd,
                      static_cast<KvCommandCallback::Member>(&Result::OnAdd))
        .AddSwitch("v", nullptr, "Another v", 1, &Result::OnInt)
        .AddArgument("count", "How many", PARAMETER_TYPE_INT, &Result::OnInt)
        .AddArgument("sure", "Whether", true, 0)
        .AddCommand("deep", "Deeper", &Result::OnDeepEnd, 0)
        .EndCommand()
        .EndCommand();
}

std::string Parse(const char* line)
{
    CKvDescriptor descriptor;
    Declare(descriptor);
    CRecordingResult result;
    CKvParser parser(&descriptor, &result);
    const EKvParseResult parsed = parser.Parse(line);
    if (parsed != 0)
        result.Tell(std::to_string(parsed) + " " + result.GetLastError());
    for (int i = 0; i < result.GetExtraArgumentCount(); ++i)
        result.Tell(std::string("+") + result.GetExtraArgument(i, "missing"));
    return result.story;
}

std::vector<std::string> Split(const std::string& line)
{
    std::vector<std::string> words;
    CKvParameterIteratorSplit split(line.c_str());
    while (const char* word = split.GetNext())
        words.emplace_back(word);
    return words;
}

// That quoted words come back from any line is held by fuzz/CommandLine.cpp and its corpus.
TEST(KvCmdLineTest, WordsOfALineAreSplitAsQuoted)
{
    EXPECT_EQ(Split(R"( a "b c" d\"e "f""g" )"),
              (std::vector<std::string>{"a", "b c", "d\"e", "f\"g"}));
    EXPECT_EQ(Split("\"\"\t\\\\x\r\n\"open  "), (std::vector<std::string>{"", "\\\\x", "open  "}));
}

TEST(KvCmdLineTest, EveryFormOfAWordHasItsMeaning)
{
    const std::string unknownShort = "4 Unknown short form parameter: -";
    const std::string unknownLong = "4 Unknown long form parameter: --";
    const struct
    {
        const char* line;
        std::string story;
    } rows[] = {
        {"", ""},
        {"-v -b -b- -vb-v", "flag=on flag=on flag=off flag=on flag=off flag=on"},
        {"--verbose --bool --no-bool", "flag=on flag=on flag=off"},
        {"-talk --talk", "flag=on flag=on"},
        {"-v- x", "4 The switch 'v' cannot be toggled off, unlike a boolean value."},
        {"--no-verbose", "4 The switch 'verbose' cannot be preceded by 'no-'."},
        {"-n5 -n -5 --number 0x9 --no-number -bn4-", "int=5 int=-5 int=0 int=0 flag=on int=4"},
        {"-- 3 --no- -num -4", "int=3 int=0 int=-4"},
        {"-n --verbose --text", "int=0"},
        {"- x", "4 Empty short form parameter."},
        {"-vx", "flag=on " + unknownShort + "x."},
        {"-V", unknownShort + "V."},
        {"--no-No-bool", unknownLong + "No-bool."},
        {"--bool=1 -v", unknownLong + "bool=1."},
        {"--text \"a b\" in one add", "text=a b text=in +one +add"},
        {"add in 12 yes -v3 more --bool", "add text=in int=12 int=3 flag=on /add +more"},
        {"add deep add", "add text=add /deep /add"},
        {"add -y", "add " + unknownShort + "y."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Parse(row.line), row.story) << row.line;

    const std::string manyBytes(5000, 'x');
    EXPECT_EQ(Parse(("--" + manyBytes).c_str()), (unknownLong + manyBytes).substr(0, 2 + 2047));
}

TEST(KvCmdLineTest, ResultsAnswerFromTheSelectedCommandUpwards)
{
    CKvDescriptor descriptor;
    Declare(descriptor);
    // The parser's own result: it has none of the declared member functions.
    CKvParser parser(&descriptor);
    const CKvResult& result = *parser.GetResult();
    EXPECT_FALSE(result.IsSwitchSet("v", false));

    const char* const words[] = {"add", "-f", "1e2", "--text", "one",   "--text", "two",
                                 "in",  "12", "Yes", "extra",  nullptr, "unread"};
    ASSERT_EQ(parser.Parse(13, words), PARSE_RESULT_SUCCESS);
    EXPECT_STREQ(result.GetCommand(), "add");
    EXPECT_EQ(result.GetSwitch("f", false), Value(100.0F));
    EXPECT_EQ(result.GetSwitch("text", true), Value("two"));
    EXPECT_EQ(result.GetSwitch("number", true), Value(7));
    EXPECT_EQ(result.GetSwitch("v", false), Value(1));
    EXPECT_EQ(result.GetSwitch("v", true), Value(false));
    EXPECT_EQ(result.GetSwitch(nullptr, true), Value(false));
    EXPECT_TRUE(result.IsSwitchSet("text", true) && !result.IsSwitchSet("number", true));
    EXPECT_EQ(result.GetArgument("input"), Value("in"));
    EXPECT_EQ(result.GetArgument("count"), Value(12));
    EXPECT_EQ(result.GetArgument("sure"), Value(true));
    EXPECT_TRUE(result.IsArgumentSet("sure") && !result.IsArgumentSet("unread"));

    ASSERT_EQ(parser.Parse("in again -x"), PARSE_RESULT_INVALID_COMMAND_LINE);
    EXPECT_EQ(result.GetCommand(), nullptr);
    EXPECT_FALSE(result.IsSwitchSet("text", true));
    EXPECT_STREQ(result.GetExtraArgument(0, "none"), "extra");
    EXPECT_STREQ(result.GetExtraArgument(1, "none"), "again");
    EXPECT_STREQ(result.GetExtraArgument(2, "none"), "none");
    EXPECT_STREQ(result.GetExtraArgument(-1, "none"), "none");
    ASSERT_EQ(parser.Parse(nullptr), PARSE_RESULT_SUCCESS);
    EXPECT_STREQ(result.GetLastError(), "");
}

TEST(KvCmdLineTest, ValuesReadAsAnyTypeAndEqualOnlyTheirOwn)
{
    EXPECT_EQ(static_cast<int>(Value(1.0F)), std::bit_cast<int>(1.0F));
    EXPECT_EQ(static_cast<float>(Value(std::bit_cast<int>(2.5F))), 2.5F);
    EXPECT_STREQ(static_cast<const char*>(Value(1)), "");

    const auto unknown = static_cast<EKvParameterType>(5);
    const Value distinct[] = {{}, true, false, 1, 0, 1.0F, 0.0F, "1", "", NAN, unknown};
    for (const CKvParameterValue& first : distinct) {
        const bool equalsItself =
            first.GetType() != unknown && !std::isnan(static_cast<float>(first));
        for (const CKvParameterValue& second : distinct)
            EXPECT_EQ(first == second, &first == &second && equalsItself);
    }
    EXPECT_EQ(Value(-0.0F), Value(0.0F));
}

TEST(KvCmdLineTest, TheHelpPageListsEveryCommandBehindItsOwner)
{
    CKvDescriptor descriptor;
    Declare(descriptor);
    descriptor.BeginCommand("run", nullptr);
    for (int i = 0; i < 100000; ++i)
        descriptor.BeginCommand("", nullptr);
    testing::internal::CaptureStdout();
    descriptor.PrintHelp();
    std::string deep;
    for (int i = 0; i < 100000; ++i)
        deep += "Commands:\n *  : \n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Builds things\n"
              "Usage: program [command [subcommand...]] [options...] [extra arguments...]\n"
              "Options:\n -v :\n -talk :\n --verbose :\n --talk : More output\n"
              " -b :\n --bool : A bool\n -n :\n -num :\n --number :\n -- : A number\n"
              " -f : A float\n --text : A text\n"
              "Expected arguments:\n (1) Input file\n"
              "Commands:\n * add : Adds one\n"
              "Options:\n -v : Another v\n"
              "Expected arguments:\n (1) How many\n (2) Whether\n"
              "Commands:\n * deep : Deeper\n"
              " * run : \n" +
                  deep);
}

}  // namespace
