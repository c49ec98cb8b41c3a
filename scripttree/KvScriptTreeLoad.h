// What both file forms of script trees begin a load with.

#pragma once

#include "core/KvString.h"
#include "file/KvFileSystemUnCached.h"

/// Opens a file for reading, archives first, lets \a load read it from its handle and closes it.
///
/// Errors: false when the file cannot be opened, else what \a load gives.
template <class TLoad>
[[nodiscard]] bool KvLoadThroughHandle(const TKvString<char>& path, TLoad load)
{
    CKvFileHandle* handle = nullptr;
    if (CKvFileSystemUnCached::Open(handle, path, EKvFileSystemOpenMode::ReadBinary, true) !=
        EKvFileSystemError::Success)
        return false;
    const bool loaded = load(handle);
    CKvFileSystemUnCached::Close(handle);
    return loaded;
}
