#include "core/KvIdentifier.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/KvIdentifierManager.h"
#include "platform/KvPlatform.h"

namespace {

std::vector<std::string> s_warnings;

/// Starts with an empty register and collects the log's lines without their time stamps.
class KvIdentifierTest : public testing::Test
{
protected:
    void SetUp() override
    {
        CKvIdentifierManager::GetInstance().Release();
        s_warnings.clear();
        KvPlatformSetDebugOutput([](const char* line) {
            s_warnings.push_back(std::string(line).substr(sizeof "hh:mm:ss " - 1));
        });
    }

    void TearDown() override
    {
        KvPlatformSetDebugOutput(nullptr);
        CKvIdentifierManager::GetInstance().Release();
    }

    static std::string Registered(std::uint64_t crc)
    {
        const char* text = CKvIdentifierManager::GetInstance().FindNameForCrc64(crc);
        return text != nullptr ? text : "<none>";
    }
};

TEST_F(KvIdentifierTest, ANameIsTheCrcOfItsFoldedTextAndKeepsTheTextInLowerCase)
{
    struct Row
    {
        const char* text;
        std::uint64_t crc;
        const char* registered;
    };
    // The second row is the check value of CRC-64/Jones.
    const Row rows[] = {
        {"", 0xFFFFFFFFFFFFFFFF, ""},
        {"123456789", 0xCAA717168609F281, "123456789"},
        {"entity_list", 0x2D4D0126A0ABCCE3, "entity_list"},
        {"Version", 0x899739BD20C6B77B, "version"},
        {"version", 0x899739BD20C6B77B, "version"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const CKvIdentifier id(TKvString<char>(row.text));
        EXPECT_EQ(id.GetCrc64(), row.crc);
        EXPECT_EQ(id, CKvIdentifier(row.text));
        EXPECT_STREQ(id.DebugCString(), row.registered);
        EXPECT_STREQ(CKvIdentifier(row.crc).DebugString().GetText(), row.registered);
    }
    EXPECT_EQ(CKvIdentifier(static_cast<const char*>(nullptr)), CKvIdentifier());

    // Value and text together are taken unchecked; the text is registered under its own value.
    EXPECT_EQ(CKvIdentifier(7, "Entity").GetCrc64(), 7U);
    EXPECT_EQ(Registered(7), "<none>");
    EXPECT_EQ(Registered(0xDDCE3513DB69AB0D), "entity");
    EXPECT_TRUE(s_warnings.empty());
}

TEST_F(KvIdentifierTest, OnlyTheLettersOfAsciiAreFolded)
{
    for (int byte = 1; byte < 256; ++byte) {
        const char other = static_cast<char>(byte ^ 0x20);
        const char text[] = {static_cast<char>(byte), '\0'};
        const char otherText[] = {other, '\0'};
        const bool isLetter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        EXPECT_EQ(CKvIdentifier(text) == CKvIdentifier(otherText), isLetter) << byte;
    }
}

TEST_F(KvIdentifierTest, OrderIsThatOfUnsignedNumbers)
{
    const std::uint64_t ascending[] = {0, 0xFFFFFFFF, 0x100000000, 0x7FFFFFFFFFFFFFFF,
                                       0x8000000000000000};
    for (std::size_t i = 1; i < std::size(ascending); ++i) {
        const CKvIdentifier low(ascending[i - 1]);
        const CKvIdentifier high(ascending[i]);
        EXPECT_TRUE(low < high) << i;
        EXPECT_FALSE(high < low) << i;
    }
}

TEST_F(KvIdentifierTest, AppendContinuesTheTextWhereItIsKnown)
{
    const CKvIdentifier entity("entity");
    const CKvIdentifier list = entity.Append("_LIST");
    EXPECT_EQ(list, CKvIdentifier("entity_list"));
    EXPECT_STREQ(list.DebugCString(), "entity_list");
    EXPECT_STREQ(entity.DebugCString(), "entity");
    EXPECT_EQ(entity.Append(""), entity);

    CKvIdentifierManager::GetInstance().Release();
    const CKvIdentifier nameless = CKvIdentifier(0xDDCE3513DB69AB0D).Append("_list");
    EXPECT_EQ(nameless.GetCrc64(), 0x2D4D0126A0ABCCE3);
    EXPECT_EQ(Registered(nameless.GetCrc64()), "<none>");
    EXPECT_EQ(Registered(CKvIdentifier("_list").GetCrc64()), "_list");
}

TEST_F(KvIdentifierTest, AValueWithoutTextShowsItsDigitsAndWarns)
{
    const CKvIdentifier unknown(0x0123456789ABCDEF);
    EXPECT_STREQ(unknown.DebugString().GetText(), "CRC<0123456789ABCDEF>");
    EXPECT_STREQ(unknown.DebugCString(), "<empty>");
    EXPECT_STREQ(CKvIdentifier().DebugCString(), "<empty>");
    const std::string start = "[WARNING] MISSING DEBUG STRING FOR CRC64: <";
    EXPECT_EQ(s_warnings, (std::vector<std::string>{start + "0123456789abcdef>\n",
                                                    start + "0123456789abcdef>\n",
                                                    start + "ffffffffffffffff>\n"}));
}

}  // namespace
