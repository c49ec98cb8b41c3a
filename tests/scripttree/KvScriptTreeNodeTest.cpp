#include "scripttree/KvScriptTreeNode.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "core/KvId.h"
#include "math/KvColor.h"
#include "math/KvQuaternion.h"
#include "math/KvVector2.h"
#include "math/KvVector3.h"
#include "tests/scripttree/KvTreeText.h"
#include "tests/support/KvSmallStack.h"

namespace {

using Attribute = CKvScriptTreeAttribute;
using Node = CKvScriptTreeNode;
using OwnedNode = CKvOwnedScriptTreeNode;

const CKvIdentifier kValue("value");
const CKvIdentifier kMissing("missing");

Node WithValue(const char* text)
{
    Node node;
    node.AddAttribute(Attribute(kValue, text));
    return node;
}

/// a(b{value='1'}(c{value='2'} d{value='3'}'t') e B{value='4'}(c))
OwnedNode MakeFamily()
{
    OwnedNode a(new Node(Id("a")));
    Node* b = a->AddNewChild(Id("b"));
    b->AddAttribute(Attribute(kValue, "1"));
    b->AddNewChild(Id("c"))->AddAttribute(Attribute(kValue, "2"));
    b->AddNewChild(Id("d"))->AddAttribute(Attribute(kValue, "3"));
    b->GetChild(1)->SetText("t");
    a->AddNewChild(Id("e"));
    Node* secondB = a->AddNewChild(Id("B"));
    secondB->AddAttribute(Attribute(kValue, "4"));
    secondB->AddNewChild(Id("c"));
    return a;
}

constexpr const char* kFamily = "a(b{value='1'}(c{value='2'} d{value='3'}'t') e b{value='4'}(c))";

TEST(KvScriptTreeNodeTest, NumbersAndTruthAreReadFromTheText)
{
    constexpr float kInfinity = HUGE_VALF;
    const struct
    {
        const char* text;
        bool truth;
        int integer;
        std::optional<int> scannedInteger;
        float real;
        bool isReal;
        std::uint64_t u64;
    } rows[] = {
        {"1", true, 1, 1, 1, true, 1},
        {"true", true, 0, {}, 0, false, 0},
        {"True", false, 0, {}, 0, false, 0},
        {"1 ", false, 1, 1, 1, true, 1},
        {"", false, 0, {}, 0, false, 0},
        {"-", false, 0, {}, 0, false, 0},
        {" \t\n-7x", false, -7, -7, -7, true, static_cast<std::uint64_t>(-7)},
        {"+3", false, 3, 3, 3, true, 3},
        {"010", false, 10, 10, 10, true, 8},
        {"0x1F", false, 0, 0, 31, true, 31},
        {"1.5", false, 1, 1, 1.5F, true, 1},
        {".5", false, 0, {}, 0.5F, true, 0},
        {"1,5", false, 1, 1, 1, true, 1},
        {"-1e3", false, -1, -1, -1000, true, static_cast<std::uint64_t>(-1)},
        {"1e999", false, 1, 1, kInfinity, true, 1},
        {"2147483648", false, INT_MIN, INT_MIN, 0x1p31F, true, 2147483648U},
        {"4294967297", false, 1, 1, 0x1p32F, true, 4294967297U},
        {"99999999999999999999", false, -1, -1, 1e20F, true, UINT64_MAX},
        {"0XFFFFFFFFFFFFFFFF", false, 0, 0, 0x1p64F, true, UINT64_MAX},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const Node node = WithValue(row.text);
        bool truth = !row.truth;
        int integer = -99;
        float real = -99;
        std::uint64_t u64 = 99;
        EXPECT_EQ(node.GetAttributeValueAsBool(kValue), row.truth);
        EXPECT_EQ(node.GetAttributeValueAsBoolDefault(kValue, !row.truth), row.truth);
        EXPECT_TRUE(node.GetAttributeValueAsBool(kValue, truth));
        EXPECT_EQ(truth, row.truth);
        EXPECT_EQ(node.GetAttributeValueAsInt(kValue), row.integer);
        EXPECT_EQ(node.GetAttributeValueAsIntDefault(kValue, 99), row.integer);
        EXPECT_EQ(node.GetAttributeValueAsInt(kValue, integer), row.scannedInteger.has_value());
        EXPECT_EQ(integer, row.scannedInteger.value_or(-99));
        EXPECT_EQ(node.GetAttributeValueAsFloat(kValue), row.real);
        EXPECT_EQ(node.GetAttributeValueAsFloatDefault(kValue, 99), row.real);
        EXPECT_EQ(node.GetAttributeValueAsFloat(kValue, real), row.isReal);
        EXPECT_EQ(real, row.isReal ? row.real : -99);
        EXPECT_EQ(node.GetAttributeValueAsU64(kValue), row.u64);
        EXPECT_TRUE(node.GetAttributeValueAsU64(kValue, u64));
        EXPECT_EQ(u64, row.u64);
    }
    for (const std::uint64_t u64 :
         {UINT64_C(0), UINT64_C(255), UINT64_MAX / 2, UINT64_MAX / 2 + 1, UINT64_MAX}) {
        Node node;
        node.AddAttribute(Attribute(kValue, u64));
        EXPECT_EQ(node.GetAttributeValueAsU64(kValue), u64);
    }
}

TEST(KvScriptTreeNodeTest, ReadsOfAMissingAttributeGiveTheDefaultAndLeaveTheOutput)
{
    const Node node = WithValue("1");
    TKvString<char> text("untouched");
    TKvString<wchar_t> wide(L"untouched");
    bool truth = true;
    int integer = 99;
    float real = 99;
    std::uint64_t u64 = 99;
    CKvVector2 vector(9, 9);
    EXPECT_EQ(&node.GetAttributeValueAsString(kMissing), &TKvString<char>::STR_EMPTY);
    EXPECT_FALSE(node.GetAttributeValueAsBool(kMissing));
    EXPECT_TRUE(node.GetAttributeValueAsBoolDefault(kMissing, true));
    EXPECT_EQ(node.GetAttributeValueAsInt(kMissing), 0);
    EXPECT_EQ(node.GetAttributeValueAsIntDefault(kMissing, -5), -5);
    EXPECT_EQ(node.GetAttributeValueAsFloat(kMissing), 0);
    EXPECT_EQ(node.GetAttributeValueAsFloatDefault(kMissing, -5), -5);
    EXPECT_EQ(node.GetAttributeValueAsU64(kMissing), 0U);
    EXPECT_FALSE(node.GetAttributeValueAsString(kMissing, text));
    EXPECT_FALSE(node.GetAttributeValueAsWString(kMissing, wide));
    EXPECT_FALSE(node.GetAttributeValueAsBool(kMissing, truth));
    EXPECT_FALSE(node.GetAttributeValueAsInt(kMissing, integer));
    EXPECT_FALSE(node.GetAttributeValueAsFloat(kMissing, real));
    EXPECT_FALSE(node.GetAttributeValueAsU64(kMissing, u64));
    EXPECT_FALSE(node.GetAttributeValueAsVector2(kMissing, vector));
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(wide, L"untouched");
    EXPECT_TRUE(truth && integer == 99 && real == 99 && u64 == 99 && vector == CKvVector2(9, 9));

    EXPECT_TRUE(node.GetAttributeValueAsString(kValue, text));
    EXPECT_TRUE(node.GetAttributeValueAsWString(kValue, wide));
    EXPECT_EQ(text, "1");
    EXPECT_EQ(wide, L"1");
}

TEST(KvScriptTreeNodeTest, VectorsAndColoursNeedAllTheirNumbersSeparatedByWhiteSpace)
{
    const struct
    {
        const char* text;
        int numbers;
    } rows[] = {
        {"1 2 3 4", 4}, {" 1\t2\r\n3\v4 5", 4}, {"1.0 2e0 +3 0x4z", 4}, {"1 2 3 x", 3},
        {"1 2 3", 3},   {"1 2,3,4", 2},         {"1,2,3,4", 1},         {"", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const Node node = WithValue(row.text);
        CKvVector2 two(9, 9);
        CKvVector3 three(9, 9, 9);
        CKvRGB<float> rgb(9, 9, 9);
        CKvRGBA<float> rgba(9, 9, 9, 9);
        CKvQuaternion quaternion(9, 9, 9, 9);
        EXPECT_EQ(node.GetAttributeValueAsVector2(kValue, two), row.numbers >= 2);
        EXPECT_EQ(node.GetAttributeValueAsVector3(kValue, three), row.numbers >= 3);
        EXPECT_EQ(node.GetAttributeValueAsColor(kValue, rgb), row.numbers >= 3);
        EXPECT_EQ(node.GetAttributeValueAsColor(kValue, rgba), row.numbers >= 4);
        EXPECT_EQ(node.GetAttributeValueAsQuaternion(kValue, quaternion), row.numbers >= 4);
        EXPECT_EQ(two, row.numbers >= 2 ? CKvVector2(1, 2) : CKvVector2(9, 9));
        EXPECT_EQ(three, row.numbers >= 3 ? CKvVector3(1, 2, 3) : CKvVector3(9, 9, 9));
        EXPECT_EQ(rgb, row.numbers >= 3 ? CKvRGB<float>(1, 2, 3) : CKvRGB<float>(9, 9, 9));
        EXPECT_EQ(rgba, row.numbers >= 4 ? CKvRGBA<float>(1, 2, 3, 4) : CKvRGBA<float>(9, 9, 9, 9));
        EXPECT_EQ(quaternion,
                  row.numbers >= 4 ? CKvQuaternion(1, 2, 3, 4) : CKvQuaternion(9, 9, 9, 9));
    }
}

TEST(KvScriptTreeNodeTest, LookUpsTakeTheFirstOfANameWithoutRegardToCase)
{
    const OwnedNode family = MakeFamily();
    Node* const b = family->GetChild(0);
    b->AddAttribute(Attribute(Id("VALUE"), "second"));
    EXPECT_EQ(b->FindAttribute(Id("Value")), &b->GetAttribute(0));
    EXPECT_EQ(b->FindAttribute(kMissing), nullptr);
    EXPECT_EQ(family->FindChild(Id("b")), b);
    EXPECT_EQ(family->FindChild(Id("c")), nullptr) << "a grandchild";
    EXPECT_EQ(family->GetChildrenCountById(Id("b")), 2);

    CKvArray<Node*> children;
    children.Add(nullptr);
    family->GetChildrenByIdArray(Id("b"), children);
    ASSERT_EQ(children.GetCount(), 2);
    EXPECT_EQ(children[1], family->GetChild(2));
    CKvArray<const Node*> none;
    none.Add(nullptr);
    static_cast<const Node*>(family.get())->GetChildrenByIdArray(kMissing, none);
    EXPECT_TRUE(none.IsEmpty());
}

TEST(KvScriptTreeNodeTest, SearchesCompareAttributeTextsAsNames)
{
    const OwnedNode family = MakeFamily();
    family->GetChild(2)->GetAttribute(0).SetValue("Three");
    Node* const b = family->GetChild(0);
    Node* const e = family->GetChild(1);
    Node* const secondB = family->GetChild(2);
    b->GetChild(1)->GetAttribute(0).SetValue("three");
    const CKvIdentifier null = KVID::GetSingleton().null;
    const Node& constFamily = *family;

    EXPECT_EQ(constFamily.FindChildByAttribute(kValue, Id("1")), b);
    EXPECT_EQ(constFamily.FindChildByAttribute(kValue, Id("2")), nullptr);
    EXPECT_EQ(constFamily.FindChildByAttribute(kValue, null), e) << "no attribute reads as empty";
    EXPECT_EQ(family->FindChildByAttribute(kValue, Id("THREE"), false), secondB);
    EXPECT_EQ(family->FindChildByAttribute(kValue, Id("THREE"), true), b->GetChild(1));
    EXPECT_EQ(family->FindChildByAttribute(kValue, null, true), e);
    EXPECT_EQ(family->FindChildByAttribute(kValue, Id("4"), true), nullptr);
    EXPECT_EQ(family->FindChildByIdAndAttributeValue(Id("b"), kValue, Id("three")), secondB);
    EXPECT_EQ(constFamily.FindChildByIdAndAttributeValue(Id("b"), kValue, null), nullptr);
}

TEST(KvScriptTreeNodeTest, RemovingTakesOutOfTheListAndReleasesNothing)
{
    const OwnedNode family = MakeFamily();
    const OwnedNode b(family->GetChild(0));
    const OwnedNode e(family->GetChild(1));
    const OwnedNode secondB(family->GetChild(2));
    family->RemoveChild(b->GetChild(0));
    family->RemoveChild(nullptr);
    family->RemoveChild(-1);
    family->RemoveChild(3);
    EXPECT_EQ(TreeText(*family), kFamily) << "nothing to remove";
    family->RemoveChildrenById(Id("B"));
    EXPECT_EQ(TreeText(*family), "a(e)");
    family->RemoveChild(0);
    family->RemoveChildrenById(Id("e"));
    EXPECT_EQ(TreeText(*family), "a");
    CKvArray<Node*> array;
    array.Add(b.get());
    array.Add(nullptr);
    array.Add(e.get());
    family->AddChildrenArray(array);
    family->AddChild(nullptr);
    family->RemoveChild(b.get());
    EXPECT_EQ(TreeText(*family), "a(e)");
    family->RemoveChild(e.get());

    b->AddAttribute(Attribute(kValue, "2"));
    b->AddAttribute(Attribute(kValue, "1"));
    b->RemoveAttribute(Attribute(kValue, 1));  // of another type, so equal to none
    b->RemoveAttribute(Attribute(kValue, "1"));
    EXPECT_EQ(b->GetAttributeCount(), 2);
    EXPECT_EQ(b->GetAttribute(0).GetValue(), "2");
    b->Empty();
    EXPECT_EQ(TreeText(*b), "b{value='2' value='1'}");
}

TEST(KvScriptTreeNodeTest, IndicesOutsideTheListsGiveNothing)
{
    const OwnedNode family = MakeFamily();
    for (const int index : {-1, 3, INT_MAX, INT_MIN}) {
        EXPECT_EQ(family->GetChild(index), nullptr);
        family->GetAttribute(index).SetValue("scribble");
        EXPECT_EQ(family->GetAttribute(index), Attribute());
        EXPECT_EQ(static_cast<const Node*>(family.get())->GetAttribute(index), Attribute());
    }
}

TEST(KvScriptTreeNodeTest, ColourChildrenHaveThreeFloats)
{
    const OwnedNode node(new Node);
    node->AddChild(Id("ambient"), CKvRGB<float>(0, 0.5F, 1));
    EXPECT_EQ(TreeText(*node), "(ambient{red='0.000000' green='0.500000' blue='1.000000'})");
    EXPECT_EQ(node->GetChild(0)->GetAttribute(0).GetType(), Attribute::TYPE_FLOAT);
}

TEST(KvScriptTreeNodeTest, CopiesAreDeepWhereverTheSourceStands)
{
    const struct
    {
        const char* name;
        std::function<void(Node&)> change;
        const char* result;
    } rows[] = {
        {"nothing", [](Node&) {}, kFamily},
        {"copy of another node, behind the own children",
         [](Node& a) { a.GetChild(2)->Copy(a.GetChild(0)); },
         "a(b{value='1'}(c{value='2'} d{value='3'}'t') e b{value='1'}(c c{value='2'} "
         "d{value='3'}'t'))"},
        {"copy of itself", [](Node& a) { a.GetChild(2)->Copy(a.GetChild(2)); },
         "a(b{value='1'}(c{value='2'} d{value='3'}'t') e b{value='4'}(c c))"},
        {"copy of a child", [](Node& a) { a.Copy(a.GetChild(2)); },
         "b{value='4'}(b{value='1'}(c{value='2'} d{value='3'}'t') e b{value='4'}(c) c)"},
        {"copy of the parent", [](Node& a) { a.GetChild(1)->Copy(&a); },
         "a(b{value='1'}(c{value='2'} d{value='3'}'t') "
         "a(b{value='1'}(c{value='2'} d{value='3'}'t') e b{value='4'}(c)) b{value='4'}(c))"},
        {"assignment of itself", [](Node& a) { a = *&a; }, kFamily},
        {"assignment of a grandchild", [](Node& a) { a = *a.GetChild(0)->GetChild(1); },
         "d{value='3'}'t'"},
        {"assignment of the parent", [](Node& a) { *a.GetChild(0) = a; },
         "a(a(b{value='1'}(c{value='2'} d{value='3'}'t') e b{value='4'}(c)) e b{value='4'}(c))"},
    };
    for (const auto& row : rows) {
        const OwnedNode family = MakeFamily();
        row.change(*family);
        EXPECT_EQ(TreeText(*family), row.result) << row.name;
        const OwnedNode copy(new Node(*family));
        EXPECT_EQ(*copy, *family) << row.name;
        family->Empty();
        EXPECT_EQ(TreeText(*copy), row.result) << row.name << ", the source being emptied";
    }
}

TEST(KvScriptTreeNodeTest, EqualityIsDeepAndInOrder)
{
    const std::function<void(Node&)> changes[] = {
        [](Node& a) { a.SetIdentifier(Id("other")); },
        [](Node& a) { a.SetText("text"); },
        [](Node& a) { a.AddAttribute(Attribute(kValue, "1")); },
        [](Node& a) { a.GetChild(0)->GetChild(1)->GetAttribute(0).SetValue("5"); },
        [](Node& a) { a.GetChild(2)->GetChild(0)->AddNewChild(Id("f")); },
        [](Node& a) { a.GetChild(2)->GetChild(0)->SetText("text"); },
        [](Node& a) {
            Node* e = a.GetChild(1);
            a.RemoveChild(e);
            a.AddChild(e);
        },
    };
    const OwnedNode family = MakeFamily();
    for (const auto& change : changes) {
        const OwnedNode other = MakeFamily();
        EXPECT_EQ(*family, *other);
        change(*other);
        EXPECT_NE(*family, *other) << TreeText(*other);
        EXPECT_NE(*other, *family) << TreeText(*other);
    }
    Node oneTwo = WithValue("1");
    oneTwo.AddAttribute(Attribute(kValue, "2"));
    Node twoOne = WithValue("2");
    twoOne.AddAttribute(Attribute(kValue, "1"));
    EXPECT_NE(oneTwo, twoOne);
}

TEST(KvScriptTreeNodeTest, AMillionLevelsNeedNoStack)
{
    KvRunOnSmallStack([] {
        OwnedNode root(new Node(Id("deep")));
        Node* deepest = root.get();
        for (int i = 0; i < 1000000; ++i)
            deepest = deepest->AddNewChild(Id("deep"));
        deepest->AddAttribute(Attribute(kValue, "bottom"));

        const OwnedNode copy(new Node(*root));
        EXPECT_EQ(*copy, *root);
        EXPECT_EQ(root->FindChildByAttribute(kValue, Id("bottom"), true), deepest);
        deepest->GetAttribute(0).SetValue("changed");
        EXPECT_NE(*copy, *root);
        root->Empty();
        EXPECT_EQ(root->GetChildCount(), 0);
    });
}

}  // namespace
