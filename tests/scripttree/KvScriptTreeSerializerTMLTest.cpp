#include "scripttree/KvScriptTreeSerializerTML.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>

#include "core/KvCrc64.h"
#include "core/KvId.h"
#include "file/KvFileSystemUnCached.h"
#include "tests/scripttree/KvAllocationWatch.h"
#include "tests/scripttree/KvTreeText.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvGuardedBytes.h"
#include "tests/support/KvSmallStack.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using Attribute = CKvScriptTreeAttribute;
using Serializer = CKvScriptTreeSerializerTML;
using std::string_literals::operator""s;

/// entity{name='box' count='3'}, in both byte orders.
const std::string kLittleEndian =
    "\x0D\xAB\x69\xDB\x13\x35\xCE\xDD\2\0\0\0\0\0\0\0"
    "\x25\xF9\xC9\x44\x54\x93\xB1\xAF\4\0\0\0box\0"
    "\xB1\x78\xCF\x1E\x73\x33\xC3\xE4\2\0\0\0\3\0\0\0"
    "\3\0\0\0entity\0name\0count\0"s;
const std::string kBigEndian =
    "\xDD\xCE\x35\x13\xDB\x69\xAB\x0D\0\0\0\2\0\0\0\0"
    "\xAF\xB1\x93\x54\x44\xC9\xF9\x25\0\0\0\4box\0"
    "\xE4\xC3\x33\x73\x1E\xCF\x78\xB1\0\0\0\2\0\0\0\3"
    "\0\0\0\3entity\0name\0count\0"s;

void MakeGoldenTree(CKvScriptTree& tree)
{
    CKvScriptTreeNode* root = tree.CreateRootNode(Id("entity"));
    root->AddAttribute(Attribute(Id("name"), "box"));
    root->AddAttribute(Attribute(Id("count"), 3));
}

constexpr const char* kOldTree = "old{x='1'}(child)";

void MakeOldTree(CKvScriptTree& tree)
{
    CKvScriptTreeNode* root = tree.CreateRootNode(Id("old"));
    root->AddAttribute(Attribute(Id("x"), "1"));
    root->AddNewChild(Id("child"));
}

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

/// Writes the parts of an image in the machine's byte order.
class CImage
{
public:
    CImage& U32(std::uint32_t value) { return Append(&value, sizeof value); }
    CImage& U64(std::uint64_t value) { return Append(&value, sizeof value); }
    CImage& Text(const std::string& text) { return Append(text.c_str(), text.size() + 1); }
    CImage& Name(const char* name) { return U64(Id(name).GetCrc64()); }
    const std::string& Bytes() const { return m_bytes; }

private:
    CImage& Append(const void* data, std::size_t size)
    {
        m_bytes.append(static_cast<const char*>(data), size);
        return *this;
    }

    std::string m_bytes;
};

/// Each kind of record, field and value.
std::string SampleImage()
{
    CImage image;
    image.Name("level").U32(3).U32(2);
    image.Name("a").U32(1).U64(42).Name("b").U32(2).U32(7).Name("c").U32(3).U32(0x3F800000);
    image.Name("entity").U32(1).U32(0).Name("name").U32(4).Text("box");
    image.Name("list").U32(0).U32(1).Name("dummy").U32(0).U32(0);
    return image.U32(2).Text("level").Text("").Bytes();
}

constexpr const char* kSampleTree =
    "level{a='0X000000000000002A' b='7' c='1.000000'}(entity{name='box'} list(dummy))";

TEST(KvScriptTreeSerializerTMLTest, TheDocumentedTreeHasItsBytesInBothOrdersAndLoads)
{
    CKvScriptTree tree;
    EXPECT_EQ(Saved(tree, false), "") << "no root";
    MakeGoldenTree(tree);
    EXPECT_EQ(Saved(tree, false), kLittleEndian);
    EXPECT_EQ(Saved(tree, true), kBigEndian);

    CKvScriptTree loaded;
    const bool isLittle = std::endian::native == std::endian::little;
    EXPECT_TRUE(LoadBytes(loaded, isLittle ? kLittleEndian : kBigEndian));
    EXPECT_EQ(*loaded.GetRootNode(), *tree.GetRootNode());
    EXPECT_FALSE(LoadBytes(loaded, isLittle ? kBigEndian : kLittleEndian));
}

TEST(KvScriptTreeSerializerTMLTest, ANullTreeHasTwentyOneBytes)
{
    CKvScriptTree tree;
    tree.CreateRootNode(CKvIdentifier());
    const std::string image = std::string(8, '\xFF') + std::string(8, '\0') + "\1\0\0\0\0"s;
    EXPECT_EQ(Saved(tree, false), image);
    EXPECT_TRUE(LoadBytes(tree, image));
}

