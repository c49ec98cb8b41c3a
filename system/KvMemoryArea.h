// Bytes that are to lie in memory at a multiple of their alignment, and the pairs of them that
// builds for different machines fill.

#pragma once

#include <array>
#include <cassert>

#include "core/KvArray.h"

/// Bytes and the alignment that their final place must have. The alignment is a note for whoever
/// places them; the array itself does not follow it.
class CKvMemoryArea
{
public:
    static constexpr unsigned long kDefaultAlign = 4;

    [[nodiscard]] int GetSize() const { return m_bytes.GetCount(); }
    [[nodiscard]] CKvArray<unsigned char>& GetBytes() { return m_bytes; }
    [[nodiscard]] const CKvArray<unsigned char>& GetBytes() const { return m_bytes; }

    [[nodiscard]] unsigned long GetAlign() const { return m_align; }
    void SetAlign(unsigned long align) { m_align = align; }

private:
    // In the documented order.
    CKvArray<unsigned char> m_bytes;
    unsigned long m_align = kDefaultAlign;
};

/// Two areas that belong together.
class CKvMemoryAreas
{
public:
    static constexpr int kCount = 2;

    [[nodiscard]] CKvMemoryArea& GetArea(int index)
    {
        assert(index >= 0 && index < kCount);
        return m_areas[static_cast<unsigned int>(index)];
    }
    [[nodiscard]] const CKvMemoryArea& GetArea(int index) const
    {
        assert(index >= 0 && index < kCount);
        return m_areas[static_cast<unsigned int>(index)];
    }

private:
    std::array<CKvMemoryArea, kCount> m_areas;
};

/// The same for one kind of build; types of their own, so that they cannot be mixed up.
class CKvMemoryAreas_360 : public CKvMemoryAreas
{
};

class CKvMemoryAreas_PS3 : public CKvMemoryAreas
{
};
