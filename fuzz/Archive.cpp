// Archives of any bytes: opened, listed, read, and packed again.

#include <climits>
#include <memory>
#include <vector>

#include "core/KvCrc64.h"
#include "file/KvBigFile.h"
#include "file/KvBigFileGenerator.h"
#include "file/KvFileHandleBigFile.h"
#include "file/KvFileSystemUnCached.h"
#include "fuzz/KvFuzz.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvMemoryDisk.h"

namespace {

using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

/// Tables may name one place any number of times.
constexpr int kMostMembers = 64;

struct CMember
{
    TKvString<char> name;
    std::uint64_t crc;
    std::string bytes;
};

std::string ReadSome(CKvFileHandle* handle, int size)
{
    std::string bytes(static_cast<std::size_t>(size), '?');
    const int count = CKvFileSystemUnCached::Read(handle, bytes.data(), size);
    KvRequire(count >= 0 && count <= size, "no more is read than asked for");
    bytes.resize(static_cast<std::size_t>(count));
    return bytes;
}

void RequireSeeksToHold(CKvFileHandle* handle, const std::string& bytes)
{
    const int middle = static_cast<int>(bytes.size() / 2);
    CKvFileSystemUnCached::SeekFromEnd(handle, middle);
    KvRequire(ReadSome(handle, middle + 2) == bytes.substr(bytes.size() - bytes.size() / 2),
              "a member is read from its middle");
    for (const int offset : {-1, INT_MIN, INT_MAX}) {
        CKvFileSystemUnCached::SeekFromStart(handle, offset);
        KvRequire(ReadSome(handle, 1).empty(), "nothing is read outside a member");
    }
    CKvFileSystemUnCached::SeekFromStart(handle, 0);
}

/// What compressed members expand to is left to FileHandles.cpp.
void RequireWholeRead(CKvFileHandle* handle, const std::string& bytes)
{
    CKvFile file(handle);
    KvRequire(
        KvIsCompressed(bytes.data(), static_cast<int>(bytes.size())) || KvReadWhole(file) == bytes,
        "a member is read whole");
}

/// Reads the member at an index in all ways. True when its archive has all its bytes.
bool ReadMember(CKvBigFile& archive, int index, const std::string& file, CMember& member)
{
    member.name = archive.GetFileNameByIndex(index);
    member.crc = archive.GetFileNameCrcByIndex(index);
    CKvFileHandle* handle = archive.FileOpenByIndex(index);
    KvRequire(handle != nullptr && handle->GetName() == member.name, "a listed member opens");
    const auto* own = static_cast<CKvFileHandleBigFile*>(handle);
    const bool isComplete = own->IsInArchive();
    const int claimed = std::min(own->GetSize(), static_cast<int>(file.size()) + 1);
    member.bytes = ReadSome(handle, claimed);
    CKvFileSystemUnCached::SeekFromStart(handle, 0);
    if (isComplete) {
        KvRequire(static_cast<int>(member.bytes.size()) == own->GetSize() &&
                      file.find(member.bytes) != std::string::npos,
                  "a member is a part of its archive");
        RequireSeeksToHold(handle, member.bytes);
        RequireWholeRead(handle, member.bytes);
    }
    KvRequire(archive.FileClose(handle), "an archive closes its handles");
    return isComplete;
}

void RequirePackedAgain(const std::vector<CMember>& members, CKvMemoryDisk& disk)
{
    CKvBigFileGenerator generator;
    for (const CMember& member : members) {
        const std::string source = "source" + std::to_string(&member - members.data());
        disk.Write(source, member.bytes);
        KvRequire(generator.AddFile(source.c_str(), member.name, member.crc), "a member is added");
    }
    KvRequire(generator.Save("packed", false, false), "an archive is saved");
    CKvBigFile archive;
    KvRequire(archive.Open("packed", EMode::ReadBinary) == EError::Success &&
                  archive.GetNumFiles() == static_cast<int>(members.size()),
              "what was saved opens");
    const std::string file = disk.Read("packed");
    for (int i = 0; i < archive.GetNumFiles(); ++i) {
        const CMember& member = members[static_cast<std::size_t>(i)];
        CMember packed;
        KvRequire(ReadMember(archive, i, file, packed) && packed.name == member.name &&
                      packed.crc == member.crc && packed.bytes == member.bytes,
                  "a member is as it was added");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string file = CKvFuzzInput(data, size).TakeRest();
    CKvMemoryDisk disk;
    disk.Write("archive", file);
    auto archive = std::make_unique<CKvBigFile>();
    if (archive->Open("archive", EMode::ReadBinary) != EError::Success) {
        KvRequire(archive->GetNumFiles() == 0 && archive->FileOpenByIndex(0) == nullptr,
                  "an archive that does not open has no members");
        return 0;
    }
    KvRequire(archive->GetNumFiles() <= static_cast<int>(size) / CKvBigFileFAT::kSmallestRecord,
              "a table has no more records than it has room for");
    std::vector<CMember> members;
    for (int i = 0; i < std::min(archive->GetNumFiles(), kMostMembers); ++i) {
        CMember member;
        if (ReadMember(*archive, i, file, member))
            members.push_back(member);
    }
    CKvFileHandle* first = archive->FileOpenByIndex(0);
    CKvFileHandle* named = archive->FileOpen(archive->GetFileNameByIndex(0));
    archive.reset();
    KvRequire(first == nullptr || ReadSome(first, 1).empty(), "handles outlive their archive");
    CKvFileSystemUnCached::Close(first);
    CKvFileSystemUnCached::Close(named);
    RequirePackedAgain(members, disk);
    KvRequire(disk.GetOpenCount() == 0, "no stream is left");
    return 0;
}
