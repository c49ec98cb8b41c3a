// The guard in front of the parser is only as good as it is exact, so it is compared with the
// parser itself, on documents that are valid, damaged, and no documents at all.

#include "scripttree/KvXmlLimits.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "tests/support/KvGuardedBytes.h"

namespace {

using std::string_literals::operator""s;

constexpr std::size_t kPadding = 3;

/// The text with its terminator and the zero bytes that the parser needs behind it, and no more.
std::vector<char> Padded(const std::string& text)
{
    std::vector<char> bytes(text.begin(), text.end());
    bytes.resize(text.size() + 1 + kPadding);
    return bytes;
}

CKvXmlExtent MeasureDocument(const TiXmlDocument& document)
{
    struct CPlace
    {
        const TiXmlNode* node;
        int depth;
    };
    CKvXmlExtent extent;
    std::vector<CPlace> pending = {{&document, 0}};
    while (!pending.empty()) {
        const CPlace place = pending.back();
        pending.pop_back();
        for (const TiXmlNode* child = place.node->FirstChild(); child != nullptr;
             child = child->NextSibling())
            pending.push_back({child, place.depth + 1});
        const TiXmlElement* element = place.node->ToElement();
        if (element == nullptr)
            continue;
        int count = 0;
        for (const auto* a = element->FirstAttribute(); a != nullptr; a = a->Next())
            ++count;
        extent.depth = std::max(extent.depth, place.depth);
        extent.attributes = std::max(extent.attributes, count);
    }
    return extent;
}

/// The pieces between the '|'.
std::vector<std::string> Split(const std::string& pieces)
{
    std::vector<std::string> split(1);
    for (const char c : pieces) {
        if (c == '|')
            split.emplace_back();
        else
            split.back() += c;
    }
    return split;
}

const std::vector<std::string> kPrologs = Split(
    "\xEF\xBB\xBF|<?xml version='1.0'?>|<?xml version=\"1.0\" encoding=\"UTF-8\" "
    "standalone='yes'?>\n|"
    "<?XML encoding='utf8x'>|<?xml encoding='latin-1'?>|<?xml encoding='&#0;'?>|"
    "<?xml encoding=\"\"?>|<?xml-stylesheet encoding=UTF-8 ?>|<?xml '>' encoding?>|"
    " <!-- <a> --> |<!DOCTYPE a>|<![CDATA[<a>]]>|<?pi?>");
const std::vector<std::string> kNames =
    Split("a|b|ab|_|a:b-c.d|xml|\xC3\xA9|\x7F|\xF0\x9F\x98\x80|\xFF");
const std::vector<std::string> kCharacters = Split(
    "t| |\r\n|\t\v\f|>|]]>|=|/|;|x|#|--|&amp;|&lt;|&gt;|&quot;|&apos;|&foo;|&#65;|&#x41;|&#0;|&#x;|"
    "&#;|&#x10FFFF;|&|\xC3\xA9|\xE2\x82\xAC|\xF0\x9F\x98\x80|\xC0|\x80|\xF5|\xEF\xBB\xBF|"
    "\xEF\xBF\xBE|\xEF\xBF\xBF");
const std::vector<std::string> kMarkup = Split(
    "<![CDATA[<a>]]>|<![CDATA[]]>|<![cdata[|<!-- </a> -->|<!-->-->|<!|<!ELEMENT a>|"
    "<?xml encoding='UTF-8'?>|<?xml encoding='x' />|<?pi <a ?>|< a>|<1>|<_/>");
const std::vector<std::string> kBroken = Split(
    "<|</|<a|<a |/>|<a b|<a b=|<a>|</a>|</ a|<a b='|\"|'|<![CDATA[|<!--|-->|&#x|&#1x;|&#65|<?xml|"
    "<\xEF\xBB\xBF|<\xEF\xBB\xBF_>|\xC3|\xE2|\xF0|\xF4\x8F|\xEF|\0"s);

/// Makes documents from fragments that each mean something to the parser.
class CDocumentMaker
{
public:
    explicit CDocumentMaker(unsigned seed) : m_random(seed) {}

