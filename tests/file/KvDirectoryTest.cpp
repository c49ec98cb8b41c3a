#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <map>
#include <random>
#include <set>

#include "file/KvDirectoryListing.h"
#include "file/KvDirectoryTree.h"
#include "file/KvFileOperations.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvSmallStack.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using EFaults = CKvFaultyDisk::EFaults;
using Array = CKvArray<TKvString<char>>;
using Texts = std::vector<std::string>;
using Snapshot = std::map<std::string, std::string>;

/// Fills a folder with entries of all kinds and grows folders in it further.
void Grow(const fs::path& folder, std::mt19937& random, int depth)
{
    for (const char* name :
         {"a.txt", "b.TXT", "c", ".svn", "\xC3\xA9", "B", "x\ny", "g\\h", ".txt"}) {
        const fs::path path = folder / name;
        const auto kind = random() % 8;
        if (kind < 4 && depth > 0 && fs::create_directory(path))
            Grow(path, random, depth - 1);
        else if (kind < 6)
            std::ofstream(path) << name;
        else if (kind == 6)
            fs::create_symlink(random() % 2 == 0 ? ".." : "absent", path);
    }
}

template <class TList>
Texts ToTexts(const TList& list)
{
    Texts texts;
    for (const auto& element : list)
        if constexpr (requires { element.name; })
            texts.emplace_back(element.name.GetText());
        else
            texts.emplace_back(element.GetText());
    return texts;
}

/// Works in a folder of its own.
class KvDirectoryTest : public testing::Test
{
protected:
    KvDirectoryTest() { fs::current_path(m_folder.Path()); }
    ~KvDirectoryTest() override { fs::current_path(m_before); }

    /// A file with a time in the past.
    void MakeFile(const std::string& path, const std::string& bytes, unsigned int mode) const
    {
        m_folder.Write(path, bytes);
        fs::permissions(path, fs::perms{mode});
        fs::last_write_time(path, fs::last_write_time(path) - std::chrono::hours(1000));
    }

