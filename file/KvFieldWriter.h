// Writes the fields of a binary format, little- or big-endian, through a buffer: a document has
// millions of fields of a few bytes, each far cheaper to collect than to write by itself.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "core/KvByteOrder.h"
#include "core/KvString.h"
#include "file/KvFileSystemUnCached.h"

/// A write that failed marks the handle, so that closing it tells; Flush() tells at once. The file
/// layer's swap flag applies to each field by itself, as it is when the field is written.
class CKvFieldWriter
{
public:
    /// Ownership: the handle stays the caller's and open, and is written to by nobody else before
    ///            the destructor has flushed what was collected.
    CKvFieldWriter(CKvFileHandle* handle, bool bigEndian);

    /// A writer without file: what it collects stays in memory, for WriteCollected() of others.
    static CKvFieldWriter ToMemory(bool bigEndian);

    CKvFieldWriter(const CKvFieldWriter&) = delete;
    CKvFieldWriter& operator=(const CKvFieldWriter&) = delete;
    ~CKvFieldWriter();

    void WriteU32(std::uint32_t value) { WriteNumber(value); }
    void WriteU64(std::uint64_t value) { WriteNumber(value); }
    void WriteS32(std::int32_t value) { WriteU32(static_cast<std::uint32_t>(value)); }
    void WriteF32(float value) { WriteU32(std::bit_cast<std::uint32_t>(value)); }
    void WriteBytes(const char* bytes, std::size_t size) { WriteField(bytes, size); }

    /// The text's bytes and one zero byte.
    void WriteText(const TKvString<char>& text)
    {
        WriteField(text.GetText(), static_cast<std::size_t>(text.GetLength()));
        WriteField("", 1);
    }

    /// The fields of a writer without file, as that one has collected them.
    void WriteCollected(const CKvFieldWriter& collected)
    {
        Append(collected.m_buffer.get(), collected.m_used);
    }

    /// Forgets what was collected and not handed over.
    void Discard() { m_used = 0; }

    /// Hands over to the file what was collected. True when this and all writes before it went
    /// well.
    bool Flush();

private:
    enum class EDestination
    {
        File,
        Memory
    };

    CKvFieldWriter(EDestination destination, CKvFileHandle* handle, bool bigEndian,
                   std::size_t capacity);

    template <typename T>
    void WriteNumber(T value)
    {
        if (m_swap)
            value = KvReverseBytes(value);
        WriteField(&value, sizeof value);
    }

    void WriteField(const void* bytes, std::size_t size)
    {
        if (CKvFileSystemUnCached::GetSwapDWORDOnWrite())
            AppendSwapped(static_cast<const unsigned char*>(bytes), size);
        else
            Append(bytes, size);
    }

    void Append(const void* bytes, std::size_t size)
    {
        if (size > m_capacity - m_used) {
            AppendBeyond(static_cast<const unsigned char*>(bytes), size);
            return;
        }
        std::memcpy(m_buffer.get() + m_used, bytes, size);
        m_used += size;
    }

    /// Append() of more than there is room for.
    void AppendBeyond(const unsigned char* bytes, std::size_t size);
    void AppendSwapped(const unsigned char* bytes, std::size_t size);
    void Grow(std::size_t minCapacity);

    EDestination m_destination;
    CKvFileHandle* m_handle;
    bool m_swap;
    bool m_failed = false;
    std::size_t m_used = 0;
    std::size_t m_capacity;
    std::unique_ptr<unsigned char[]> m_buffer;
};