    std::string Make()
    {
        std::string text;
        if (OneIn(2))
            text += Pick(kPrologs);
        for (int i = Below(3); i-- > 0;)
            AddContent(text);
        if (OneIn(8))
            AddSoup(text);
        else
            AddElement(text, 0);
        for (int i = Below(3); i-- > 0;)
            AddContent(text);
        if (OneIn(3)) {
            for (int i = Below(4); i >= 0; --i)
                Damage(text);
        }
        return text;
    }

private:
    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    bool OneIn(int count) { return Below(count) == 0; }

    const std::string& Pick(const std::vector<std::string>& from)
    {
        return from[static_cast<std::size_t>(Below(static_cast<int>(from.size())))];
    }

    void AddContent(std::string& text)
    {
        text += OneIn(8) ? Pick(kMarkup) : OneIn(20) ? Pick(kBroken) : Pick(kCharacters);
    }

    /// Single characters without any plan.
    void AddSoup(std::string& text)
    {
        static constexpr std::string_view kAlphabet =
            "<<<>>//==\"''&#x;_abc  !-[]?\xEF\xBB\xBF\xF0";
        for (int i = Below(40); i-- > 0;)
            text += kAlphabet[static_cast<std::size_t>(Below(static_cast<int>(kAlphabet.size())))];
    }

    void AddAttribute(std::string& text, int number)
    {
        const std::string blank = OneIn(5) ? " \n" : "";
        text += " " + Pick(kNames) + (OneIn(40) ? "" : std::to_string(number));
        text += blank + "=" + blank;
        const std::string quote = OneIn(5) ? "" : OneIn(2) ? "'" : "\"";
        text += quote;
        if (quote.empty())
            text += Pick(kNames);
        else
            for (int i = Below(4); i-- > 0;)
                text += OneIn(10) ? Pick(kMarkup) : Pick(kCharacters);
        text += quote;
    }

    void AddElement(std::string& text, int depth)
    {
        const std::string name = Pick(kNames);
        text += (OneIn(20) ? "<\xEF\xBB\xBF" : "<") + name;  // a mark is skipped in UTF-8 alone
        for (int i = OneIn(2) ? Below(6) : 0; i > 0; --i)
            AddAttribute(text, i);
        if (OneIn(3)) {
            text += OneIn(5) ? " />" : "/>";
            return;
        }
        text += ">";
        for (int i = Below(5); i-- > 0;) {
            if (depth < 6 && OneIn(2))
                AddElement(text, depth + 1);
            else
                AddContent(text);
        }
        text += "</" + name + (OneIn(5) ? " >" : ">");
    }

    void Damage(std::string& text)
    {
        const auto at = static_cast<std::size_t>(Below(static_cast<int>(text.size()) + 1));
        const auto size = static_cast<std::size_t>(Below(6));
        switch (Below(5)) {
            case 0:
                text.resize(at);
                break;
            case 1:
                text.erase(at, size);
                break;
            case 2:
                text.insert(at, OneIn(2) ? Pick(kBroken) : Pick(kMarkup));
                break;
            case 3:
                text.insert(at, text.substr(text.size() / 2, size * 4));
                break;
            default:
                text.replace(at, size, 1, static_cast<char>(Below(256)));
        }
    }

