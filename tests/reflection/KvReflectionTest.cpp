#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <numeric>
#include <string>

#include "reflection/KvRTTI.h"
#include "reflection/KvReflectionField.h"
#include "reflection/KvReflectionInformationSnapShot.h"
#include "reflection/KvReflectionState.h"

namespace {

using Information = CKvReflectionInformation;
using SnapShot = CKvReflectionInformationSnapShot;

extern const CKvRTTI g_base;
const CKvRTTI g_derived("Derived", &g_base);  // made before its parent is
const CKvRTTI g_base("Base", nullptr);

TEST(KvRTTITest, AClassDerivesFromItselfAndItsAncestorsOnly)
{
    const CKvRTTI leaf("Leaf", &g_derived);
    const CKvRTTI sibling("Derived", &g_base);
    EXPECT_TRUE(leaf.IsDerived(leaf) && leaf.IsDerived(g_derived) && leaf.IsDerived(g_base));
    EXPECT_FALSE(leaf.IsDerived(sibling) || g_base.IsDerived(leaf));
    EXPECT_TRUE(leaf.IsExactly(leaf) && !sibling.IsExactly(g_derived));
}

TEST(KvReflectionInformationTest, ReachesTheFieldsOfAStructureInEveryObject)
{
    std::array<std::array<int, 2>, 2> first = {}, second = {};  // a structure of structures
    CKvArray<Information> fields;
    fields.Add(KvDescribeField("inner", &first[1], first[1][1]));
    const Information outer(CKvIdentifier("outer"), Information::TYPE_SUB_OBJECT,
                            KvFieldOffset(&first, &first[1]), fields);
    fields.Clear();
    const Information inner = outer.GetSubReflectionInformation()[0];
    inner.SetValueInt(outer.GetValueSubObject(&second), 70);
    EXPECT_TRUE(second[1][1] == 70 && first[1][1] == 0);
}

TEST(KvReflectionInformationSnapShotTest, SavesObjectByObjectAsFarAsBothListsGo)
{
    int numbers[3] = {};
    CKvArray<Information> fields;
    CKvArray<CKvArray<Information>> informations;
    for (const char* name : {"a", "b"}) {
        fields.Add(KvDescribeField(name, numbers, numbers[0]));
        informations.Add(fields);
    }
    CKvArray<void*> objects;
    CKvArray<SnapShot*> snapshots;
    for (int& number : numbers) {  // fewer, as many and more objects than informations
        objects.Add(&number);
        SnapShot::SaveReflectionInformation(informations, objects, snapshots);
    }
    std::string found;
    for (SnapShot* const pointer : snapshots) {
        const std::unique_ptr<SnapShot> snapshot(pointer);
        found += snapshot->GetInformation().GetIdentifier().DebugCString();
        found += std::to_string(static_cast<int*>(snapshot->GetObject()) - numbers);
    }
    EXPECT_EQ(found, "a0a0a1b1a0a1b1");
    SnapShot().BackUp();  // of nothing: does nothing
}

TEST(KvReflectionStateTest, HoldsTheValuesOfUpTo16BytesFromAnyAddress)
{
    alignas(8) unsigned char object[96];
    std::iota(object, std::end(object), static_cast<unsigned char>(0));
    CKvArray<Information> fields;
    fields.Add(Information(CKvIdentifier("place"), Information::TYPE_VECTOR4, 1));
    fields.Add(Information(CKvIdentifier("health"), Information::TYPE_INT, 17));
    fields.Add(Information(CKvIdentifier("turn"), Information::TYPE_MATRIX44, 21));
    const CKvReflectionState state(object, fields);
    const std::size_t sizes[] = {16, 4, 0};
    for (int i = 0; i < 3; ++i) {
        CKvReflectionValue expected = {fields[i].GetType(), {}};
        std::memcpy(expected.bytes.data(), object + fields[i].GetValueOffset(), sizes[i]);
        EXPECT_EQ(state.GetValues()[i].type, expected.type);
        EXPECT_EQ(state.GetValues()[i].bytes, expected.bytes) << i;
    }
}

}  // namespace
