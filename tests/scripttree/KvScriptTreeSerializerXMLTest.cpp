// The XML form of script trees, and the saver that writes XML without one.

#include "scripttree/KvScriptTreeSerializerXML.h"

#include <gtest/gtest.h>

#include <utility>

#include "scripttree/KvXMLSaver.h"
#include "tests/scripttree/KvTreeText.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using Serializer = CKvScriptTreeSerializerXML;

constexpr const char* kFails = "<empty>";

TEST(KvScriptTreeSerializerXMLTest, DocumentsBecomeTrees)
{
    const std::pair<const char*, const char*> rows[] = {
        {"<A Name='1' name=\"two\" z=3/>", "a{name=1}{name=two}{z=3}"},
        {"<a>hello<b/> two \n\t words </a>", "a('hello' b 'two words')"},
        {"<a> one<!-- <b/> -->two \n </a>", "a('one' 'two')"},
        {"<a><![CDATA[ <b> &amp; ]]><![CDATA[]]></a>", "a(' <b> &amp; ' )"},
        {"<a><?pi x?><!note><?xml version='1.0'?></a>", "a(?pi x? !note )"},
        {"<a b='&lt;&gt;&amp;&quot;&apos;&#x42;'>&lt;b&gt;</a>", "a{b=<>&\"'B}('<b>')"},
        {"\n<?xml version='1.0'?><!-- c --><!DOCTYPE a><a b='&#233;'/><b/>", "a{b=\xC3\xA9}"},
        {"\xEF\xBB\xBF<a b='&#233;'/>", "a{b=\xC3\xA9}"},
        {"<a b='&#233;'/>", "a{b=\xE9}"},
        {"<?xml version='1.0'?><!-- no element -->", kFails},
        {"\xEF\xBB\xBF<a b='\xF0", kFails},  // ends inside a character
        {"<a/><b>", kFails},
    };
    for (const auto& [text, result] : rows) {
        CParsedTree tree(kOldXml);
        EXPECT_EQ(Serializer().Parse(tree, text), result != kFails) << text;
        EXPECT_EQ(TreeText(tree), result) << text;
    }
}

TEST(KvScriptTreeSerializerXMLTest, WhatATreeHoldsCanReplaceIt)
{
    CParsedTree tree("<old document='&lt;new/>'/>");
    EXPECT_TRUE(Serializer().Parse(tree, tree.GetRootNode()->GetAttribute(0).GetValue()));
    tree.CreateRootNode(tree.GetRootNode()->GetIdentifier());
    EXPECT_EQ(TreeText(tree), "new");
}

TEST(KvScriptTreeSerializerXMLTest, SavesAreIndentedAndUnescaped)
{
    const CKvTemporaryFolder folder;
    const TKvString<char> path = folder.Path("a.xml").c_str();
    CParsedTree tree(
        "<level><Entity name='&lt;\"box\" &amp; co>' kind=''/><list>not written</list></level>");
    EXPECT_TRUE(Serializer().Save(tree, path));
    EXPECT_EQ(folder.Read("a.xml"),
              "<level>\n"
              "    <entity name=\"<\"box\" & co>\" kind=\"\"/>\n"
              "    <list>\n"
              "        </>\n"
              "    </list>\n"
              "</level>\n");
    tree.Empty();
    EXPECT_FALSE(Serializer().Save(tree, path));
    EXPECT_EQ(folder.Read("a.xml"), "") << "a tree without root leaves an empty file";
}

TEST(KvXMLSaverTest, SectionsNestAndValuesAreEscaped)
{
    const CKvTemporaryFolder folder;
    CKvXMLSaver saver;
    saver.addValue("lost", 1);  // the document has no attributes
    saver.beginSection("level");
    saver.addValue("version", 1);
    saver.addValue("version", 2);
    saver.addValue("gravity", -9.5F);
    saver.beginSection("entity");
    saver.addValue("name", TKvString<char>("<&\"'>\n \xC3\xA9"));
    saver.endSection();
    saver.beginSection("dummy");
    EXPECT_TRUE(saver.save(folder.Path("a.xml").c_str()));
    EXPECT_EQ(folder.Read("a.xml"),
              "<level version=\"2\" gravity=\"-9.500000\">\n"
              "    <entity name='&lt;&amp;&quot;&apos;&gt;&#x0A; \xC3\xA9' />\n"
              "    <dummy />\n"
              "</level>\n");
    saver.clear();
    EXPECT_FALSE(saver.save(folder.Path("b.xml").c_str()));
}

TEST(KvXMLSaverTest, TheStackIsBoundedAtBothEnds)
{
    CKvXMLSaver saver;
    for (int i = 1; i <= 31; ++i)
        saver.beginSection("open");
    saver.beginSection("full");  // is added but not opened
    EXPECT_EQ(saver.getSectionName(), "open");
    for (int i = 1; i <= 40; ++i)
        saver.endSection();
    saver.beginSection("lost");
    saver.addValue("lost", 1);
    EXPECT_EQ(saver.getSectionName(), "");
}

}  // namespace
