// KvBenchCmdLine: parses random command lines with the command-line library and with getopt_long,
// which both understand alike, in turn, and prints what a word costs.

#include <getopt.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "bench/KvBenchRandom.h"
#include "bench/KvBenchReport.h"
#include "bench/KvMeasureInTurn.h"
#include "cmdline/KvParser.h"

namespace {

using KvCmdLine::CKvDescriptor;
using KvCmdLine::CKvParameterValue;
using KvCmdLine::CKvParser;
using KvCmdLine::CKvResult;
using KvCmdLine::EKvParameterType;

constexpr int kRounds = 9;
constexpr int kLines = 1000;
constexpr int kWordsPerLine = 20;
constexpr int kPasses = 20;
constexpr double kGoal = 5;

/// The flags come first.
constexpr std::size_t kFlags = 8;

struct CSwitch
{
    char letter;
    const char* name;
    EKvParameterType type;
};

constexpr std::array<CSwitch, 20> kSwitches{{
    {'v', "verbose", KvCmdLine::PARAMETER_TYPE_SWITCH},
    {'q', "quiet", KvCmdLine::PARAMETER_TYPE_SWITCH},
    {'f', "force", KvCmdLine::PARAMETER_TYPE_SWITCH},
    {'n', "dry-run", KvCmdLine::PARAMETER_TYPE_SWITCH},
    {'r', "recursive", KvCmdLine::PARAMETER_TYPE_SWITCH},
    {'a', "all", KvCmdLine::PARAMETER_TYPE_SWITCH},
    {'k', "keep-going", KvCmdLine::PARAMETER_TYPE_SWITCH},
    {'s', "strip", KvCmdLine::PARAMETER_TYPE_SWITCH},
    {'o', "output", KvCmdLine::PARAMETER_TYPE_STRING},
    {'i', "include", KvCmdLine::PARAMETER_TYPE_STRING},
    {'x', "exclude", KvCmdLine::PARAMETER_TYPE_STRING},
    {'p', "platform", KvCmdLine::PARAMETER_TYPE_STRING},
    {'c', "configuration", KvCmdLine::PARAMETER_TYPE_STRING},
    {'t', "target", KvCmdLine::PARAMETER_TYPE_STRING},
    {'j', "jobs", KvCmdLine::PARAMETER_TYPE_INT},
    {'l', "level", KvCmdLine::PARAMETER_TYPE_INT},
    {'d', "depth", KvCmdLine::PARAMETER_TYPE_INT},
    {'w', "width", KvCmdLine::PARAMETER_TYPE_INT},
    {'g', "gamma", KvCmdLine::PARAMETER_TYPE_FLOAT},
    {'z', "zoom", KvCmdLine::PARAMETER_TYPE_FLOAT},
}};

bool IsFlag(const CSwitch& each)
{
    return each.type == KvCmdLine::PARAMETER_TYPE_SWITCH;
}

/// The words of a line, the program's name first.
struct CLine
{
    std::vector<std::string> words{"program"};
    std::vector<char*> pointers;
};

std::string MakeValue(const CSwitch& each, CKvBenchRandom& random)
{
    const std::string number = std::to_string(random.Below(100000));
    if (each.type == KvCmdLine::PARAMETER_TYPE_STRING)
        return std::string("data/part").append(number);
    return each.type == KvCmdLine::PARAMETER_TYPE_FLOAT ? std::string("0.").append(number) : number;
}

/// A positional word, or a switch in one of its forms.
void AddWords(std::vector<std::string>& words, CKvBenchRandom& random)
{
    const std::uint64_t form = random.Below(5);
    const CSwitch& each = kSwitches[random.Below(kSwitches.size())];
    if (form == 0) {
        words.push_back(std::string("levels/harbour").append(std::to_string(random.Below(1000))));
        return;
    }
    words.push_back(form < 3 ? std::string("--").append(each.name) : std::string{'-', each.letter});
    if (IsFlag(each)) {
        if (form >= 3)
            words.back() += kSwitches[random.Below(kFlags)].letter;
    } else if (form == 3) {
        words.back() += MakeValue(each, random);
    } else {
        words.push_back(MakeValue(each, random));
    }
}

std::vector<CLine> MakeLines()
{
    CKvBenchRandom random(1);
    std::vector<CLine> lines(kLines);
    for (CLine& line : lines) {
        while (line.words.size() <= kWordsPerLine)
            AddWords(line.words, random);
        for (std::string& word : line.words)
            line.pointers.push_back(word.data());
        line.pointers.push_back(nullptr);
    }
    return lines;
}

int CountOf(const CLine& line)
{
    return static_cast<int>(line.words.size());
}

void Declare(CKvDescriptor& descriptor)
{
    for (const CSwitch& each : kSwitches) {
        const char letter[2] = {each.letter, '\0'};
        descriptor.AddSwitch(letter, each.name, "", CKvParameterValue(each.type));
    }
}

/// What a program gets from getopt_long with its own few lines around it.
class CYardstick
{
public:
    struct CValue
    {
        bool isSet = false;
        const char* text = "";
        int number = 0;
        float real = 0;
    };