TEST(KvScriptTreeSerializerTMLTest, TheSwapFlagReversesTheWordsOfEachField)
{
    CKvScriptTree tree;
    MakeGoldenTree(tree);
    CKvFileSystemUnCached::SetSwapDWORDOnWrite(true);
    const std::string bytes = Saved(tree, false);
    CKvFileSystemUnCached::SetSwapDWORDOnWrite(false);
    EXPECT_EQ(bytes,
              "\xDB\x69\xAB\x0D\xDD\xCE\x35\x13\0\0\0\2\0\0\0\0"
              "\x44\xC9\xF9\x25\xAF\xB1\x93\x54\0\0\0\4box\0"
              "\x1E\xCF\x78\xB1\xE4\xC3\x33\x73\0\0\0\2\0\0\0\3"
              "\0\0\0\3itnety\0eman\0nuoct\0"s);
}

TEST(KvScriptTreeSerializerTMLTest, TheTextAloneDecidesHowAValueIsStored)
{
    constexpr std::uint32_t kInfinity = 0x7F800000;
    const struct
    {
        Attribute attribute;
        std::uint32_t type;
        std::uint32_t bits;  // of a number
        const char* loaded;  // null where the text stays as it is
    } rows[] = {
        {{Id("v"), "1.5"}, 3, 0x3FC00000, "1.500000"},
        {{Id("v"), "-.5"}, 3, 0xBF000000, "-0.500000"},
        {{Id("v"), "5."}, 3, 0x40A00000, "5.000000"},
        {{Id("v"), "."}, 3, 0, "0.000000"},
        {{Id("v"), "0.1"}, 3, 0x3DCCCCCD, "0.100000"},
        {{Id("v"), "340282366920938463463374607431768211456.0"}, 3, kInfinity, "inf"},
        {{Id("v"), "12"}, 2, 12, nullptr},
        {{Id("v"), "-5"}, 2, 0xFFFFFFFB, nullptr},
        {{Id("v"), "007"}, 2, 7, "7"},
        {{Id("v"), "4294967297"}, 2, 1, "1"},
        {{Id("v"), "9223372036854775808"}, 2, 0xFFFFFFFF, "-1"},
        {{Id("v"), ""}, 4, 0, nullptr},
        {{Id("v"), "-"}, 4, 0, nullptr},
        {{Id("v"), "+1"}, 4, 0, nullptr},
        {{Id("v"), "1e5"}, 4, 0, nullptr},
        {{Id("v"), " 12"}, 4, 0, nullptr},
        {{Id("v"), "1.2.3"}, 4, 0, nullptr},
        {{Id("v"), "true"}, 4, 0, nullptr},
        {{Id("v"), 1.0F}, 3, 0x3F800000, nullptr},
        {{Id("v"), UINT_MAX}, 2, 0xFFFFFFFF, nullptr},
        {{Id("v"), 42ULL}, 4, 0, nullptr},
    };
    for (const auto& row : rows) {
        const char* text = row.attribute.GetValue().GetText();
        CKvScriptTree tree;
        tree.CreateRootNode(Id("r"))->AddAttribute(row.attribute);
        CImage image;
        image.Name("r").U32(1).U32(0).Name("v").U32(row.type);
        if (row.type == 4)
            image.Text(text);
        else
            image.U32(row.bits);
        image.U32(2).Text("r").Text("v");
        const bool nativeIsBig = std::endian::native == std::endian::big;
        EXPECT_EQ(Saved(tree, nativeIsBig), image.Bytes()) << text;

        CKvScriptTree loaded;
        ASSERT_TRUE(LoadBytes(loaded, image.Bytes())) << text;
        const Attribute& value = loaded.GetRootNode()->GetAttribute(0);
        EXPECT_EQ(value.GetValue(), row.loaded != nullptr ? row.loaded : text);
        EXPECT_EQ(static_cast<std::uint32_t>(value.GetType()), row.type) << text;
    }
}

TEST(KvScriptTreeSerializerTMLTest, NamesStandOnceInOrderOfFirstUse)
{
    CKvScriptTree tree;
    CKvScriptTreeNode* root = tree.CreateRootNode(Id("Tml_Root"));
    root->AddAttribute(Attribute(Id("tml_second"), 1));
    CKvScriptTreeNode* child = root->AddNewChild(Id("tml_third"));
    child->AddAttribute(Attribute(Id("TML_ROOT"), 1));
    child->AddNewChild(CKvIdentifier(UINT64_C(0xFEDCBA9876543210)));
    root->AddNewChild(KVID::GetSingleton().null)->SetText("not stored");
    root->AddNewChild(Id("tml_third"))->AddAttribute(Attribute(Id("tml_last"), 1));
    const std::string names =
        "\6\0\0\0tml_root\0tml_second\0tml_third\0CRC<FEDCBA9876543210>\0\0tml_last\0"s;
    const std::string bytes = Saved(tree, false);
    ASSERT_GT(bytes.size(), names.size());
    EXPECT_EQ(bytes.substr(bytes.size() - names.size()), names);
}

