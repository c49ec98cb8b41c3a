#include "file/KvFileOperations.h"

#include <cstdio>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "core/KvOutOfMemory.h"
#include "file/KvFileHandleStd.h"
#include "file/KvFilePath.h"
#include "file/KvWholeFileWriter.h"
#include "platform/KvPlatformFolders.h"

namespace {

constexpr std::size_t kPieceBytes = std::size_t{64} * 1024;

struct CCloseStream
{
    void operator()(std::FILE* stream) const { KvPlatformDisk().closeStream(stream); }
};
using CStream = std::unique_ptr<std::FILE, CCloseStream>;

/// A read that fails ends the copy like the end of the file: closing \a source tells them apart.
bool CopyContent(std::FILE* source, std::FILE* target)
{
    const std::unique_ptr<unsigned char[]> piece(new (std::nothrow) unsigned char[kPieceBytes]);
    if (piece == nullptr)
        return false;
    for (std::size_t read = kPieceBytes; read == kPieceBytes;) {
        read = KvPlatformDisk().readStream(source, piece.get(), kPieceBytes);
        if (KvPlatformDisk().writeStream(target, piece.get(), read) != read)
            return false;
    }
    return true;
}

/// Copies content and attributes and closes \a source. The attributes come first, so that nobody
/// reads what the source keeps private (until then a new target is its owner's alone), and again at
/// the end, since writing moves the time.
bool CopyWhole(CStream source, std::FILE* target)
{
    const auto& takeOverAttributes = KvPlatformFolders().takeOverAttributes;
    return takeOverAttributes(source.get(), target) && CopyContent(source.get(), target) &&
           takeOverAttributes(source.get(), target) &&
           KvPlatformDisk().closeStream(source.release());
}

bool CopyPlainFile(const TKvString<char>& source, const TKvString<char>& destination)
{
    if (!KvPlatformCanCopyFile(source.GetText(), destination.GetText()))
        return false;
    CStream from(KvPlatformDisk().openStream(source.GetText(), "rb"));
    CKvWholeFileWriter writer;
    if (from == nullptr || writer.Open(destination, EKvFileSystemOpenMode::WriteBinary,
                                       EKvNewFileAccess::OwnerOnly) != EKvFileSystemError::Success)
        return false;

    // Straight to the stream: a copy keeps the bytes as they are, whatever SetSwapDWORDOnWrite()
    // asks of writes.
    std::FILE* to = static_cast<CKvFileHandleStdPC*>(writer.GetHandle())->GetDescriptor();
    return CopyWhole(std::move(from), to) && writer.Commit() == EKvFileSystemError::Success;
}

bool CopyToNewFile(const TKvString<char>& source, const TKvString<char>& destination)
{
    if (!KvPlatformCanCopyFile(source.GetText(), destination.GetText()))
        return false;
    CStream from(KvPlatformDisk().openStream(source.GetText(), "rb"));
    if (from == nullptr)
        return false;
    CStream to(KvPlatformDisk().openStream(destination.GetText(), "wbxp"));
    if (to == nullptr)
        return false;
    const bool copied = CopyWhole(std::move(from), to.get());
    if (KvPlatformDisk().closeStream(to.release()) && copied)
        return true;
    KvDeleteFile(destination);
    return false;
}

}  // namespace

bool KvCreateDirectory(const TKvString<char>& path)
{
    return KvPlatformFolders().create(path.GetText());
}

bool KvRemoveDirectory(const TKvString<char>& path)
{
    return KvPlatformFolders().remove(path.GetText());
}

bool KvDeleteFile(const TKvString<char>& path)
{
    return KvPlatformFolders().removeFile(path.GetText());
}

bool KvCopyFile(const TKvString<char>& source, const TKvString<char>& destination)
{
    return KvFalseWhenOutOfMemory([&] { return CopyPlainFile(source, destination); });
}

bool KvCopyFileToNew(const TKvString<char>& source, const TKvString<char>& destination)
{
    return KvFalseWhenOutOfMemory([&] { return CopyToNewFile(source, destination); });
}

bool KvCreatePath(TKvString<char>& path)
{
    CKvFilePath::ConvertToNativePath(path);
    std::string_view rest(path.GetText());
    if (!rest.ends_with('\\')) {
        path += "\\";
        rest = path.GetText();
    }

    std::size_t end = rest.find('\\');
    std::string built(rest.substr(0, end));
    for (rest.remove_prefix(end + 1); !rest.empty(); rest.remove_prefix(end + 1)) {
        end = rest.find('\\');
        const std::string_view component = rest.substr(0, end);
        if (component.empty() || component == ".")
            continue;
        built += '\\';
        built += component;
        if (!KvPlatformFolders().create(built.c_str()))
            return false;
    }
    return true;
}
