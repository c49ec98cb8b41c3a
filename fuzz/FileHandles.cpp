// Files of any bytes, compressed or not, through all that reads them: whole, from front to back,
// and back and forth through a cache.

#include <memory>

#include "file/KvCompressedFileReader.h"
#include "file/KvFileHandleCached.h"
#include "fuzz/KvFuzz.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvMemoryDisk.h"

namespace {

using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

constexpr const char* kName = "file";

/// What a compressed file may expand to.
constexpr std::uint32_t kLargestExpanded = 65536;

/// The bytes of the file as a reader should give them; none when it is refused or damaged.
struct CExpected
{
    bool isKnown = false;
    std::string bytes;
};

CExpected ReadWhole()
{
    CKvFile file;
    KvRequire(file.Open(kName, EMode::ReadBinary, false) == EError::Success, "a file opens");
    int size = -1;
    const std::unique_ptr<unsigned char[]> bytes(
        static_cast<unsigned char*>(file.ReadEntireFile(size)));
    KvRequire(bytes != nullptr || size == 0, "what is refused has no size");
    if (bytes == nullptr)
        return {};
    return {true, {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)}};
}

void RequireFrontToBack(const CExpected& expected, int piece)
{
    CKvFile file;
    KvRequire(file.Open(kName, EMode::ReadBinary, false) == EError::Success, "a file opens");
    int size = -1;
    CKvCompressedFileReader reader(&file, size);
    std::string bytes(static_cast<std::size_t>(size), '?');
    int total = 0;
    for (int count = 1; count > 0; total += count) {
        count = reader.Read(bytes.data() + total, std::min(piece, size - total));
        KvRequire(count >= 0 && count <= size - total, "no more is read than announced");
    }
    KvRequire(expected.isKnown ? bytes == expected.bytes : reader.IsRefused() || total < size,
              "pieces give what the whole gives");
}

/// Texts are the bytes between the zeros.
void RequireTexts(const std::string& stored)
{
    CKvFile file;
    KvRequire(file.Open(kName, EMode::ReadBinary, false) == EError::Success, "a file opens");
    for (std::size_t at = 0; at < stored.size();) {
        TKvString<char> text;
        const std::size_t end = std::min(stored.find('\0', at), stored.size());
        if (end - at > CKvFile::kLongestString)
            return;
        const bool complete = file.ReadString(text) == EError::Success;
        KvRequire(complete == (end < stored.size()) && text == stored.substr(at, end - at).c_str(),
                  "a text ends at its zero byte or with the file");
        at = end + 1;
    }
}

/// Reads a value and writes it again. False at the end of the file.
template <class T, class TWritten>
bool CopyValue(CKvFile& from, CKvFile& to, EError (CKvFile::*read)(T&),
               EError (CKvFile::*write)(TWritten))
{
    T value = T(1);
    const int left = from.GetSize() - from.GetPos();
    const bool complete = (from.*read)(value) == EError::Success;
    KvRequire(complete == (left >= static_cast<int>(sizeof value)), "a value is read when it fits");
    KvRequire(complete || left > 0 || value == T(), "what is not there is zero");
    return complete && (to.*write)(value) == EError::Success;
}

bool CopyValues(CKvFile& from, CKvFile& to)
{
    using F = CKvFile;
    return CopyValue(from, to, &F::ReadS8, &F::WriteS8) &&
           CopyValue(from, to, &F::ReadU8, &F::WriteU8) &&
           CopyValue(from, to, &F::ReadS16, &F::WriteS16) &&
           CopyValue(from, to, &F::ReadU16, &F::WriteU16) &&
           CopyValue(from, to, &F::ReadS32, &F::WriteS32) &&
           CopyValue(from, to, &F::ReadU32, &F::WriteU32) &&
           CopyValue(from, to, &F::ReadF32, &F::WriteF32) &&
           CopyValue(from, to, &F::ReadS64, &F::WriteS64) &&
           CopyValue(from, to, &F::ReadU64, &F::WriteU64);
}

