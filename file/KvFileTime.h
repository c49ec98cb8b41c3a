// The time stamp of a file.

#pragma once

#include <cstdint>

#include "core/KvString.h"

/// A moment as a 64-bit count in two halves, low half first.
///
/// Units: 100 ns since the beginning of 1601, UTC.
struct FILETIME
{
    std::uint32_t dwLowDateTime = 0;
    std::uint32_t dwHighDateTime = 0;
};

constexpr std::uint64_t KvFileTimeToCount(const FILETIME& time)
{
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

constexpr FILETIME KvCountToFileTime(std::uint64_t count)
{
    return {static_cast<std::uint32_t>(count), static_cast<std::uint32_t>(count >> 32)};
}

/// The later of a file's creation and its last write; the last write where the system keeps no
/// creation time. Links are followed.
///
/// Errors: zero for a folder and when the file is absent or may not be read.
FILETIME KvGetFileTime(const TKvString<char>& path);