    /// A "tree" of everything, and "outside", where links in it lead.
    void MakeTree() const
    {
        for (const char* path : {"outside", "tree/a/empty", "tree/b", "copy/b"})
            fs::create_directories(path);
        MakeFile("outside/sentinel", "precious", 0644);
        MakeFile("tree/a/big", std::string(100'000, 'x'), 0600);
        MakeFile("tree/b/run\nme", "tool", 0755);
        MakeFile("tree/read only", "", 0444);
        fs::create_symlink("../outside", "tree/lead out");
        fs::create_symlink("../outside/sentinel", "tree/leak");
        fs::create_symlink("..", "tree/a/loop");
        fs::create_symlink("absent", "tree/b/nowhere");
    }

    /// What each entry is: a folder, the text of a link, or mode, time and bytes of a file.
    Snapshot Take(const std::string& root) const
    {
        Snapshot snapshot;
        for (const auto& entry : fs::recursive_directory_iterator(root)) {
            std::string& value = snapshot[entry.path().lexically_relative(root).string()];
            if (entry.is_symlink())
                value = "->" + fs::read_symlink(entry).string();
            else if (entry.is_regular_file())
                value = std::to_string(static_cast<int>(entry.status().permissions())) + " " +
                        std::to_string(entry.last_write_time().time_since_epoch().count()) +
                        m_folder.Read(entry.path().string());
        }
        return snapshot;
    }

    /// Gives what is printed. Without \a to, \a from is removed.
    static std::string Copy(const char* from, const char* to)
    {
        testing::internal::CaptureStdout();
        EXPECT_TRUE(to != nullptr ? CopyRecursively(from, to)
                                  : KvRemoveDirectoryRecursively(from, true));
        return testing::internal::GetCapturedStdout();
    }

    static std::string Remove(const char* dir) { return Copy(dir, nullptr); }

    fs::path m_before = fs::current_path();
    CKvTemporaryFolder m_folder;
};

TEST_F(KvDirectoryTest, RandomTreesAreListedAsTold)
{
    for (unsigned int seed = 0; seed < 6; ++seed) {
        SCOPED_TRACE(seed);
        const std::string root = std::to_string(seed);
        const TKvString<char> dir = root.c_str();
        std::mt19937 random(seed);
        fs::create_directory(root);
        Grow(root, random, 2);
        Array all, kept, some, excluded, extensions;
        CKvArray<KvFindFile> files;
        excluded.Add(".SVN");
        extensions.Add("txt");
        EXPECT_TRUE(KvEnumerateDirectory(dir, all, nullptr));
        EXPECT_TRUE(KvEnumerateDirectory(dir, files, kept, &excluded));
        EXPECT_TRUE(KvRetrieveFilesFromDirectoryRecursive(dir, some, extensions));
        std::set<fs::path> paths;  // in order name by name, so each after the folder it is in
        for (const auto& entry : fs::recursive_directory_iterator(root))
            if (entry.path().string().find('\\') == std::string::npos)
                paths.insert(entry.path());
        Texts folders, keptFolders, keptFiles, texts;
        for (const fs::path& path : paths) {
            const bool isFolder = fs::is_directory(fs::symlink_status(path));
            std::string text = path.string();
            std::replace(text.begin(), text.end(), '/', '\\');
            if (isFolder)
                folders.push_back(text);
            else if (text.ends_with(".txt"))
                texts.push_back(text);
            if ((text + (isFolder ? "\\" : "")).find("\\.svn\\") == std::string::npos)
                (isFolder ? keptFolders : keptFiles).push_back(text);
        }
        EXPECT_EQ(ToTexts(all), folders);
        EXPECT_EQ(ToTexts(kept), keptFolders);
        EXPECT_EQ(ToTexts(files), keptFiles);
        const Texts found = ToTexts(some);
        EXPECT_TRUE(std::is_permutation(found.begin(), found.end(), texts.begin(), texts.end()));
    }
}

TEST_F(KvDirectoryTest, TheTimeOfAFileIsTheLaterOfCreationAndLastWrite)
{
    // Through the system: the standard library's times end in 2038 where it has 32 bits.
    const timespec future[] = {{0, UTIME_OMIT}, {4'102'444'800, 1'234'567}};
    const timespec past1970[] = {{0, UTIME_OMIT}, {1, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, m_folder.Write("future", "").c_str(), future, 0), 0);
    ASSERT_EQ(utimensat(AT_FDCWD, m_folder.Write("past", "").c_str(), past1970, 0), 0);
    CKvArray<KvFindFile> files;
    KvEnumerateDirectory(".", files);
    ASSERT_EQ(files.GetCount(), 2);
    for (const KvFindFile& file : files)
        EXPECT_EQ(KvFileTimeToCount(file.time), KvFileTimeToCount(KvGetFileTime(file.name)));
    EXPECT_EQ(KvFileTimeToCount(files[0].time),
              (11'644'473'600 + 4'102'444'800) * 10'000'000 + 12'345);
    EXPECT_TRUE(files[1] < files[0] && !(files[0] < files[1]));
    // Where the system keeps no creation time, the last write serves.
    const std::uint64_t past = KvFileTimeToCount(files[1].time) / 10'000'000 - 11'644'473'600;
    EXPECT_TRUE(past == 1 || std::time(nullptr) - static_cast<std::time_t>(past) < 60) << past;
}

TEST_F(KvDirectoryTest, CopiesAndRemovalsKeepToTheirTreeAndTellEachItem)
{
    MakeTree();
    const Snapshot tree = Take("tree");
    const Snapshot outside = Take("outside");
    // Left from earlier: a file, and links that lead out where a file and a folder belong.
    m_folder.Write("copy/b/run\nme", "old");
    fs::create_symlink("../outside/sentinel", "copy/read only");
    fs::create_symlink("../outside", "copy/a");
    mkfifo("tree/pipe", 0600);

    EXPECT_EQ(Copy("tree", "copy"),
              "Creating copy\\a\nCreating copy\\a\\empty\nCreating copy\\b\n"
              "Copying copy\\a\\big\nCopying copy\\a\\loop\nCopying copy\\b\\nowhere\n"
              "Copying copy\\b\\run\nme\nCopying copy\\lead out\nCopying copy\\leak\n"
              "Copying copy\\pipe\nCopying copy\\read only\n");
    EXPECT_EQ(Take("copy"), tree);
    Copy("copy", "copy");  // each item onto itself
    EXPECT_EQ(Take("copy"), tree);

    Copy("copy", "copy/a/empty");
    Snapshot twice = tree;
    for (const auto& [path, value] : tree)
        twice["a/empty/" + path] = value;
    EXPECT_EQ(Take("copy"), twice);
    Array found;
    found.Add("kept");
    KvRetrieveDirectoriesFromDirectoryRecursive("copy\\", found);
    KvRetrieveFilesFromDirectoryRecursive("copy\\b", found, {});
    EXPECT_EQ(ToTexts(found),
              (Texts{"kept", "copy\\a", "copy\\b", "copy\\a\\empty", "copy\\a\\empty\\a",
                     "copy\\a\\empty\\b", "copy\\a\\empty\\a\\empty", "copy\\b\\nowhere",
                     "copy\\b\\run\nme"}));
    Remove("copy/a");
    fs::create_symlink("copy", "way");
    EXPECT_EQ(Remove("way"),
              "Deleting way\\b\\nowhere\nDeleting way\\b\\run\nme\nDeleting way\\lead out\n"
              "Deleting way\\leak\nDeleting way\\read only\nDeleting way\\b\nDeleting way\\a\n");
    EXPECT_TRUE(fs::is_empty("copy"));
    EXPECT_EQ(Take("outside"), outside);
}

TEST_F(KvDirectoryTest, AFailingDiskLeavesOldOrNewFilesAndNoOthers)
{
    MakeTree();
    const Snapshot tree = Take("tree");
    int runs = 0;
    for (const EFaults faults : {EFaults::Once, EFaults::FromThenOn}) {
        int failing = 0;
        for (bool failed = true; failed; ++runs) {
            SCOPED_TRACE(++failing);
            fs::remove_all("copy");
            fs::create_directories("copy/a");
            MakeFile("copy/a/big", "old", 0640);
            const std::string old = Take("copy")["a/big"];
            {
                const CKvFaultyDisk disk(failing, faults);
                Copy("tree", "copy");
                failed = disk.HasFailed();
            }
            const Snapshot copy = Take("copy");
            for (const auto& [path, value] : copy)
                EXPECT_TRUE(tree.contains(path) && (value == tree.at(path) || value == old));
            EXPECT_TRUE(failed || copy == tree);
            EXPECT_GE(copy.size(), failing > 4 && faults == EFaults::Once ? 7 : 2);  // the rest
            const CKvFaultyDisk disk(failing, faults);
            Remove("copy");
            EXPECT_TRUE(disk.HasFailed() || fs::is_empty("copy"));
        }
    }
    // Four lists, three folders, four links, for each of three files nine operations or, where one
    // read does not do, eleven; and a run without fault.
    EXPECT_EQ(runs, 2 * (4 + 3 + 4 + 9 + 9 + 11 + 1));
}

TEST_F(KvDirectoryTest, AnEmptyPathNamesNoTree)
{
    const CKvFaultyDisk disk(1, EFaults::FromThenOn);  // lest a mistake empties the disk
    EXPECT_EQ(Remove("") + Copy("", ".") + Copy(".", ""), "");
    EXPECT_EQ(disk.GetCount(), 0);
}

TEST_F(KvDirectoryTest, ACopyNeedsAnotherPlainFileAndSparesTheOldOne)
{
    MakeTree();
    const std::string same = "tree/b/run\nme";
    fs::create_hard_link(same, "same");
    const Snapshot before = Take(".");
    const std::pair<const char*, const char*> refused[] = {
        {"same", same.c_str()}, {"tree/leak", "outside/sentinel"}, {"same", "tree"}, {"tree", "x"}};
    for (const auto& [from, to] : refused)
        EXPECT_FALSE(KvCopyFile(from, to)) << from;
    EXPECT_FALSE(KvRemoveDirectory("tree") || KvDeleteFile("tree"));
    EXPECT_EQ(Take("."), before);
}

TEST_F(KvDirectoryTest, PathsAreCreatedBelowTheirFirstComponent)
{
    TKvString<char> path = m_folder.Path("a/./b\\\\c").c_str();
    EXPECT_TRUE(KvCreatePath(path) && KvCreatePath(path) && fs::is_directory("a/b/c"));
    m_folder.Write("file", "");
    TKvString<char> blocked = "./file/d", relative = "absent/a";
    EXPECT_FALSE(KvCreatePath(blocked) || KvCreatePath(relative));
    EXPECT_TRUE(blocked == ".\\file\\d\\");
}

TEST_F(KvDirectoryTest, ThousandLevelsNeedNeitherStackNorShortPaths)
{
    TKvString<char> path = ".\\tree";
    for (int level = 0; level < 1000; ++level)
        path += "\\level";  // in all longer than the system takes a path in one piece
    fs::create_directory("copy");
    m_folder.Write("file", "x");
    Array found;
    KvRunOnSmallStack([&] {
        EXPECT_TRUE(KvCreatePath(path) && KvCopyFile("file", path + "x"));
        Copy("tree", "copy");
        KvRetrieveDirectoriesFromDirectoryRecursive("copy", found);
        KvRetrieveFilesFromDirectoryRecursive("copy", found, {});
        Remove("tree");
    });
    EXPECT_EQ(found.GetCount(), 1001);
    EXPECT_TRUE(fs::is_empty("tree"));
}

}  // namespace
