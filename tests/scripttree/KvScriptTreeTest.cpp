// Values as text in attributes, and trees of nodes: look-ups, changes, copies and depth.

#include "scripttree/KvScriptTree.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <climits>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "math/KvColor.h"
#include "math/KvQuaternion.h"
#include "math/KvVector2.h"
#include "math/KvVector3.h"
#include "scripttree/KvScriptTreeSerializerTML.h"
#include "tests/scripttree/KvTreeText.h"
#include "tests/support/KvSmallStack.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using Attribute = CKvScriptTreeAttribute;
using Node = CKvScriptTreeNode;
using OwnedNode = CKvOwnedScriptTreeNode;

const CKvIdentifier kX("x");

TEST(KvScriptTreeTest, TypedConstructorsWriteTheirTextAndType)
{
    using enum CKvScriptTreeAttribute::EType;
    const TKvString<wchar_t> wide(L"\u00E9\u20AC");
    const char* const oneToFour = "1.000000 2.000000 3.000000 4.000000";
    const std::tuple<Attribute, const char*, Attribute::EType> rows[] = {
        {Attribute(kX, static_cast<const char*>(nullptr)), "", TYPE_STRING},
        {Attribute(kX, wide), "\xC3\xA9\xE2\x82\xAC", TYPE_STRING},
        {Attribute(kX, 255ULL), "0X00000000000000FF", TYPE_U64},
        {Attribute(kX, 0xFEDCBA9876543210UL), "0XFEDCBA9876543210", TYPE_U64},
        {Attribute(kX, 3000000000U), "-1294967296", TYPE_U64},
        {Attribute(kX, INT_MIN), "-2147483648", TYPE_INT},
        {Attribute(kX, -FLT_MAX), "-340282346638528859811704183484516925440.000000", TYPE_FLOAT},
        {Attribute(kX, CKvVector3(1, -2.5F, 1e-7F)), "1.000000 -2.500000 0.000000", TYPE_VECTOR3},
        {Attribute(kX, CKvQuaternion(1, 2, 3, 4)), oneToFour, TYPE_QUATERNION},
        {Attribute(kX, CKvRGB<float>(1, 2, -1)), "1.000000 2.000000 -1.000000", TYPE_RGB},
        {Attribute(kX, CKvRGBA<float>(1, 2, 3, 4)), oneToFour, TYPE_RGBA},
    };
    for (const auto& [attribute, text, type] : rows) {
        EXPECT_EQ(attribute.GetValue(), text);
        EXPECT_EQ(attribute.GetType(), type) << text;
    }
    EXPECT_EQ(Attribute(kX, wide).GetWValue(), wide);
    const Attribute longest(kX, CKvRGBA<float>(-FLT_MAX, -FLT_MAX, -FLT_MAX, -FLT_MAX));
    EXPECT_EQ(longest.GetValue().GetLength(), 4 * 47 + 3);
    EXPECT_NE(Attribute(kX, 7), Attribute(kX, "7"));
    Attribute seven(kX, 8U);
    seven.SetValue("7");
    EXPECT_NE(seven, Attribute(kX, 7U)) << "the raw value stayed";
    Node node;
    node.AddChild(kX, CKvRGB<float>(1, 2, 3));
    EXPECT_EQ(node.GetChild(0)->GetAttribute(1), Attribute(CKvIdentifier("green"), 2.0F));
    node.Empty();
}

/// A node with one attribute, or none for a null text.
Node WithValue(const char* text)
{
    Node node;
    if (text != nullptr)
        node.AddAttribute(Attribute(kX, text));
    return node;
}

/// What a read gives; nothing, and its output untouched, when it fails.
template <class T>
std::optional<T> Read(const Node& node, bool (Node::*read)(const CKvIdentifier&, T&) const,
                      const T& untouched)
{
    T value = untouched;
    if ((node.*read)(kX, value))
        return value;
    EXPECT_EQ(value, untouched);
    return {};
}

