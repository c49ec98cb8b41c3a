// What the fuzz targets share. A target is a source of its own with the one function below; it is
// linked with the fuzz engine or with KvReplayMain.cpp. It must give the same result for the same
// bytes, ends the process where a rule does not hold, and knows no more than the interfaces tell.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "core/KvString.h"

/// The function that every target defines. Always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the process with a message unless the rule holds.
inline void KvRequire(bool holds, const char* rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", rule);
    std::abort();
}

/// Whether a compressed block of this first byte makes its decoder set up to 6 MiB of
/// probabilities, 768 times two to the power of lc + lp. Inputs by the million have no time for
/// many of them.
inline bool KvHasLargeModel(unsigned char properties)
{
    return properties % 9 + properties / 9 % 5 > 4;
}

/// Takes an input apart, from front to back; at its end numbers are 0 and texts empty.
class CKvFuzzInput
{
public:
    CKvFuzzInput(const std::uint8_t* data, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(data), size)
    {
    }

    bool IsAtEnd() const { return m_rest.empty(); }

    unsigned int TakeByte()
    {
        const std::string_view byte = Take(1);
        return byte.empty() ? 0 : static_cast<unsigned char>(byte[0]);
    }

    /// A number from 0 to 65,535.
    int TakeNumber()
    {
        const unsigned int high = TakeByte() * 256;
        return static_cast<int>(high + TakeByte());
    }

    /// At most \a size bytes.
    std::string_view Take(std::size_t size)
    {
        const std::string_view taken = m_rest.substr(0, size);
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    /// All up to a separating byte, which is skipped.
    std::string TakeUpTo(char separator)
    {
        const std::string text(Take(m_rest.find(separator)));
        Take(1);
        return text;
    }

    std::string TakeRest() { return std::string(Take(m_rest.size())); }

private:
    std::string_view m_rest;
};

inline TKvString<char> KvText(const std::string& text)
{
    return TKvString<char>(text.c_str());
}
