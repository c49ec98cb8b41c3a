// The guard in front of the parser is only as good as it is exact, so it is compared with the
// parser itself, on documents that are valid, damaged, and no documents at all.

#include "scripttree/KvXmlLimits.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "tests/support/KvGuardedBytes.h"

namespace {

/// Recurses as the parser did.
void MeasureTree(const TiXmlNode& node, int depth, CKvXmlExtent& extent)
{
    if (const TiXmlElement* element = node.ToElement()) {
        int attributes = 0;
        for (const auto* a = element->FirstAttribute(); a != nullptr; a = a->Next())
            ++attributes;
        extent.attributes = std::max(extent.attributes, attributes);
        extent.depth = std::max(extent.depth, depth);
    }
    for (const auto* child = node.FirstChild(); child != nullptr; child = child->NextSibling())
        MeasureTree(*child, depth + 1, extent);
}

/// Gives a text to both readers, placed so that reading past three zero bytes behind its terminator
/// ends the test, and tells whether it is well-formed.
bool ExpectAgreement(const std::string& text)
{
    static CKvGuardedBytes s_guarded(65536);
    const char* placed = s_guarded.Place(text + std::string(4, '\0'));
    const CKvXmlExtent measured = KvMeasureXml(placed);
    TiXmlDocument document;
    document.Parse(placed, nullptr, TIXML_ENCODING_UNKNOWN);
    CKvXmlExtent actual;
    MeasureTree(document, 0, actual);
    const auto fits = [&](int m, int a) { return m == a || (m > a && document.Error()); };
    EXPECT_TRUE(fits(measured.depth, actual.depth)) << testing::PrintToString(text);
    EXPECT_TRUE(fits(measured.attributes, actual.attributes)) << testing::PrintToString(text);
    return !document.Error();
}

/// Well-formed documents with all that the parser knows.
const std::vector<std::string> kSeeds = {
    "<?xml version='1.0'?>\n<!-- <a> -->\n<!DOCTYPE a>\n<a x='1' y=\"2\" z=3/><b><c/></b>\n",
    "\n<b><c d='>'>text &amp; &#65;&#x42; <e/></c>\t</b><!-- <a>",
    "\xEF\xBB\xBF<\xC3\xA9 a='\xE2\x82\xAC' \xC3\xA9=\"\xF0\x9F\x98\x80\">\xEF\xBF\xBE </\xC3\xA9>",
    "\xEF\xBB\xBF<a>\xF0\x9F\x98\x80<b c=\xC3\xA9>\xC3\xA9</b ><![CDATA[\xF0\x9F\x98\x80]]></a>",
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone='yes'?><a:b-c.d _='' ></a:b-c.d>",
    "<?xml encoding='utf-8'?><_ ><_/>x<\xEF\xBB\xBF_ c='\xC3'/>'></_>&#65;</_>",
    "<?xml encoding='latin-1'?><a \xC3='\xC3' b=\"\xF0\">\xE2</a>",
    "<?XML encoding=utf8x ?><a><a><a><![CDATA[<a>]]]><b c='<'/></a></a ><!-- </a> --></a>",
    "<a><?xml encoding='x'?><!note><?pi <a ?>< a><1><![cdata[x><b c = \n '1'/>&foo; & &;</a><b/>",
    "<a b='1&#65' c='2' d='&#66;' e='&lt;&gt;&quot;&apos;'>1&#<b/>&#65;<c d='&#x10FFFF;'/></a>",
};

/// A seed with up to five changes, half of them behind some '>'.
std::string MakeDocument(std::mt19937& random)
{
    const auto below = [&](std::size_t limit) { return random() % limit; };
    std::string text = kSeeds[below(kSeeds.size())];
    for (std::size_t changes = below(6); changes-- > 0;) {
        const std::string& other = kSeeds[below(kSeeds.size())];
        std::size_t at = below(text.size() + 1);
        if (below(2) == 0)
            at = std::min(text.find('>', at) + 1, text.size());
        if (below(3) == 0)
            text.replace(at, below(3), 1, static_cast<char>(below(256)));
        else
            text.replace(at, below(4), other.substr(below(other.size()), below(40)));
    }
    return text;
}

TEST(KvXmlLimitsTest, AgreesWithTheParserOnAnyDocument)
{
    for (const std::string& seed : kSeeds) {
        EXPECT_TRUE(ExpectAgreement(seed)) << seed;
        for (std::size_t size = 0; size < seed.size(); ++size)
            ExpectAgreement(seed.substr(0, size));
    }
    std::mt19937 random;
    int wellFormed = 0;
    for (int i = 0; i < 60000 && !HasFailure(); ++i)
        wellFormed += ExpectAgreement(MakeDocument(random)) ? 1 : 0;
    EXPECT_GT(wellFormed, 15000);
}

std::string Repeat(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string Nested(int levels, const std::string& content)
{
    return Repeat("<a>", levels) + content + Repeat("</a>", levels);
}

std::string WithAttributes(int count)
{
    std::string text = "<a";
    for (int i = 0; i < count; ++i)
        text += " a" + std::to_string(i) + "=1";
    return text + "/>";
}

TEST(KvXmlLimitsTest, ParsesUpToTheLimitsAndRefusesWhatGoesBeyond)
{
    const std::tuple<const char*, std::string, bool> rows[] = {
        {"4,000 levels", Nested(3999, "<a/>"), true},
        {"4,001 levels", Nested(4000, "<a/>"), false},
        {"10,000 attributes", WithAttributes(10000), true},
        {"10,001 attributes", WithAttributes(10001), false},
        {"many leaves 100 levels deep", Nested(99, Repeat("<a/>", 600000)), true},
        {"many leaves 4,000 levels deep", Nested(3999, Repeat("<a/>", 250000)), false},
        {"many elements of 9,999 attributes", Nested(1, Repeat(WithAttributes(9999), 15)), false},
    };
    for (const auto& [name, text, loads] : rows) {
        CKvScriptTree tree;
        EXPECT_EQ(CKvScriptTreeSerializerXML().Parse(tree, text.c_str()), loads) << name;
    }
}

}  // namespace
