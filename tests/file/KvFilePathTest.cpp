#include "file/KvFilePath.h"

#include <gtest/gtest.h>

namespace {

TEST(KvFilePathTest, PathsSplitAtTheLastSeparatorAndTheLastDotBehindIt)
{
    struct Row
    {
        const char* path;
        const char* dir;
        const char* name;
        const char* ext;
        const char* nameExt;
    };
    const Row rows[] = {
        {"data/levels\\a.b.level", "data/levels\\", "a.b", "level", "a.b.level"},
        {"data\\levels/a", "data\\levels/", "a", "", "a"},
        {"dir.d/readme", "dir.d/", "readme", "", "readme"},
        {"readme", "", "readme", "", "readme"},
        {"end.", "", "end", "", "end."},
        {"/.hidden", "/", "", "hidden", ".hidden"},
        {"folder\\", "folder\\", "", "", ""},
        {"", "", "", "", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        const CKvFilePath path(row.path, false);
        EXPECT_STREQ(path.getFilePath().GetText(), row.dir);
        EXPECT_STREQ(path.getFileName().GetText(), row.name);
        EXPECT_STREQ(path.getFileExt().GetText(), row.ext);
        EXPECT_STREQ(path.getFileNameExt().GetText(), row.nameExt);
        EXPECT_STREQ(path.GetAsString().GetText(), row.path);
    }
    EXPECT_STREQ(CKvFilePath("a/b\\c/", true).GetAsString().GetText(), "a\\b\\c\\");
}

TEST(KvFilePathTest, OnlyAnUpperCaseDriveWithABackslashIsAbsolute)
{
    struct Row
    {
        const char* path;
        bool absolute;
    };
    const Row rows[] = {{"C:\\x", true}, {"A:\\", true},  {"Z:\\", true},   {"c:\\x", false},
                        {"C:/x", false}, {"C:", false},   {"[:\\x", false}, {"C\\:x", false},
                        {"\\x", false},  {"/x/y", false}, {"", false}};
    for (const Row& row : rows)
        EXPECT_EQ(CKvFilePath::IsAbsolute(TKvString<char>(row.path)), row.absolute) << row.path;
}

TEST(KvFilePathTest, RelativePathsGetTheBaseWithOneSeparator)
{
    struct Row
    {
        const char* path;
        const char* base;
        const char* result;
    };
    const Row rows[] = {
        {"a.txt", "D:\\data", "D:\\data\\a.txt"},
        {"a.txt", "D:\\data\\", "D:\\data\\a.txt"},
        {"a.txt", "D:/data/", "D:\\data\\a.txt"},
        {"b/a.txt", "D:/data", "D:\\data\\b\\a.txt"},
        {"C:/x", "D:\\data", "C:\\x"},
        {"", "D:\\data", "D:\\data\\"},
        {"a.txt", "", "\\a.txt"},
    };
    for (const Row& row : rows) {
        TKvString<char> path(row.path);
        CKvFilePath::ConvertToAbsolute(path, TKvString<char>(row.base));
        EXPECT_STREQ(path.GetText(), row.result);
    }
}

}  // namespace
