#include "tests/support/KvFaultyDisk.h"

#include "platform/KvPlatformFolders.h"

namespace {

CKvFaultyDisk* s_disk = nullptr;

}  // namespace

/// The operations of the table, which are plain functions and find their state in s_disk.
struct CKvFaultyDiskOperations
{
    /// The operations that give \a kFailure when they fail, and do nothing then.
    template <auto kOperation, auto kFailure, class... TArguments>
    static auto OnDisk(TArguments... arguments)
        -> decltype((KvPlatformHostDisk().*kOperation)(arguments...))
    {
        return s_disk->NextFails() ? kFailure : (KvPlatformHostDisk().*kOperation)(arguments...);
    }

    static std::size_t ReadStream(std::FILE* stream, void* buffer, std::size_t sizeBytes)
    {
        const std::size_t moves = s_disk->NextMoves(sizeBytes);
        if (moves < sizeBytes)
            s_disk->m_damaged.insert(stream);
        return KvPlatformHostDisk().readStream(stream, buffer, moves);
    }

    static std::size_t ReadStreamAt(std::FILE* stream, std::int64_t offsetBytes, void* buffer,
                                    std::size_t sizeBytes)
    {
        return KvPlatformHostDisk().readStreamAt(stream, offsetBytes, buffer,
                                                 s_disk->NextMoves(sizeBytes));
    }

    static std::size_t WriteStream(std::FILE* stream, const void* data, std::size_t sizeBytes)
    {
        const std::size_t moves = s_disk->NextMoves(sizeBytes);
        if (moves < sizeBytes)
            s_disk->m_damaged.insert(stream);
        return KvPlatformHostDisk().writeStream(stream, data, moves);
    }

    static bool CloseStream(std::FILE* stream)
    {
        const bool fails = s_disk->NextFails() || s_disk->m_damaged.erase(stream) != 0;
        return KvPlatformHostDisk().closeStream(stream) && !fails;
    }

    static void DiscardReplacement(const CKvReplacement& replacement)
    {
        KvPlatformHostDisk().discardReplacement(replacement);
    }

    template <auto kOperation, class... TArguments>
    static bool InFolders(TArguments... arguments)
    {
        return !s_disk->NextFails() && (KvPlatformHostDisk().folders->*kOperation)(arguments...);
    }

    static void ClearReadOnly(const char* path)
    {
        KvPlatformHostDisk().folders->clearReadOnly(path);
    }

    using F = CKvFolderOperations;
    static constexpr F kFolders = {&InFolders<&F::list>,
                                   &InFolders<&F::fileTime>,
                                   &InFolders<&F::create>,
                                   &InFolders<&F::remove>,
                                   &InFolders<&F::removeFile>,
                                   &InFolders<&F::copyLink>,
                                   &InFolders<&F::takeOverAttributes>,
                                   &ClearReadOnly};

    using D = CKvDiskOperations;
    static constexpr D kTable = {&OnDisk<&D::openStream, nullptr>,
                                 &ReadStream,
                                 &ReadStreamAt,
                                 &WriteStream,
                                 &OnDisk<&D::seekStream, false>,
                                 &OnDisk<&D::tellStream, std::int64_t{-1}>,
                                 &CloseStream,
                                 &OnDisk<&D::beginReplacement, EKvReplacementStatus::Failed>,
                                 &OnDisk<&D::commitReplacement, false>,
                                 &DiscardReplacement,
                                 &kFolders};
};

CKvFaultyDisk::CKvFaultyDisk(int failing, EFaults faults) : m_failing(failing), m_faults(faults)
{
    s_disk = this;
    KvPlatformSetDisk(&CKvFaultyDiskOperations::kTable);
}

CKvFaultyDisk::~CKvFaultyDisk()
{
    KvPlatformSetDisk(nullptr);
    s_disk = nullptr;
}

bool CKvFaultyDisk::NextFails()
{
    ++m_count;
    const bool fails = m_failing > 0 && (m_faults == EFaults::FromThenOn ? m_count >= m_failing
                                                                         : m_count == m_failing);
    m_hasFailed = m_hasFailed || fails;
    return fails;
}

std::size_t CKvFaultyDisk::NextMoves(std::size_t sizeBytes)
{
    if (!NextFails())
        return sizeBytes;
    return m_faults == EFaults::Once ? sizeBytes / 2 : 0;
}
