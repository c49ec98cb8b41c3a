// Making an archive out of files, and reading its members as if they were files on disk.
//
// Writes notes.txt, tide.txt and harbour.archive to the current folder and prints Archive.txt.

#include <cstdio>
#include <string>

#include "core/KvCrc64.h"
#include "file/KvBigFile.h"
#include "file/KvBigFileGenerator.h"
#include "file/KvFile.h"
#include "file/KvFileSystemUnCached.h"
#include "file/KvWholeFileWriter.h"

namespace {

/// The file appears when it is complete, or not at all.
bool WriteFile(const char* path, const TKvString<char>& text)
{
    return KvWriteWholeFile(path, text.GetText(), text.GetLength()) == EKvFileSystemError::Success;
}

/// Adds a file under the name by which it shall be found. The archive stores the CRC that it is
/// given; searches want this one, which is the same in any letter case.
bool Add(CKvBigFileGenerator& generator, const char* sourcePath, const TKvString<char>& name)
{
    const auto length = static_cast<unsigned int>(name.GetLength());
    return generator.AddFile(sourcePath, name,
                             CreateCrc64_ToLower(name.GetText(), length, kKvCrc64Initial));
}

bool MakeArchive(const char* path)
{
    CKvBigFileGenerator generator;
    return WriteFile("notes.txt", "Moor at the east pier.") && WriteFile("tide.txt", "04:17\n") &&
           Add(generator, "notes.txt", "data/notes.txt") &&
           Add(generator, "tide.txt", "data/tide.txt") &&
           generator.Save(path, /*swapEndian=*/false, /*headerOnly=*/false);
}

/// An archive as an object, for whoever wants to know all that is in it.
bool ListArchive(const char* path)
{
    CKvBigFile archive;
    if (archive.Open(path, EKvFileSystemOpenMode::ReadBinary) != EKvFileSystemError::Success)
        return false;
    std::printf("%s has %d members\n", path, archive.GetNumFiles());
    for (int i = 0; i < archive.GetNumFiles(); ++i) {
        CKvFileHandle* handle = archive.FileOpenByIndex(i);
        std::printf("%d: %s, %d bytes\n", i, archive.GetFileNameByIndex(i).GetText(),
                    CKvFileSystemUnCached::GetSize(handle));
        archive.FileClose(handle);
    }
    return true;
}

/// Code that knows nothing of archives but lets its files come from them: the last argument of
/// Open() says so.
std::string ReadFile(const char* path)
{
    CKvFile file;
    if (file.Open(path, EKvFileSystemOpenMode::ReadBinary, true) != EKvFileSystemError::Success)
        return "";
    std::string text(static_cast<std::size_t>(file.GetSize()), '\0');
    const int count = file.Read(text.data(), static_cast<int>(text.size()));
    return text.substr(0, static_cast<std::size_t>(count));
}

}  // namespace

int main()
{
    if (!MakeArchive("harbour.archive") || !ListArchive("harbour.archive"))
        return 1;

    // From here on to the end of the program, members come before files on disk.
    if (!CKvFileSystemUnCached::AddBigFile("harbour.archive"))
        return 1;
    std::printf("data/notes.txt: %s\n", ReadFile("DATA/Notes.TXT").c_str());
    return 0;
}
