// Writes the fields of a binary format, little- or big-endian, through a buffer: a document has
// millions of fields of a few bytes, each far cheaper to collect than to write by itself.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "core/KvString.h"

class CKvFileHandle;

/// A write that failed marks the handle, so that closing it tells; Flush() tells at once.
class CKvFieldWriter
{
public:
    /// Ownership: the handle stays the caller's and open, and is written to by nobody else before
    ///            the destructor has flushed what was collected.
    CKvFieldWriter(CKvFileHandle* handle, bool bigEndian);
    CKvFieldWriter(const CKvFieldWriter&) = delete;
    CKvFieldWriter& operator=(const CKvFieldWriter&) = delete;
    ~CKvFieldWriter();

    void WriteU32(std::uint32_t value);
    void WriteU64(std::uint64_t value);
    void WriteS32(std::int32_t value);
    void WriteF32(float value);
    void WriteBytes(const char* bytes, std::size_t size);

    /// The text's bytes and one zero byte.
    void WriteText(const TKvString<char>& text);

    /// Hands over what was collected. True when this and all writes before it went well.
    bool Flush();

private:
    void WriteField(const void* bytes, std::size_t size);
    void Write(const void* bytes, std::size_t size);

    CKvFileHandle* m_handle;
    bool m_swap;
    bool m_failed = false;
    std::size_t m_used = 0;
    std::unique_ptr<unsigned char[]> m_buffer;
};