TEST(KvScriptTreeTest, NumbersAndTruthAreReadFromTheText)
{
    using U64 = std::uint64_t;
    // The text, and what it gives as truth, as an integer, as one that is scanned for, as a float
    // and as an unsigned integer.
    const std::tuple<const char*, std::optional<bool>, std::optional<int>, std::optional<int>,
                     std::optional<float>, std::optional<U64>>
        rows[] = {
            {nullptr, {}, {}, {}, {}, {}},
            {"1", true, 1, 1, 1.0F, 1},
            {"true", true, 0, {}, {}, 0},
            {"True", false, 0, {}, {}, 0},
            {" \t\n-7x", false, -7, -7, -7.0F, static_cast<U64>(-7)},
            {"010", false, 10, 10, 10.0F, 8},
            {".5", false, 0, {}, 0.5F, 0},
            {"4294967297", false, 1, 1, 0x1p32F, 4294967297U},
            {"0XFFFFFFFFFFFFFFFF", false, 0, 0, 0x1p64F, UINT64_MAX},
        };
    for (const auto& [text, truth, integer, scanned, real, u64] : rows) {
        SCOPED_TRACE(text != nullptr ? text : "no attribute");
        const Node node = WithValue(text);
        const float found = real.value_or(0.0F);
        EXPECT_EQ(Read(node, &Node::GetAttributeValueAsBool, true), truth);
        EXPECT_EQ(Read(node, &Node::GetAttributeValueAsInt, 99), scanned);
        EXPECT_EQ(Read(node, &Node::GetAttributeValueAsFloat, 99.0F), real);
        EXPECT_EQ(Read(node, &Node::GetAttributeValueAsU64, U64{99}), u64);
        EXPECT_EQ(node.GetAttributeValueAsBool(kX), truth.value_or(false));
        EXPECT_EQ(node.GetAttributeValueAsBoolDefault(kX, true), truth.value_or(true));
        EXPECT_EQ(node.GetAttributeValueAsInt(kX), integer.value_or(0));
        EXPECT_EQ(node.GetAttributeValueAsIntDefault(kX, 99), integer.value_or(99));
        EXPECT_EQ(node.GetAttributeValueAsFloat(kX), found);
        EXPECT_EQ(node.GetAttributeValueAsFloatDefault(kX, 99), text != nullptr ? found : 99);
        EXPECT_EQ(node.GetAttributeValueAsU64(kX), u64.value_or(0));
    }
}

TEST(KvScriptTreeTest, VectorsAndColoursNeedAllTheirNumbersSeparatedByWhiteSpace)
{
    const char* const texts[] = {nullptr, "1,2,3,4", "1 2,3,4", "1 2 3 x", " 1\t2\r\n3\v4z 5"};
    for (int numbers = 0; numbers <= 4; ++numbers) {
        const Node node = WithValue(texts[numbers]);
        EXPECT_EQ(Read(node, &Node::GetAttributeValueAsVector2, CKvVector2(9, 9)),
                  numbers >= 2 ? std::optional(CKvVector2(1, 2)) : std::nullopt);
        EXPECT_EQ(Read(node, &Node::GetAttributeValueAsVector3, CKvVector3(9, 9, 9)),
                  numbers >= 3 ? std::optional(CKvVector3(1, 2, 3)) : std::nullopt);
        EXPECT_EQ(Read(node, &Node::GetAttributeValueAsColor, CKvRGB<float>(9, 9, 9)),
                  numbers >= 3 ? std::optional(CKvRGB<float>(1, 2, 3)) : std::nullopt);
        EXPECT_EQ(Read(node, &Node::GetAttributeValueAsColor, CKvRGBA<float>(9, 9, 9, 9)),
                  numbers >= 4 ? std::optional(CKvRGBA<float>(1, 2, 3, 4)) : std::nullopt);
        EXPECT_EQ(Read(node, &Node::GetAttributeValueAsQuaternion, CKvQuaternion(9, 9, 9, 9)),
                  numbers >= 4 ? std::optional(CKvQuaternion(1, 2, 3, 4)) : std::nullopt);
    }
}

