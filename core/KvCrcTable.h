// The part that table-driven checksums share: 256 entries for the 256 values of a byte, either a
// constant table common to all checksums or one of the object's own, and the step that uses them.

#pragma once

#include <array>
#include <cstddef>
#include <memory>

template <typename Word>
using TKvCrcEntries = std::array<Word, 256>;

/// The table of one checksum object. Fields stand in the documented order: owned, then active.
template <typename Word>
class TKvCrcTable
{
public:
    TKvCrcTable() = default;

    /// A copy has a table of its own when the original's own table is active.
    TKvCrcTable(const TKvCrcTable& other) { *this = other; }
    TKvCrcTable& operator=(const TKvCrcTable& other);

    ~TKvCrcTable() = default;

    /// Makes a constant table active, which must outlive this one. An own table stays allocated.
    void UseShared(const TKvCrcEntries<Word>& entries) { m_active = &entries; }

    /// Makes a table of the object's own active and fills it.
    void UseOwn(const TKvCrcEntries<Word>& entries);

    /// Entry 0 to 255, taken from the low 8 bits of \a index; 0 when there is no table yet.
    Word Entry(int index) const
    {
        return m_active != nullptr ? (*m_active)[static_cast<unsigned int>(index) & 0xFF] : Word{0};
    }

    /// Feeds bytes into the running value \a value and gives the new one, neither complemented.
    Word Update(Word value, const unsigned char* data, std::size_t sizeBytes) const;

private:
    std::unique_ptr<TKvCrcEntries<Word>> m_owned;
    const TKvCrcEntries<Word>* m_active = nullptr;
};

// ------------------------------------------------------------------------------------------------

template <typename Word>
TKvCrcTable<Word>& TKvCrcTable<Word>::operator=(const TKvCrcTable& other)
{
    if (this == &other)
        return *this;
    if (other.m_active != nullptr && other.m_active == other.m_owned.get())
        UseOwn(*other.m_owned);
    else
        m_active = other.m_active;
    return *this;
}

template <typename Word>
void TKvCrcTable<Word>::UseOwn(const TKvCrcEntries<Word>& entries)
{
    if (m_owned == nullptr)
        m_owned = std::make_unique<TKvCrcEntries<Word>>(entries);
    else
        *m_owned = entries;
    m_active = m_owned.get();
}

template <typename Word>
Word TKvCrcTable<Word>::Update(Word value, const unsigned char* data, std::size_t sizeBytes) const
{
    if (m_active == nullptr)
        return value;
    const TKvCrcEntries<Word>& entries = *m_active;
    for (std::size_t i = 0; i < sizeBytes; ++i)
        value = static_cast<Word>(entries[(value ^ data[i]) & 0xFF] ^ (value >> 8));
    return value;
}
