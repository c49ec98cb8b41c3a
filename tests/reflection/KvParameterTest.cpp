#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "reflection/KvParameterGroupList.h"

namespace {

TEST(KvParameterTest, ValuesReadAsShortTexts)
{
    constexpr float kHuge = 1e30F;
    constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
    const CKvParameterInt twelve("speed", 12, 0, 10, 1);
    const CKvParameterFloat negative("mass", -2.5F, 0, 1, 0.1F);
    const CKvParameterColor orange("fog", 1, 0.5F, 0, 0.999F);
    const CKvParameterColor wild("glow", kHuge, -kHuge, kNoNumber, -0.999F);
    const CKvParameterColorGradient gradient("sky", CKvArray<CKvRGBA<float>>());
    const struct
    {
        const CKvParameter& parameter;
        CKvParameter::EType type;
        int size;
        const char* text;
    } rows[] = {
        {twelve, CKvParameter::TYPE_INT, 3, "12"},
        {twelve, CKvParameter::TYPE_INT, 2, "1"},
        {twelve, CKvParameter::TYPE_INT, 1, ""},
        {negative, CKvParameter::TYPE_FLOAT, 60, "-2.500000"},
        {orange, CKvParameter::TYPE_COLOR, 60, "255,127,0,254"},
        {wild, CKvParameter::TYPE_COLOR, 60, "2147483647,-2147483648,0,-254"},
        {gradient, CKvParameter::TYPE_COLOR_GRADIENT, 60, "GRADIENT"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.parameter.GetType(), row.type);
        std::string buffer(64, '#');
        row.parameter.GetValueAsText(buffer.data(), -1);
        row.parameter.GetValueAsText(nullptr, row.size);
        EXPECT_EQ(buffer, std::string(64, '#'));
        row.parameter.GetValueAsText(buffer.data(), row.size);
        EXPECT_STREQ(buffer.c_str(), row.text);
        EXPECT_EQ(buffer.substr(static_cast<std::size_t>(row.size) - 1, 2), std::string("\0#", 2));
    }
}

TEST(KvParameterTest, AGradientStopsOneStepBeforeItsEnd)
{
    const CKvRGBA<float> from(0, 1, 0.5F, 1);
    const CKvRGBA<float> to(1, 0, 0.5F, 3);
    const CKvParameterColorGradient gradient("sky", from, to, 4);
    ASSERT_EQ(gradient.GetValue().GetCount(), 4);
    EXPECT_EQ(gradient.GetValue()[0], from);
    EXPECT_EQ(gradient.GetValue()[3], CKvRGBA<float>(0.75F, 0.25F, 0.5F, 2.5F));
    for (const int count : {0, -1})
        EXPECT_TRUE(CKvParameterColorGradient("sky", from, to, count).GetValue().IsEmpty());
}

// A parameter that is lost or deleted twice shows under the sanitizers.
TEST(KvParameterTest, AGroupOwnsWhatItHoldsAndNothingElse)
{
    static_assert(!std::is_copy_constructible_v<CKvParameterGroup>);
    static_assert(!std::is_copy_constructible_v<CKvParameterGroupList>);

    CKvParameterInt outsider("outsider", 0, 0, 0, 0);
    CKvParameterGroupList list;
    CKvParameterGroup& group = *list.AddParameterGroup("fog");
    CKvParameter* const first = group.AddParameterFloat("density", 0.5F, 0, 1, 0.1F);
    CKvParameter* const destroyed = group.AddParameterInt("steps", 0, 0, 0, 0);
    const std::unique_ptr<CKvParameter> kept(group.AddParameterInt("kept", 0, 0, 0, 0));
    CKvParameter* const last = group.AddParameterColor("tint", 1, 1, 1, 1);

    for (CKvParameter* parameter : {static_cast<CKvParameter*>(&outsider), destroyed})
        group.RemoveParameter(parameter, true);
    group.RemoveParameter(kept.get(), false);
    ASSERT_EQ(group.GetParameterCount(), 2);
    EXPECT_EQ(group.GetParameter(0), first);
    EXPECT_EQ(group.GetParameter(1), last);
    EXPECT_DEBUG_DEATH(EXPECT_EQ(group.GetParameter(2), nullptr), "");

    const CKvParameterGroupList moved = std::move(list);
    EXPECT_EQ(moved.GetParameterGroup(0), &group);
    group.RemoveAllParameters(true);
    EXPECT_EQ(group.GetParameterCount(), 0);
    group.AddParameterInt("last", 0, 0, 0, 0);
}

}  // namespace