constexpr const char* kFamilyXml = "<a x='1'><b x='2'><c/>t</b><e/><B x='3'><d/></B></a>";

TEST(KvScriptTreeTest, PathsAndSearchesLeadToTheFirstMatchInDocumentOrder)
{
    const CParsedTree tree(
        "<level title='Harbour'><settings gravity='9.81'><air drag='1'/></settings>"
        "<Settings wind='Calm'><water drag='7 m'/></Settings></level>");
    const std::pair<const char*, const char*> rows[] = {
        {"level/title", "Harbour"},
        {"\\LEVEL\\settings//gravity/", "9.81"},
        {"level/settings/water/drag", "7 m"},  // the first settings lead to no water
        {"level/settings/wind", "none"},       // the first settings count, though without wind
        {"title", "none"},
    };
    for (const auto& [path, expected] : rows) {
        TKvString<char> value("none");
        EXPECT_EQ(tree.GetValueAsString(path, value), expected != std::string("none")) << path;
        EXPECT_EQ(value, expected);
    }
    Node& level = *tree.GetRootNode();
    Node* const second = level.GetChild(1);
    const CKvIdentifier wind("wind");
    EXPECT_EQ(level.FindChildByAttribute(wind, Id("calm")), second) << "texts compare as names";
    EXPECT_EQ(level.FindChildByAttribute(wind, Id("")), level.GetChild(0)) << "absent is empty";
    EXPECT_EQ(level.FindChildByAttribute(Id("title"), Id("Harbour"), true), nullptr) << "itself";
    EXPECT_EQ(level.FindChildByIdAndAttributeValue(Id("settings"), wind, Id("calm")), second);
}

TEST(KvScriptTreeTest, WhatIsTakenOutIsNotReleased)
{
    const CParsedTree tree(kFamilyXml);
    Node& a = *tree.GetRootNode();
    const OwnedNode b(a.GetChild(0));
    const OwnedNode e(a.GetChild(1));
    const OwnedNode secondB(a.GetChild(2));
    a.RemoveChildrenById(Id("b"));
    a.AddChild(b.get());
    a.RemoveChild(0);
    a.RemoveChild(1);
    EXPECT_EQ(TreeText(a), "a{x=1}(b{x=2}(c 't'))");
    a.RemoveChild(b.get());
    EXPECT_EQ(TreeText(*b), "b{x=2}(c 't')");
    for (const int outside : {-1, 1}) {
        EXPECT_EQ(std::as_const(a).GetAttribute(outside), Attribute());
        EXPECT_EQ(a.GetAttribute(outside), Attribute());
    }
}

TEST(KvScriptTreeTest, CopiesAreDeepWhereverTheSourceStands)
{
    const std::pair<void (*)(Node&), const char*> rows[] = {
        {[](Node& a) { a.GetChild(2)->Copy(a.GetChild(0)); },
         "a{x=1}(b{x=2}(c 't') e b{x=2}(d c 't'))"},
        {[](Node& a) { a.GetChild(0)->Copy(a.GetChild(0)); },
         "a{x=1}(b{x=2}(c 't' c 't') e b{x=3}(d))"},
        {[](Node& a) { a.Copy(a.GetChild(0)); }, "b{x=2}(b{x=2}(c 't') e b{x=3}(d) c 't')"},
        {[](Node& a) { a = *&a; }, "a{x=1}(b{x=2}(c 't') e b{x=3}(d))"},
        {[](Node& a) { a = *a.GetChild(0)->GetChild(1); }, "'t'"},
        {[](Node& a) { *a.GetChild(2) = a; },
         "a{x=1}(b{x=2}(c 't') e a{x=1}(b{x=2}(c 't') e b{x=3}(d)))"},
    };
    for (const auto& [change, result] : rows) {
        const CParsedTree tree(kFamilyXml);
        change(*tree.GetRootNode());
        EXPECT_EQ(TreeText(tree), result);
        const OwnedNode copy(new Node(*tree.GetRootNode()));
        tree.GetRootNode()->Empty();
        EXPECT_EQ(TreeText(*copy), result) << "the source being emptied";
    }
}

