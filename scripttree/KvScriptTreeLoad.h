// What both file forms of script trees begin a load with.

#pragma once

#include "core/KvOutOfMemory.h"
#include "core/KvString.h"
#include "file/KvFileSystemUnCached.h"

/// Opens a file for reading, archives first, lets \a load read it from its handle and closes it.
///
/// Errors: false when the file cannot be opened or memory runs out, else what \a load gives.
template <class TLoad>
[[nodiscard]] bool KvLoadThroughHandle(const TKvString<char>& path, TLoad load)
{
    CKvFileHandle* handle = nullptr;
    const bool loaded = KvFalseWhenOutOfMemory([&] {
        return CKvFileSystemUnCached::Open(handle, path, EKvFileSystemOpenMode::ReadBinary, true) ==
                   EKvFileSystemError::Success &&
               load(handle);
    });
    CKvFileSystemUnCached::Close(handle);
    return loaded;
}
