#include "file/KvFilePath.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Split(const char* text)
{
    const CKvFilePath path(text, false);
    return (path.getFilePath() + " | " + path.getFileName() + " | " + path.getFileExt()).GetText();
}

std::string ToAbsolute(const char* text, const char* base)
{
    TKvString<char> path = text;
    CKvFilePath::ConvertToAbsolute(path, base);
    return path.GetText();
}

TEST(KvFilePathTest, PathsSplitAtTheLastSeparatorAndTheLastDotBehindIt)
{
    EXPECT_EQ(Split("data/levels\\a.b.level"), "data/levels\\ | a.b | level");
    EXPECT_EQ(Split("data\\levels.d/a"), "data\\levels.d/ | a | ");
    EXPECT_EQ(Split("/.hidden"), "/ |  | hidden");
}

TEST(KvFilePathTest, RelativePathsGetTheBaseWithOneSeparator)
{
    EXPECT_EQ(ToAbsolute("a.txt", "D:\\data"), "D:\\data\\a.txt");
    EXPECT_EQ(ToAbsolute("b/a.txt", "D:/data/"), "D:\\data\\b\\a.txt");
    EXPECT_EQ(ToAbsolute("C:/x", "D:\\data"), "C:\\x");
    for (const std::string path : {"c:\\x", "C:", "[:\\x", "@:\\x", "C\\:x", "\\x", ""})
        EXPECT_EQ(ToAbsolute(path.c_str(), ""), "\\" + path);
}

}  // namespace