TEST(KvScriptTreeTest, EqualityIsDeepAndInOrder)
{
    const CParsedTree family(kFamilyXml);
    const Node& a = *family.GetRootNode();
    EXPECT_EQ(a, *CParsedTree(kFamilyXml).GetRootNode());
    for (const char* other : {"<z x='1'><b x='2'><c/>t</b><e/><B x='3'><d/></B></z>",
                              "<a x='1'><b x='2'><c/>T</b><e/><B x='3'><d/></B></a>",
                              "<a x='1'><b x='2'><c/>t</b><e/><B x='3' y=''><d/></B></a>",
                              "<a x='1'><b x='2'><c/>t</b><e/><B x='3'><d><f/></d></B></a>",
                              "<a x='1'><b x='2'>t<c/></b><e/><B x='3'><d/></B></a>"}) {
        const CParsedTree tree(other);
        EXPECT_NE(a, *tree.GetRootNode()) << other;
        EXPECT_NE(*tree.GetRootNode(), a) << other;
    }
}

/// A tree of equal names, each node below the one before or all below the root. Gives the last.
Node* MakeNodes(CKvScriptTree& tree, int count, bool isDeep)
{
    Node* parent = tree.CreateRootNode(Id("n"));
    Node* last = parent;
    while (--count > 0) {
        last = parent->AddNewChild(Id("n"));
        parent = isDeep ? last : parent;
    }
    last->AddAttribute({kX, "last"});
    return last;
}

void ExpectChildrenGoAndComeBack(Node& node)
{
    const OwnedNode copy(new Node(node));
    CKvArray<Node*> children;
    node.GetChildrenByIdArray(Id("n"), children);
    node.RemoveChildrenById(Id("n"));
    EXPECT_EQ(node.GetChildCount(), 0);
    node.AddChildrenArray(children);
    EXPECT_EQ(node, *copy);
    const OwnedNode middle(children[children.GetCount() / 2]);
    node.RemoveChild(middle.get());
    EXPECT_EQ(node.GetChildCount(), copy->GetChildCount() - 1);
}

TEST(KvScriptTreeTest, AMillionLevelsOrSiblingsTakeLinearTimeAndNoStack)
{
    constexpr int kCount = 1000000;
    const std::string deepPath = [] {
        std::string path;
        for (int i = 0; i < kCount; ++i)
            path += "n/";
        return path + "x";
    }();
    const std::pair<bool, const char*> rows[] = {{true, deepPath.c_str()}, {false, "n/m/x"}};
    for (const auto& [isDeep, path] : rows) {
        KvRunOnSmallStack([&, isDeep = isDeep, path = path] {
            SCOPED_TRACE(isDeep ? "levels" : "siblings");
            CKvScriptTree tree;
            Node* const last = MakeNodes(tree, kCount, isDeep);
            Node* const root = tree.GetRootNode();
            EXPECT_EQ(root->FindChildByAttribute(kX, Id("last"), true), last);
            ExpectChildrenGoAndComeBack(*OwnedNode(new Node(*root)));

            const CKvTemporaryFolder folder;
            const TKvString<char> file = folder.Path("tree").c_str();
            const bool bigEndian = std::endian::native == std::endian::big;
            CKvScriptTree loaded;
            EXPECT_TRUE(CKvScriptTreeSerializerTML().Save(tree, file, bigEndian));
            ASSERT_TRUE(CKvScriptTreeSerializerTML().Load(loaded, file));
            EXPECT_EQ(*loaded.GetRootNode(), *root);

            TKvString<char> value;
            last->SetIdentifier(isDeep ? Id("n") : Id("m"));
            EXPECT_TRUE(tree.GetValueAsString(path, value));
            EXPECT_EQ(CKvScriptTreeSerializerXML().Dump(tree, value), !isDeep)
                << "a million levels, each indented further, would be terabytes";
        });
    }
}

}  // namespace
