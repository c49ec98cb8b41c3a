#include "tests/support/KvMemoryDisk.h"

#include <algorithm>

#include "platform/KvPlatformFolders.h"

namespace {

CKvMemoryDisk* s_disk = nullptr;

/// Stands behind a FILE pointer that nobody but this table looks into.
struct CStream
{
    std::shared_ptr<std::string> bytes;
    char mode;
    std::size_t position = 0;
};

CStream& At(std::FILE* stream)
{
    return *reinterpret_cast<CStream*>(stream);
}

std::string NameOf(const char* path)
{
    std::string name = path;
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

std::size_t Copy(const std::string& bytes, std::size_t position, void* buffer, std::size_t size)
{
    return position < bytes.size() ? bytes.copy(static_cast<char*>(buffer), size, position) : 0;
}

}  // namespace

/// The operations of the table, which are plain functions and find their state in s_disk.
struct CKvMemoryDiskOperations
{
    static std::FILE* Open(std::shared_ptr<std::string> bytes, char mode)
    {
        ++s_disk->m_openCount;
        return reinterpret_cast<std::FILE*>(new CStream{std::move(bytes), mode});
    }

    static std::FILE* OpenStream(const char* path, const char* mode)
    {
        const std::string name = NameOf(path);
        const bool exists = s_disk->m_files.contains(name);
        const std::string options = mode;
        if (exists ? options.find('x') != std::string::npos : options[0] == 'r')
            return nullptr;
        if (!exists)
            s_disk->Write(name, "");
        else if (options[0] == 'w')
            s_disk->m_files[name]->clear();
        return Open(s_disk->m_files[name], options[0]);
    }

    static std::size_t ReadStream(std::FILE* stream, void* buffer, std::size_t sizeBytes)
    {
        CStream& from = At(stream);
        const std::size_t count =
            from.mode == 'r' ? Copy(*from.bytes, from.position, buffer, sizeBytes) : 0;
        from.position += count;
        return count;
    }

    static std::size_t ReadStreamAt(std::FILE* stream, std::int64_t offsetBytes, void* buffer,
                                    std::size_t sizeBytes)
    {
        return offsetBytes < 0 ? 0
                               : Copy(*At(stream).bytes, static_cast<std::size_t>(offsetBytes),
                                      buffer, sizeBytes);
    }

    static std::size_t WriteStream(std::FILE* stream, const void* data, std::size_t sizeBytes)
    {
        CStream& to = At(stream);
        if (to.mode == 'r')
            return 0;
        if (to.mode == 'a')
            to.position = to.bytes->size();
        if (to.position > to.bytes->size())
            to.bytes->resize(to.position);
        to.bytes->replace(to.position, sizeBytes, static_cast<const char*>(data), sizeBytes);
        to.position += sizeBytes;
        return sizeBytes;
    }

    static bool SeekStream(std::FILE* stream, std::int64_t offsetBytes, EKvSeekOrigin origin)
    {
        CStream& moved = At(stream);
        std::int64_t position = offsetBytes;
        if (origin == EKvSeekOrigin::Current)
            position += static_cast<std::int64_t>(moved.position);
        else if (origin == EKvSeekOrigin::End)
            position += static_cast<std::int64_t>(moved.bytes->size());
        if (position < 0)
            return false;
        moved.position = static_cast<std::size_t>(position);
        return true;
    }

    static std::int64_t TellStream(std::FILE* stream)
    {
        return static_cast<std::int64_t>(At(stream).position);
    }

    static bool CloseStream(std::FILE* stream)
    {
        delete &At(stream);
        --s_disk->m_openCount;
        return true;
    }

    static EKvReplacementStatus BeginReplacement(const char* path, const char* mode,
                                                 CKvReplacement& replacement)
    {
        replacement.targetPath = NameOf(path);
        replacement.temporaryPath =
            replacement.targetPath + ".new" + std::to_string(++s_disk->m_temporaryCount);
        replacement.stream = OpenStream(replacement.temporaryPath.c_str(), mode);
        return EKvReplacementStatus::Begun;
    }

    static bool CommitReplacement(const CKvReplacement& replacement)
    {
        auto bytes = s_disk->m_files.extract(replacement.temporaryPath);
        s_disk->m_files.erase(replacement.targetPath);
        bytes.key() = replacement.targetPath;
        return s_disk->m_files.insert(std::move(bytes)).inserted;
    }

    static void DiscardReplacement(const CKvReplacement& replacement)
    {
        s_disk->m_files.erase(replacement.temporaryPath);
    }

    static bool RemoveFile(const char* path) { return s_disk->m_files.erase(NameOf(path)) != 0; }

    static constexpr CKvFolderOperations kFolders = {
        [](const char*, bool, std::vector<CKvFolderEntry>&) { return false; },
        [](const char*, std::uint64_t&) { return false; },
        [](const char*) { return true; },
        [](const char*) { return false; },
        &RemoveFile,
        [](const char*, const char*) { return false; },
        [](std::FILE*, std::FILE*) { return true; },
        [](const char*) {}};

    static constexpr CKvDiskOperations kTable = {
        &OpenStream,        &ReadStream,         &ReadStreamAt, &WriteStream,
        &SeekStream,        &TellStream,         &CloseStream,  &BeginReplacement,
        &CommitReplacement, &DiscardReplacement, &kFolders};
};

CKvMemoryDisk::CKvMemoryDisk()
{
    s_disk = this;
    KvPlatformSetDisk(&CKvMemoryDiskOperations::kTable);
}

CKvMemoryDisk::~CKvMemoryDisk()
{
    KvPlatformSetDisk(nullptr);
    s_disk = nullptr;
}

void CKvMemoryDisk::Write(const std::string& name, const std::string& bytes)
{
    m_files[name] = std::make_shared<std::string>(bytes);
}

std::string CKvMemoryDisk::Read(const std::string& name) const
{
    const auto file = m_files.find(name);
    return file != m_files.end() ? *file->second : "<absent>";
}

std::vector<std::string> CKvMemoryDisk::Names() const
{
    std::vector<std::string> names;
    for (const auto& file : m_files)
        names.push_back(file.first);
    return names;
}
