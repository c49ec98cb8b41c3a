// Lines split into words, and words read against a descriptor with all kinds of parameters.

#include <vector>

#include "cmdline/KvParser.h"
#include "fuzz/KvFuzz.h"
#include "platform/KvCommandWordsPosix.h"

using namespace KvCmdLine;

namespace {

using Words = std::vector<std::string>;

const CKvDescriptor& GetDescriptor()
{
    static auto* const s_descriptor = [] {
        auto* descriptor = new CKvDescriptor;
        descriptor->AddSwitch("v", "verbose", "")
            .AddAlias("talk")
            .AddSwitch("b", "bool", "", false)
            .AddSwitch("n", "number", "", 7)
            .AddSwitch("f", nullptr, "", 0.5F)
            .AddSwitch("t", "text", "", "none")
            .AddArgument("input", "")
            .BeginCommand("add", "")
            .AddSwitch("v", nullptr, "", 1)
            .AddArgument("count", "", PARAMETER_TYPE_INT)
            .AddCommand("deep", "")
            .EndCommand();
        return descriptor;
    }();
    return *s_descriptor;
}

Words Split(const std::string& line)
{
    Words words;
    CKvParameterIteratorSplit split(line.c_str());
    while (const char* word = split.GetNext())
        words.push_back(word);
    return words;
}

/// A word as a line holds it: in double quotes, with those in it marked by a backslash.
std::string Quote(const std::string& word)
{
    const std::size_t end = word.find_last_not_of('\\') + 1;
    std::string quoted = "\"";
    for (const char c : word.substr(0, end))
        quoted += c == '"' ? "\\\"" : std::string(1, c);
    return quoted + "\"" + word.substr(end);
}

/// The same for a command: there the backslashes before a quote are doubled.
std::string QuoteForCommand(const std::string& word)
{
    std::string quoted = "\"";
    std::size_t backslashes = 0;
    for (const char c : word) {
        if (c == '"')
            quoted.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, '\\') + '"';
}

template <class TQuote, class TSplit>
void RequireQuotedWordsBack(const Words& words, TQuote quote, TSplit split)
{
    std::string line;
    for (const std::string& word : words)
        line.append(" ").append(quote(word));
    KvRequire(split(line) == words, "quoted words come back from a line");
}

/// All that a parse finds, as one text.
std::string Describe(const CKvResult& result, EKvParseResult parsed)
{
    std::string text = std::to_string(parsed) + result.GetLastError();
    text += result.GetCommand() != nullptr ? result.GetCommand() : "";
    for (const char* name : {"v", "talk", "b", "n", "f", "t"}) {
        const CKvParameterValue& value = result.GetSwitch(name, false);
        text.append(result.IsSwitchSet(name, false) ? " +" : " -").append(name);
        text.append(std::to_string(static_cast<int>(value)))
            .append(static_cast<const char*>(value));
    }
    for (const char* name : {"input", "count"})
        text.append(static_cast<const char*>(result.GetArgument(name)));
    for (int i = 0; i < result.GetExtraArgumentCount(); ++i)
        text.append(" ").append(result.GetExtraArgument(i, nullptr));
    return text;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string line = CKvFuzzInput(data, size).TakeUpTo('\0');
    const Words words = Split(line);
    RequireQuotedWordsBack(words, Quote, Split);
    const auto splitCommand = [](const std::string& text) { return KvSplitCommand(text.c_str()); };
    RequireQuotedWordsBack(splitCommand(line), QuoteForCommand, splitCommand);

    std::vector<const char*> pointers;
    for (const std::string& word : words)
        pointers.push_back(word.c_str());
    CKvResult ofLine;
    CKvResult ofWords;
    const EKvParseResult lineParsed = CKvParser(&GetDescriptor(), &ofLine).Parse(line.c_str());
    const EKvParseResult wordsParsed =
        CKvParser(&GetDescriptor(), &ofWords)
            .Parse(static_cast<int>(pointers.size()), pointers.data());
    KvRequire((lineParsed == PARSE_RESULT_SUCCESS) == (*ofLine.GetLastError() == '\0'),
              "a failure has a message");
    KvRequire(Describe(ofLine, lineParsed) == Describe(ofWords, wordsParsed),
              "a line means what its words mean");
    return 0;
}
