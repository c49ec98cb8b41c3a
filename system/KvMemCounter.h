// Bookkeeping of memory in use, by kind: the processor's (RAM) and the graphics unit's (VRAM).

#pragma once

#include <algorithm>

/// Amounts, the highest they have been, and the allocations that are alive, all as they are told
/// with Add() and Sub(). Counts wrap at 32 bits, also when more is taken away than was added.
///
/// Units: whatever is added; bytes by custom.
class CKvMemCounter
{
public:
    void Add(unsigned int ram, unsigned int vram)
    {
        m_ram += ram;
        m_vram += vram;
        m_peakRam = std::max(m_peakRam, m_ram);
        m_peakVram = std::max(m_peakVram, m_vram);
        ++m_count;
    }

    void Sub(unsigned int ram, unsigned int vram)
    {
        m_ram -= ram;
        m_vram -= vram;
        --m_count;
    }

    [[nodiscard]] unsigned int AmountRAM() const { return m_ram; }
    [[nodiscard]] unsigned int AmountVRAM() const { return m_vram; }
    [[nodiscard]] unsigned int AmountTotal() const { return m_ram + m_vram; }
    [[nodiscard]] unsigned int PeakRAM() const { return m_peakRam; }
    [[nodiscard]] unsigned int PeakVRAM() const { return m_peakVram; }

    /// The sum of both peaks, which need not have been at the same time.
    [[nodiscard]] unsigned int PeakTotal() const { return m_peakRam + m_peakVram; }

    /// Calls of Add() less calls of Sub().
    [[nodiscard]] unsigned int Count() const { return m_count; }

private:
    // In the documented order.
    unsigned int m_ram = 0;
    unsigned int m_vram = 0;
    unsigned int m_peakRam = 0;
    unsigned int m_peakVram = 0;
    unsigned int m_count = 0;
};