    CYardstick()
    {
        for (const CSwitch& each : kSwitches) {
            m_letters += each.letter;
            m_letters += IsFlag(each) ? "" : ":";
            m_options.push_back(
                {each.name, IsFlag(each) ? no_argument : required_argument, nullptr, each.letter});
        }
        m_options.push_back({});
    }

    bool Parse(const CLine& line)
    {
        values = {};
        extra.clear();
        std::vector<char*> words = line.pointers;
        optind = 0;  // starts over
        for (;;) {
            const int found = getopt_long(CountOf(line), words.data(), m_letters.c_str(),
                                          m_options.data(), nullptr);
            if (found < 0)
                return true;
            if (found == '?')
                return false;
            if (found == 1)
                extra.push_back(optarg);
            else
                Store(static_cast<char>(found));
        }
    }

    std::array<CValue, kSwitches.size()> values;
    std::vector<const char*> extra;

private:
    void Store(char letter)
    {
        std::size_t index = 0;
        while (kSwitches[index].letter != letter)
            ++index;
        values[index].isSet = true;
        if (kSwitches[index].type == KvCmdLine::PARAMETER_TYPE_STRING)
            values[index].text = optarg;
        else if (kSwitches[index].type == KvCmdLine::PARAMETER_TYPE_INT)
            values[index].number = static_cast<int>(std::strtol(optarg, nullptr, 10));
        else if (kSwitches[index].type == KvCmdLine::PARAMETER_TYPE_FLOAT)
            values[index].real = static_cast<float>(std::strtod(optarg, nullptr));
    }

    std::string m_letters = "-";  ///< positional words come in their place, as option 1
    std::vector<option> m_options;
};

KvCmdLine::EKvParseResult ParseOurs(const CKvDescriptor& descriptor, const CLine& line,
                                    CKvResult& result)
{
    return CKvParser(&descriptor, &result).Parse(CountOf(line) - 1, line.pointers.data() + 1);
}

bool AreSame(const CKvParameterValue& ours, const CYardstick::CValue& other, EKvParameterType type)
{
    switch (type) {
        case KvCmdLine::PARAMETER_TYPE_INT:
            return ours == CKvParameterValue(other.number);
        case KvCmdLine::PARAMETER_TYPE_FLOAT:
            return ours == CKvParameterValue(other.real);
        case KvCmdLine::PARAMETER_TYPE_STRING:
            return ours == CKvParameterValue(other.text);
        default:
            return true;
    }
}

/// True when both make the same of a line.
bool Agree(const CKvDescriptor& descriptor, const CLine& line, CYardstick& yardstick)
{
    CKvResult result;
    if (ParseOurs(descriptor, line, result) != 0 || !yardstick.Parse(line))
        return false;
    for (std::size_t i = 0; i < kSwitches.size(); ++i) {
        const CSwitch& each = kSwitches[i];
        const CYardstick::CValue& other = yardstick.values[i];
        if (result.IsSwitchSet(each.name, true) != other.isSet ||
            !AreSame(result.GetSwitch(each.name, true), other, each.type))
            return false;
    }
    for (int i = 0; i < result.GetExtraArgumentCount(); ++i) {
        if (std::string_view(result.GetExtraArgument(i, "")) !=
            yardstick.extra.at(static_cast<std::size_t>(i)))
            return false;
    }
    return result.GetExtraArgumentCount() == static_cast<int>(yardstick.extra.size());
}

}  // namespace

int main()
{
    CKvDescriptor descriptor;
    Declare(descriptor);
    const std::vector<CLine> lines = MakeLines();
    CYardstick yardstick;
    double words = 0;
    for (const CLine& line : lines) {
        words += CountOf(line) - 1;
        if (!Agree(descriptor, line, yardstick)) {
            std::fprintf(stderr, "bench: the two read a line differently\n");
            return 1;
        }
    }

    int failures = 0;
    const CKvTurnCosts costs = KvMeasureInTurn(
        kRounds,
        [&] {
            for (int pass = 0; pass < kPasses; ++pass) {
                for (const CLine& line : lines) {
                    CKvResult result;
                    failures += ParseOurs(descriptor, line, result);
                }
            }
        },
        [&] {
            for (int pass = 0; pass < kPasses; ++pass) {
                for (const CLine& line : lines)
                    failures += yardstick.Parse(line) ? 0 : 1;
            }
        });
    if (failures != 0)
        return 1;

    words *= kPasses;
    std::printf("medians of %d rounds, lines of about %d words, %zu switches\n\n", kRounds,
                kWordsPerLine, kSwitches.size());
    std::printf("words a second: %.1f million, getopt_long %.1f million\n\n",
                words / costs.ours / 1e6, words / costs.yardstick / 1e6);
    KvPrintFigures({{"command-line words / getopt_long", costs.Ratio(), kGoal}});
    return 0;
}