    std::mt19937 m_random;
};

std::string Repeat(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string Nested(int levels)
{
    return Repeat("<a>", levels) + Repeat("</a>", levels);
}

std::string WithAttributes(int count)
{
    std::string text = "<a>text<b";
    for (int i = 0; i < count; ++i)
        text += " a" + std::to_string(i) + "=1";
    return text + "/></a>";
}

/// Counts what it checked, so that the generator cannot quietly make nothing but rubbish.
struct CTally
{
    int wellFormed = 0;
    int malformed = 0;

    void Check(const std::string& text)
    {
        const std::vector<char> padded = Padded(text);
        const CKvXmlExtent measured = KvMeasureXml(padded.data());
        TiXmlDocument document;
        document.SetTabSize(0);
        document.Parse(padded.data(), nullptr, TIXML_ENCODING_UNKNOWN);
        const CKvXmlExtent actual = MeasureDocument(document);
        const bool exact = !document.Error();
        ++(exact ? wellFormed : malformed);
        const bool right =
            exact ? measured.depth == actual.depth && measured.attributes == actual.attributes
                  : measured.depth >= actual.depth && measured.attributes >= actual.attributes;
        EXPECT_TRUE(right) << "depth " << measured.depth << ", not " << actual.depth
                           << "; attributes " << measured.attributes << ", not "
                           << actual.attributes << (exact ? "" : " or more") << " in\n"
                           << testing::PrintToString(text);
    }
};

TEST(KvXmlLimitsTest, AgreesWithTheParserOnAnyDocument)
{
    constexpr int kDocuments = 40000;
    CTally tally;
    CDocumentMaker maker(1);
    for (int i = 0; i < kDocuments && !HasFailure(); ++i) {
        const std::string text = maker.Make();
        tally.Check(text);
        for (std::size_t size = i % 100 == 0 ? text.size() : 0; size-- > 0;)
            tally.Check(text.substr(0, size));
    }
    EXPECT_GT(tally.wellFormed, 10000);
    EXPECT_GT(tally.malformed, 20000);
}

TEST(KvXmlLimitsTest, ThreeZeroBytesBehindTheTextKeepBothReadersInBounds)
{
    // Cut anywhere, also in the middle of a character, in each place where characters are read.
    const std::string sample =
        "\xEF\xBB\xBF<?xml version='\xF0\x9F\x98\x80' encoding='UTF-8'?><!-- \xF0\x9F\x98\x80 -->"
        "<\xC3\xA9 a='\xC3\xA9' b=\"\xE2\x82\xAC\xF0\x9F\x98\x80\" c=\xF0\x9F\x98\x80>\xE2\x82\xAC"
        "\xF0\x9F\x98\x80 &#x1F600; "
        "\xEF\xBF\xBF<![CDATA[\xF0\x9F\x98\x80]]><!\xF0\x9F\x98\x80></\xC3\xA9>";
    CKvGuardedBytes guarded(sample.size() + 1 + kPadding);
    CKvScriptTreeSerializerXML serializer;
    CKvScriptTree tree;
    for (std::size_t size = 0; size <= sample.size(); ++size) {
        const std::vector<char> padded = Padded(sample.substr(0, size));
        const char* text = guarded.Place({padded.data(), padded.size()});
        KvMeasureXml(text);
        TiXmlDocument().Parse(text, nullptr, TIXML_ENCODING_UNKNOWN);
        EXPECT_EQ(serializer.Parse(tree, text), size == sample.size()) << size;
    }
}

TEST(KvXmlLimitsTest, ParsesUpToTheLimitsAndRefusesWhatGoesBeyond)
{
    const struct
    {
        const char* name;
        std::string text;
        bool loads;
    } rows[] = {
        {"4,000 levels", Nested(4000), true},
        {"4,001 levels", Nested(4001), false},
        {"a million levels", Nested(1000000), false},
        {"the deepest level an empty element", Repeat("<a>", 4000) + "<a/>", false},
        {"levels hidden in values", Repeat("<a x=\"</\">", 60000), false},
        {"levels hidden in comments", "<a>" + Repeat("<!--<a>-->", 5000) + "</a>", true},
        {"10,000 attributes", WithAttributes(10000), true},
        {"10,001 attributes", WithAttributes(10001), false},
        {"a million attributes", WithAttributes(1000000), false},
        {"10,001 siblings", "<a>" + Repeat("<b c='1' d='2'/>", 10001) + "</a>", true},
    };
    CKvScriptTreeSerializerXML serializer;
    CKvScriptTree tree;
    for (const auto& row : rows) {
        EXPECT_EQ(KvMeasureXml(Padded(row.text).data()).IsWithinLimits(), row.loads) << row.name;
        EXPECT_EQ(serializer.Parse(tree, row.text.c_str()), row.loads) << row.name;
    }
}

}  // namespace