TEST(KvScriptTreeSerializerTMLTest, LoadingRegistersTheNamesOfTheTable)
{
    // The identifier of a text that nothing else in this program registers.
    const std::string name = "tml_registered_by_load";
    const auto size = static_cast<unsigned int>(name.size());
    CImage image;
    image.U64(CreateCrc64_ToLower(name.data(), size, kKvCrc64Initial)).U32(0).U32(0);
    image.U32(1).Text(name);
    CKvScriptTree tree;
    ASSERT_TRUE(LoadBytes(tree, image.Bytes()));
    EXPECT_EQ(TreeText(tree), name);
}

TEST(KvScriptTreeSerializerTMLTest, LoadingIntoATreeMergesBehindWhatItHas)
{
    CKvScriptTree tree;
    MakeOldTree(tree);
    EXPECT_TRUE(LoadBytes(tree, SampleImage()));
    EXPECT_TRUE(LoadBytes(tree, SampleImage()));
    EXPECT_EQ(TreeText(tree),
              "level{x='1' a='0X000000000000002A' b='7' c='1.000000' "
              "a='0X000000000000002A' b='7' c='1.000000'}"
              "(child entity{name='box'} list(dummy) entity{name='box'} list(dummy))");
}

/// Loads damaged images, each placed so that reading past its end ends the test.
class CDamageSweep
{
public:
    void Load(const std::string& image)
    {
        CKvScriptTree tree;
        MakeOldTree(tree);
        char* bytes = m_guarded.Place(image);
        ++count;
        if (Serializer().LoadTmlFromMemory(tree, bytes, static_cast<unsigned int>(image.size())))
            ++loaded;
        else
            EXPECT_EQ(TreeText(tree), kOldTree) << testing::PrintToString(image);
    }

    int count = 0;
    int loaded = 0;

private:
    CKvGuardedBytes m_guarded{4096};
};

TEST(KvScriptTreeSerializerTMLTest, DamagedImagesLoadOrLeaveTheTreeAsItWas)
{
    const std::string sample = SampleImage();
    const int size = static_cast<int>(sample.size());
    CKvScriptTree tree;
    ASSERT_TRUE(LoadBytes(tree, sample));
    ASSERT_EQ(TreeText(tree), kSampleTree);

    CDamageSweep cuts;
    for (std::size_t length = 0; length < sample.size(); ++length)
        cuts.Load(sample.substr(0, length));
    EXPECT_EQ(cuts.count, size);
    EXPECT_EQ(cuts.loaded, 0);

    CDamageSweep bytes;
    for (std::size_t at = 0; at < sample.size(); ++at) {
        const auto old = static_cast<unsigned char>(sample[at]);
        for (const int value : {0, 255, old + 1, old ^ (1 << at % 8)}) {
            std::string image = sample;
            image[at] = static_cast<char>(value);
            bytes.Load(image);
        }
    }
    EXPECT_EQ(bytes.count, 4 * size);

    CDamageSweep fields;
    for (std::size_t at = 0; at + 4 <= sample.size(); ++at) {
        const auto left = static_cast<std::uint32_t>(sample.size() - at - 4);
        for (const std::uint32_t value :
             {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, left, left + 1}) {
            std::string image = sample;
            std::memcpy(image.data() + at, &value, sizeof value);
            fields.Load(image);
        }
    }
    EXPECT_EQ(fields.count, 7 * (size - 3));
    EXPECT_GT(bytes.loaded + fields.loaded, 0) << "identifiers and values can be anything";

    EXPECT_FALSE(Serializer().LoadTmlFromMemory(tree, nullptr, 0));
    EXPECT_FALSE(Serializer().LoadTmlFromMemory(tree, nullptr, 0x80000000U));
}

TEST(KvScriptTreeSerializerTMLTest, PromisesOfMoreThanTheImageHoldsTakeNoMemory)
{
    CImage chain;  // of nodes that each promise as many children as would by themselves fit
    chain.Name("level").U32(0).U32(1);
    for (std::uint32_t left = 2000; left-- > 0;)
        chain.Name("level").U32(0).U32(left);
    const std::string images[] = {
        chain.U32(0).Bytes(),
        CImage().Name("level").U32(1000000).U32(0).Name("a").U32(2).U32(7).Bytes(),
        CImage().Name("level").U32(0).U32(1000000).Name("child").U32(0).U32(0).U32(0).Bytes(),
    };
    CKvScriptTree tree;
    ASSERT_TRUE(LoadBytes(tree, SampleImage())) << "and the vocabulary is registered now";
    for (std::string image : images) {
        CKvAllocationWatch watch;
        const bool loaded = Serializer().LoadTmlFromMemory(tree, image.data(),
                                                           static_cast<unsigned int>(image.size()));
        watch.Stop();
        EXPECT_FALSE(loaded);
        EXPECT_LT(watch.GetTotalBytes(), 16 * image.size() + 1024);
    }
}