void RequireCopied(const std::string& stored, const CKvMemoryDisk& disk)
{
    CKvFile from;
    CKvFile to;
    KvRequire(from.Open(kName, EMode::ReadBinary, false) == EError::Success &&
                  to.Open("copy", EMode::WriteBinary, false) == EError::Success,
              "files open");
    while (CopyValues(from, to)) {
    }
    KvRequire(to.Close() == EError::Success && stored.starts_with(disk.Read("copy")),
              "values are written as they were read");
}

/// Chooses the sizes of its windows.
class CCached : public CKvFileHandleCached
{
public:
    CCached() : CKvFileHandleCached(kName, EMode::ReadBinary) {}
    using CKvFileHandleCached::SetCacheSize;
};

void RequireRead(CCached& file, const CExpected& expected, int size)
{
    const int position = file.FilePos();
    std::string bytes(static_cast<std::size_t>(size), '?');
    const int count = file.Read(bytes.data(), size);
    if (!expected.isKnown) {
        KvRequire(count <= size && (count >= 0 || count == CKvFileHandleCached::kReadFailed),
                  "a damaged file gives a short count or the failure's code");
        return;
    }
    KvRequire(count == std::min(size, file.GetFileLength() - position) &&
                  expected.bytes.compare(static_cast<std::size_t>(position),
                                         static_cast<std::size_t>(count), bytes, 0,
                                         static_cast<std::size_t>(count)) == 0,
              "a window shows the file's bytes");
}

void RequireBackAndForth(const CExpected& expected, CKvFuzzInput moves)
{
    CCached file;
    const bool opens = file.Open(kName, EMode::ReadBinary, false) == EError::Success;
    KvRequire(opens || !expected.isKnown, "what can be read whole can be read through a cache");
    if (!opens)
        return;
    KvRequire(!expected.isKnown || file.GetFileLength() == static_cast<int>(expected.bytes.size()),
              "the length is that of the whole");
    while (!moves.IsAtEnd()) {
        const unsigned int move = moves.TakeByte();
        const int number = moves.TakeNumber();
        if (move % 4 == 0)
            file.SetCacheSize(number % 8200, static_cast<int>(move / 4) % 9 - 1);
        else if (move % 4 == 1)
            file.SeekStart(number - 100);
        else if (move % 4 == 2)
            file.SeekCurrent(number - 32768);
        else
            RequireRead(file, expected, number % 20000);
        KvRequire(file.FilePos() >= 0 && file.FilePos() <= file.GetFileLength(),
                  "a position stays in the file");
    }
}

bool TakesLong(const std::string& stored)
{
    constexpr std::size_t kPropertiesAt = kKvCompressedHeaderSize;
    return stored.size() > kPropertiesAt &&
           KvIsCompressed(stored.data(), static_cast<int>(stored.size())) &&
           (KvGetUncompressedSize(stored.data()) > kLargestExpanded ||
            KvHasLargeModel(static_cast<unsigned char>(stored[kPropertiesAt])));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CKvFuzzInput input(data, size);
    const std::size_t moveCount = input.TakeByte() % 32;
    const std::string moves(input.Take(3 * moveCount));
    const int piece = 1 + input.TakeNumber();
    const std::string stored = input.TakeRest();
    if (TakesLong(stored))
        return 0;
    CKvMemoryDisk disk;
    disk.Write(kName, stored);
    const CExpected expected = ReadWhole();
    RequireFrontToBack(expected, piece);
    RequireTexts(stored);
    RequireCopied(stored, disk);
    RequireBackAndForth(
        expected, CKvFuzzInput(reinterpret_cast<const std::uint8_t*>(moves.data()), moves.size()));
    KvRequire(disk.GetOpenCount() == 0, "no stream is left");
    return 0;
}
