// That the parser agrees with TinyXML on any text is held by fuzz/Xml.cpp and its corpus.

#include "scripttree/KvXmlParser.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "tests/support/KvSmallStack.h"

namespace {

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

}  // namespace
