#include "core/KvIdentifier.h"

#include <gtest/gtest.h>

#include <string>

#include "core/KvIdentifierManager.h"
#include "platform/KvPlatform.h"

namespace {

TEST(KvIdentifierTest, ANameIsTheCrcOfItsTextWithTheLettersOfAsciiFolded)
{
    EXPECT_EQ(CKvIdentifier("123456789").GetCrc64(), 0xCAA717168609F281);  // of CRC-64/Jones
    EXPECT_EQ(CKvIdentifier(static_cast<const char*>(nullptr)), CKvIdentifier(""));
    for (int byte = 1; byte < 256; ++byte) {
        const char text[] = {static_cast<char>(byte), '\0'};
        const char otherText[] = {static_cast<char>(byte ^ 0x20), '\0'};
        const bool isLetter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        EXPECT_EQ(CKvIdentifier(text) == CKvIdentifier(otherText), isLetter) << byte;
    }
}

TEST(KvIdentifierTest, AppendContinuesTheTextWhereItIsKnown)
{
    CKvIdentifierManager& manager = CKvIdentifierManager::GetInstance();
    manager.Release();
    const CKvIdentifier list = CKvIdentifier(0xDDCE3513DB69AB0D).Append("_list");
    EXPECT_EQ(manager.FindNameForCrc64(list.GetCrc64()), nullptr);
    EXPECT_EQ(CKvIdentifier("entity_list"), list);
    EXPECT_STREQ(CKvIdentifier("ENTITY").Append("_LIST").DebugCString(), "entity_list");
}

TEST(KvIdentifierTest, AValueWithoutTextShowsItsDigitsAndWarns)
{
    static std::string s_log;
    KvPlatformSetDebugOutput([](const char* line) { s_log += line + sizeof "hh:mm:ss"; });
    const CKvIdentifier unknown(0x0123456789ABCDEF);
    EXPECT_STREQ(unknown.DebugString().GetText(), "CRC<0123456789ABCDEF>");
    EXPECT_STREQ(unknown.DebugCString(), "<empty>");
    KvPlatformSetDebugOutput(nullptr);
    const std::string warning = "[WARNING] MISSING DEBUG STRING FOR CRC64: <0123456789abcdef>\n";
    EXPECT_EQ(s_log, warning + warning);
}

}  // namespace
