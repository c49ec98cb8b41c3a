#include "scripttree/KvScriptTreeAttribute.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cstdint>
#include <string>
#include <utility>

#include "math/KvColor.h"
#include "math/KvQuaternion.h"
#include "math/KvVector3.h"

namespace {

using Attribute = CKvScriptTreeAttribute;

const CKvIdentifier kName("name");

TEST(KvScriptTreeAttributeTest, TypedConstructorsWriteTheirTextAndType)
{
    const TKvString<char> text("<&>");
    const TKvString<wchar_t> wide(L"\u00E9\u20AC");
    const std::string largest = "340282346638528859811704183484516925440.000000";
    const struct
    {
        Attribute attribute;
        std::string text;
        Attribute::EType type;
    } rows[] = {
        {Attribute(), "", Attribute::TYPE_NONE},
        {{kName, static_cast<const char*>(nullptr)}, "", Attribute::TYPE_STRING},
        {{kName, "12"}, "12", Attribute::TYPE_STRING},
        {{kName, text}, "<&>", Attribute::TYPE_STRING},
        {{kName, wide}, "\xC3\xA9\xE2\x82\xAC", Attribute::TYPE_STRING},
        {{kName, 255ULL}, "0X00000000000000FF", Attribute::TYPE_U64},
        {{kName, 0xFEDCBA9876543210UL}, "0XFEDCBA9876543210", Attribute::TYPE_U64},
        {{kName, 42U}, "42", Attribute::TYPE_U64},
        {{kName, 3000000000U}, "-1294967296", Attribute::TYPE_U64},
        {{kName, UINT_MAX}, "-1", Attribute::TYPE_U64},
        {{kName, INT_MIN}, "-2147483648", Attribute::TYPE_INT},
        {{kName, 0.1F}, "0.100000", Attribute::TYPE_FLOAT},
        {{kName, -FLT_MAX}, "-" + largest, Attribute::TYPE_FLOAT},
        {{kName, CKvVector3(1, -2.5F, 1e-7F)},
         "1.000000 -2.500000 0.000000",
         Attribute::TYPE_VECTOR3},
        {{kName, CKvQuaternion(1, 2, 3, 4)},
         "1.000000 2.000000 3.000000 4.000000",
         Attribute::TYPE_QUATERNION},
        {{kName, CKvRGB<float>(0.25F, 2, -1)}, "0.250000 2.000000 -1.000000", Attribute::TYPE_RGB},
        {{kName, CKvRGBA<float>(-FLT_MAX, -FLT_MAX, -FLT_MAX, -FLT_MAX)},
         "-" + largest + " -" + largest + " -" + largest + " -" + largest,
         Attribute::TYPE_RGBA},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.attribute.GetValue().GetText(), row.text);
        EXPECT_EQ(row.attribute.GetType(), row.type) << row.text;
    }
}

TEST(KvScriptTreeAttributeTest, EqualityLooksAtNameTextTypeAndRawValue)
{
    Attribute five(kName, 5U);
    five.SetValue("6");  // differs from a true 6 in the raw value alone
    const struct
    {
        Attribute left;
        Attribute right;
        bool equal;
    } rows[] = {
        {{kName, 7}, {CKvIdentifier("NAME"), 7}, true},
        {{kName, ""}, {kName, static_cast<const char*>(nullptr)}, true},
        {{kName, 7}, {CKvIdentifier("other"), 7}, false},
        {{kName, "a"}, {kName, "A"}, false},
        {{kName, "7"}, {kName, 7}, false},
        {five, {kName, 6U}, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.left == row.right, row.equal) << row.left.GetValue().GetText();
        EXPECT_EQ(row.left != row.right, !row.equal) << row.left.GetValue().GetText();
        Attribute copy = row.left;
        EXPECT_EQ(copy, row.left);
        copy = row.right;
        copy = std::as_const(copy);
        EXPECT_EQ(copy, row.right);
    }
}

TEST(KvScriptTreeAttributeTest, WideTextsComeBackAndMakeTheTypeAString)
{
    Attribute attribute(kName, 5ULL);
    const TKvString<wchar_t> wide(L"\u00E9 \u20AC");
    attribute.SetWValue(wide);
    EXPECT_EQ(attribute.GetValue(), "\xC3\xA9 \xE2\x82\xAC");
    EXPECT_EQ(attribute.GetType(), Attribute::TYPE_STRING);
    EXPECT_EQ(attribute.GetWValue(), wide);

    attribute.SetType(Attribute::TYPE_U64);
    attribute.SetValue("0X0000000000000005");
    EXPECT_EQ(attribute, Attribute(kName, 5ULL)) << "the raw value stays through both setters";
}

}  // namespace
