// The parser must not differ from TinyXML on any text, so both read documents that are valid,
// damaged, and no documents at all.

#include "scripttree/KvXmlParser.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "scripttree/KvScriptTreeSerializerXML.h"
#include "tests/support/KvGuardedBytes.h"
#include "tests/support/KvSmallStack.h"

namespace {

/// What TinyXML makes of a text up to its first NUL, which it gets with the padding that it needs.
class CReference : public CKvScriptTreeSerializerXML
{
public:
    using CKvScriptTreeSerializerXML::ParseTiXmlNode;

    CKvOwnedScriptTreeNode ParseWhole(const std::string& text)
    {
        const std::string padded = text.c_str() + std::string(3, '\0');
        TiXmlDocument document;
        document.Parse(padded.c_str(), nullptr, TIXML_ENCODING_UNKNOWN);
        if (document.Error() || document.FirstChildElement() == nullptr)
            return nullptr;
        CKvOwnedScriptTreeNode root(new CKvScriptTreeNode);
        ParseTiXmlNode(document.FirstChildElement(), root.get());
        return root;
    }
};

/// Gives a text to both. For the parser nothing behind the terminator can be read. Tells whether
/// the text loads.
bool ExpectAgreement(const std::string& text)
{
    static CKvGuardedBytes s_guarded(65536);
    const CKvOwnedScriptTreeNode expected = CReference().ParseWhole(text);
    const CKvOwnedScriptTreeNode parsed = KvParseXml(s_guarded.Place(text + '\0'));
    EXPECT_EQ(parsed != nullptr, expected != nullptr) << testing::PrintToString(text);
    if (parsed == nullptr || expected == nullptr)
        return false;
    EXPECT_TRUE(*parsed == *expected) << testing::PrintToString(text);
    return true;
}

/// Well-formed documents with all that the parser knows.
const std::vector<std::string> kSeeds = {
    "<?xml version='1.0'?>\n<!-- <a> -->\n<!DOCTYPE a>\n<a x='1' y=\"2\" z=3/><b><c/></b>\n",
    "\n<b><c d='>'>text &amp; &#65;&#x42; <e/></c>\t</b><!-- <a>",
    "\xEF\xBB\xBF\xEF\xBF\xBF<\xC3\xA9 \xC3\xA9='\xE2\x82\xAC'>\xEF\xBF\xBE </\xC3\xA9>",
    "\xEF\xBB\xBF<a>\xF0\x9F\x98\x80<b c=\xC3\xA9>\xC3\xA9</b ><![CDATA[\xF0\x9F\x98\x80]]></a>",
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone='yes'?><a:b-c.d _='' ></a:b-c.d>",
    "<?xml encoding='utf-8'?><_ ><_/>x<\xEF\xBB\xBF_ c='\xC3'/>'></_>&#65;</_>",
    "<?xml encoding='latin-1'?><a \xC3='\xC3' b=\"\xF0\">\xE2</a>",
    "<?XML encoding=utf8x ?><a><a><a><![CDATA[<a>]]]><b c='<'/></a></a ><!-- </a> --></a>",
    "<a><?xml encoding='x'?><!note><?pi <a ?>< a><1><![cdata[x><b c = \n '1'/>&foo; & &;</a><b/>",
    "<a b='1&#65' c='2' d='&#66;' e='&lt;&gt;&quot;&apos;'>1&#<b/>&#65;<c d='&#x10FFFF;'/></a>",
};

std::size_t Below(std::mt19937& random, std::size_t limit)
{
    return random() % limit;
}

/// A seed with up to five changes, half of them behind some '>'.
std::string MakeDamaged(std::mt19937& random)
{
    std::string text = kSeeds[Below(random, kSeeds.size())];
    for (std::size_t changes = Below(random, 6); changes-- > 0;) {
        const std::string& other = kSeeds[Below(random, kSeeds.size())];
        std::size_t at = Below(random, text.size() + 1);
        if (Below(random, 2) == 0)
            at = std::min(text.find('>', at) + 1, text.size());
        if (Below(random, 3) == 0)
            text.replace(at, Below(random, 3), 1, static_cast<char>(Below(random, 256)));
        else
            text.replace(at, Below(random, 4),
                         other.substr(Below(random, other.size()), Below(random, 40)));
    }
    return text;
}

/// A document of elements and all that can stand in them, most of it plain.
std::string MakeGenerated(std::mt19937& random)
{
    static const std::vector<std::string> s_names = {"a",      "A",       "b_c",
                                                     "entity", "x:y.z-1", "\xC3\xA9"};
    static const std::vector<std::string> s_values = {
        "",          "1.5",           "a b",      " x  y ",
        "&lt;&#65;", "it's \t\n",     "\xC3\xA9", "\xE2\x82",
        "> ]]> -->", "&none; &#x41;", "-12",      "long text of many words"};
    static const std::vector<std::string> s_between = {
        "\n    ", "",          "<!-- <c> -->", "<![CDATA[ <d> ]]>",
        "<!E f>", "some text", " a  b\r\nc ",  "&amp;"};
    const auto pick = [&](const std::vector<std::string>& from) {
        return from[Below(random, from.size())];
    };
    std::string text = Below(random, 2) == 0 ? "<?xml version='1.0'?>" : "";
    std::vector<std::string> open;
    for (std::size_t left = 1 + Below(random, 12); left > 0 || !open.empty();) {
        if (left == 0 || (!open.empty() && Below(random, 3) == 0)) {
            text.append("</").append(open.back()).append(">");
            open.pop_back();
        } else {
            --left;
            open.push_back(pick(s_names));
            text.append("<").append(open.back());
            for (std::size_t i = Below(random, 4); i > 0; --i)
                text.append(" ").append(pick(s_names)).append("='").append(pick(s_values)) += "'";
            if (Below(random, 2) == 0) {
                text += "/>";
                open.pop_back();
            } else {
                text += ">";
            }
        }
        text += pick(s_between);
    }
    return text;
}

TEST(KvXmlParserTest, AgreesWithTinyXmlOnAnyText)
{
    for (const std::string& seed : kSeeds) {
        EXPECT_TRUE(ExpectAgreement(seed)) << seed;
        for (std::size_t size = 0; size < seed.size(); ++size)
            ExpectAgreement(seed.substr(0, size));
    }
    std::mt19937 random;
    int loaded = 0;
    for (int i = 0; i < 50000 && !HasFailure(); ++i) {
        loaded += ExpectAgreement(MakeDamaged(random)) ? 1 : 0;
        loaded += ExpectAgreement(MakeGenerated(random)) ? 1 : 0;
    }
    EXPECT_GT(loaded, 25000);
}

std::string Repeat(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string WithAttributes(int count, const std::string& last)
{
    std::string text = "<a";
    for (int i = 0; i < count; ++i)
        text.append(" a").append(std::to_string(i)).append("=1");
    return text + last + "/>";
}

TEST(KvXmlParserTest, LoadsAnyDepthAndAnyCounts)
{
    constexpr int kDepth = 1000000;
    const std::string open = Repeat("<a>", kDepth);
    const std::string close = Repeat("</a>", kDepth);
    const std::tuple<const char*, std::string, bool> rows[] = {
        {"1,000,000 levels", open + close, true},
        {"leaves below 1,000,000 levels", open + Repeat("<a/>", 250000) + close, true},
        {"1,000,000 levels, one not closed", open + close.substr(4), false},
        {"100,000 attributes", WithAttributes(100000, ""), true},
        {"100,000 attributes, one twice", WithAttributes(100000, " a7=2"), false},
        {"many elements of 9,999 attributes", "<b>" + Repeat(WithAttributes(9999, ""), 15) + "</b>",
         true},
    };
    for (const auto& [name, text, loads] : rows) {
        KvRunOnSmallStack([&, &text = text, loads = loads, name = name] {
            EXPECT_EQ(KvParseXml(text.c_str()) != nullptr, loads) << name;
        });
    }
}

TEST(KvXmlParserTest, NodesOfTinyXmlAreMovedOverAtAnyDepth)
{
    KvRunOnSmallStack([] {
        TiXmlElement root("a");
        TiXmlNode* deepest = &root;
        for (int i = 1; i < 200000; ++i)
            deepest = deepest->LinkEndChild(new TiXmlElement("a"));
        const CKvOwnedScriptTreeNode moved(new CKvScriptTreeNode);
        CReference().ParseTiXmlNode(&root, moved.get());
        EXPECT_TRUE(*moved ==
                    *KvParseXml((Repeat("<a>", 200000) + Repeat("</a>", 200000)).c_str()));
        EXPECT_EQ(root.FirstChild(), nullptr);
    });
}

}  // namespace