TEST(KvScriptTreeSerializerTMLTest, OnlyKnownTypeCodesLoad)
{
    for (const std::uint32_t type : {0U, 5U, 6U, 0x01000000U}) {
        CImage image;
        image.Name("level").U32(1).U32(0).Name("a").U32(type).U32(0).U32(0).U32(0);
        CKvScriptTree tree;
        EXPECT_FALSE(LoadBytes(tree, image.Bytes())) << type;
    }
}

TEST(KvScriptTreeSerializerTMLTest, AMillionLevelsLoadAndSaveWithoutStack)
{
    KvRunOnSmallStack([] {
        CImage image;
        for (int i = 0; i < 1000000; ++i)
            image.Name("level").U32(0).U32(1);
        image.Name("level").U32(0).U32(0).U32(1).Text("level");
        CKvScriptTree tree;
        EXPECT_TRUE(LoadBytes(tree, image.Bytes()));
        EXPECT_TRUE(Saved(tree, std::endian::native == std::endian::big) == image.Bytes());
    });
}

TEST(KvScriptTreeSerializerTMLTest, EveryFailingAllocationLeavesTheTreeAsItWasAndNoLeak)
{
    std::string bytes = SampleImage();
    CKvScriptTree tree;
    ASSERT_TRUE(LoadBytes(tree, bytes)) << "and all names are registered now";
    int failing = 0;
    for (bool failed = true; failed;) {
        tree.Empty();
        MakeOldTree(tree);
        CKvAllocationWatch watch(++failing);
        const bool loaded = Serializer().LoadTmlFromMemory(tree, bytes.data(),
                                                           static_cast<unsigned int>(bytes.size()));
        failed = watch.HasFailed();
        if (failed)
            EXPECT_EQ(watch.Stop(), 0) << failing;
        else
            tree.Empty();
        EXPECT_EQ(loaded, !failed) << failing;
        EXPECT_EQ(TreeText(tree), failed ? kOldTree : "<empty>") << failing;
    }
    EXPECT_GE(failing, 15);
}

TEST(KvScriptTreeSerializerTMLTest, AFileThatCannotBeReadWholeLeavesTheTreeAsItWas)
{
    const CKvTemporaryFolder folder;
    CKvScriptTree tree;
    MakeOldTree(tree);
    for (const std::string& path :
         {folder.Path("absent"), folder.Path(), folder.Write("empty", "")}) {
        EXPECT_FALSE(Serializer().Load(tree, path.c_str())) << path;
        EXPECT_EQ(TreeText(tree), kOldTree) << path;
    }

    const std::string path = folder.Write("sample", SampleImage());
    int failing = 0;
    for (bool failed = true; failed;) {
        tree.Empty();
        CKvFaultyDisk disk(++failing, CKvFaultyDisk::EFaults::Once);
        const bool loaded = Serializer().Load(tree, path.c_str());
        failed = disk.HasFailed();
        EXPECT_TRUE(loaded || failed) << failing;
        EXPECT_EQ(TreeText(tree), loaded ? kSampleTree : "<empty>") << failing;
    }
    EXPECT_GT(failing, 5) << "open, size, read and close can fail";
}

TEST(KvScriptTreeSerializerTMLTest, AFailedSaveSaysSoAndKeepsTheOldFile)
{
    CKvScriptTree tree;
    MakeGoldenTree(tree);
    EXPECT_FALSE(Serializer().Save(tree, "/nowhere/at/all.game", false));

    for (const bool swap : {false, true}) {  // many small writes, or one
        CKvFileSystemUnCached::SetSwapDWORDOnWrite(swap);
        const CKvTemporaryFolder folder;
        const std::string path = folder.Write("a.game", "precious");
        int failing = 0;
        for (bool failed = true; failed;) {
            CKvFaultyDisk disk(++failing, CKvFaultyDisk::EFaults::Once);
            const bool saved = Serializer().Save(tree, path.c_str(), false);
            failed = disk.HasFailed();
            EXPECT_EQ(saved, !failed) << failing;
            EXPECT_EQ(folder.Read("a.game") == "precious", failed) << failing;
            EXPECT_EQ(folder.Names().size(), 1U) << failing;
        }
        EXPECT_GE(failing, swap ? 20 : 5) << "begin, writes, close and commit can fail";
    }
    CKvFileSystemUnCached::SetSwapDWORDOnWrite(false);
}

}  // namespace
