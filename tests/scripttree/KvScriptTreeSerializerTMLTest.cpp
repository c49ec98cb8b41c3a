#include "scripttree/KvScriptTreeSerializerTML.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "core/KvCrc64.h"
#include "tests/scripttree/KvAllocationWatch.h"
#include "tests/scripttree/KvTreeText.h"
#include "tests/support/KvGuardedBytes.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using Attribute = CKvScriptTreeAttribute;
using Serializer = CKvScriptTreeSerializerTML;
using std::string_literals::operator""s;

constexpr bool kIsBigEndian = std::endian::native == std::endian::big;

/// The bytes that Save() writes.
std::string Saved(CKvScriptTree& tree, bool bigEndian)
{
    const CKvTemporaryFolder folder;
    EXPECT_TRUE(Serializer().Save(tree, folder.Path("a").c_str(), bigEndian));
    return folder.Read("a");
}

bool LoadBytes(CKvScriptTree& tree, std::string bytes)
{
    return Serializer().LoadTmlFromMemory(tree, bytes.data(),
                                          static_cast<unsigned int>(bytes.size()));
}

// The parts of an image in the machine's byte order.

std::string U32(std::uint32_t value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

std::string U64(std::uint64_t value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

/// Registers nothing.
std::string Name(const std::string& name)
{
    const auto size = static_cast<unsigned int>(name.size());
    return U64(CreateCrc64_ToLower(name.data(), size, kKvCrc64Initial));
}

/// Each kind of record, field and value.
std::string SampleImage()
{
    return Name("level") + U32(3) + U32(2) + Name("a") + U32(1) + U64(42) + Name("b") + U32(2) +
           U32(7) + Name("x") + U32(3) + U32(0x3F800000) + Name("entity") + U32(1) + U32(0) +
           Name("name") + U32(4) + "box\0"s + Name("unregistered") + U32(0) + U32(1) +
           Name("dummy") + U32(0) + U32(0) + U32(2) + "unregistered\0\0"s;
}

TEST(KvScriptTreeSerializerTMLTest, TheDocumentedTreesHaveTheirBytesInBothOrdersAndLoad)
{
    const std::string littleEndian =
        "\x0D\xAB\x69\xDB\x13\x35\xCE\xDD\2\0\0\0\0\0\0\0"
        "\x25\xF9\xC9\x44\x54\x93\xB1\xAF\4\0\0\0box\0"
        "\xB1\x78\xCF\x1E\x73\x33\xC3\xE4\2\0\0\0\3\0\0\0"
        "\3\0\0\0entity\0name\0count\0"s;
    const std::string bigEndian =
        "\xDD\xCE\x35\x13\xDB\x69\xAB\x0D\0\0\0\2\0\0\0\0"
        "\xAF\xB1\x93\x54\x44\xC9\xF9\x25\0\0\0\4box\0"
        "\xE4\xC3\x33\x73\x1E\xCF\x78\xB1\0\0\0\2\0\0\0\3"
        "\0\0\0\3entity\0name\0count\0"s;
    CKvScriptTree none;
    EXPECT_EQ(Saved(none, false), "");
    CParsedTree tree("<entity name='box' count='3'/>");
    EXPECT_EQ(Saved(tree, false), littleEndian);
    EXPECT_EQ(Saved(tree, true), bigEndian);

    CKvScriptTree loaded;
    EXPECT_TRUE(LoadBytes(loaded, kIsBigEndian ? bigEndian : littleEndian));
    EXPECT_EQ(TreeText(loaded), TreeText(tree));
    EXPECT_FALSE(LoadBytes(loaded, kIsBigEndian ? littleEndian : bigEndian));
}

TEST(KvScriptTreeSerializerTMLTest, TheTextAloneDecidesHowAValueIsStored)
{
    using enum CKvScriptTreeAttribute::EType;
    const CKvIdentifier v("v");
    const std::tuple<Attribute, Attribute::EType, const char*> rows[] = {
        {Attribute(v, "-.5"), TYPE_FLOAT, "-0.500000"},
        {Attribute(v, "."), TYPE_FLOAT, "0.000000"},
        {Attribute(v, "-5"), TYPE_INT, "-5"},
        {Attribute(v, "4294967297"), TYPE_INT, "1"},
        {Attribute(v, UINT_MAX), TYPE_INT, "-1"},
        {Attribute(v, ""), TYPE_STRING, ""},
        {Attribute(v, "-"), TYPE_STRING, "-"},
        {Attribute(v, " 12"), TYPE_STRING, " 12"},
        {Attribute(v, 42ULL), TYPE_STRING, "0X000000000000002A"},
    };
    for (const auto& [attribute, type, text] : rows) {
        CKvScriptTree tree;
        tree.CreateRootNode(Id("r"))->AddAttribute(attribute);
        CKvScriptTree loaded;
        ASSERT_TRUE(LoadBytes(loaded, Saved(tree, kIsBigEndian))) << text;
        EXPECT_EQ(loaded.GetRootNode()->GetAttribute(0).GetValue(), text);
        EXPECT_EQ(loaded.GetRootNode()->GetAttribute(0).GetType(), type) << text;
    }
}

TEST(KvScriptTreeSerializerTMLTest, NamesStandOnceInOrderOfFirstUse)
{
    CParsedTree tree(
        "<Tml_Root tml_second='1'><tml_third TML_ROOT=''/>text<tml_third tml_last=''/></Tml_Root>");
    tree.GetRootNode()->GetChild(0)->AddNewChild(CKvIdentifier(UINT64_C(0xFEDCBA9876543210)));
    const std::string names =
        "\6\0\0\0tml_root\0tml_second\0tml_third\0CRC<FEDCBA9876543210>\0\0tml_last\0"s;
    EXPECT_TRUE(Saved(tree, false).ends_with(names));
}

TEST(KvScriptTreeSerializerTMLTest, LoadingMergesBehindWhatTheTreeHasAndRegistersNames)
{
    CParsedTree tree(kOldXml);
    EXPECT_TRUE(LoadBytes(tree, SampleImage()));
    EXPECT_EQ(TreeText(tree),
              "level{x=1}{a=0X000000000000002A}{b=7}{x=1.000000}"
              "(child entity{name=box} unregistered(dummy))");
}

TEST(KvScriptTreeSerializerTMLTest, DamagedImagesLoadOrLeaveTheTreeAsItWas)
{
    const std::string sample = SampleImage();
    std::vector<std::string> images;
    for (std::size_t size = 0; size < sample.size(); ++size)
        images.push_back(sample.substr(0, size));
    for (std::size_t at = 0; at + 4 <= sample.size(); ++at) {
        const auto left = static_cast<std::uint32_t>(sample.size() - at - 4);
        for (const std::uint32_t value : {0U, 1U, 4U, 0x7FFFFFFFU, 0xFFFFFFFFU, left, left + 1})
            images.emplace_back(sample).replace(at, 4, U32(value));
    }
    EXPECT_EQ(images.size(), 8 * sample.size() - 21);

    CKvGuardedBytes guarded(sample.size());
    for (const std::string& image : images) {
        CParsedTree tree(kOldXml);
        char* bytes = guarded.Place(image);  // reading past its end ends the test
        if (Serializer().LoadTmlFromMemory(tree, bytes, static_cast<unsigned int>(image.size())))
            EXPECT_EQ(image.size(), sample.size()) << "a part must not load";
        else
            EXPECT_EQ(TreeText(tree), kOldTree) << testing::PrintToString(image);
    }
    CKvScriptTree tree;
    EXPECT_FALSE(Serializer().LoadTmlFromMemory(tree, nullptr, 0x80000000U));
    const std::string unknownType = Name("level") + U32(1) + U32(0) + Name("a") + U32(5);
    EXPECT_FALSE(LoadBytes(tree, unknownType + U32(0) + U32(0)));
}

TEST(KvScriptTreeSerializerTMLTest, PromisesOfMoreThanTheImageHoldsTakeNoMemory)
{
    const std::string level = Name("level");
    std::string chain;  // of nodes that each promise as many children as would by themselves fit
    for (std::uint32_t left = 2000; left-- > 0;)
        chain += level + U32(0) + U32(left);
    const std::string attributes = level + U32(1000000) + U32(0) + level + U32(2) + U32(7);
    for (const std::string& image : {chain, attributes}) {
        CParsedTree tree(kOldXml);  // which registers the vocabulary
        CKvAllocationWatch watch;
        const bool loaded = LoadBytes(tree, image);
        watch.Stop();
        EXPECT_FALSE(loaded);
        EXPECT_LT(watch.totalBytes, 16 * image.size() + 1024);
    }
}

}  // namespace
