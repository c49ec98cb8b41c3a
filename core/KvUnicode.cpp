#include "core/KvUnicode.h"

#include <climits>
#include <cstdint>

namespace {

constexpr int kUnlimited = -1;

/// Limits count as INT_MAX when there is none, so that the counts themselves cannot overflow.
int GetLimit(int maxCount)
{
    return maxCount == kUnlimited ? INT_MAX : maxCount;
}

/// Reads the character at \a text and moves behind it. False, and nothing moved, where it has four
/// bytes or the terminator stands inside it.
bool DecodeUnit(const char*& text, std::uint16_t& unit)
{
    const auto lead = static_cast<std::uint8_t>(*text);
    if (lead > 0xEF)
        return false;

    const int followers = lead <= 0x7F ? 0 : lead <= 0xDF ? 1 : 2;
    const int leadMask = followers == 0 ? 0x7F : followers == 1 ? 0x1F : 0x0F;
    auto bits = static_cast<std::uint16_t>(lead & leadMask);
    for (int i = 1; i <= followers; ++i) {
        const auto follower = static_cast<std::uint8_t>(text[i]);
        if (follower == 0)
            return false;
        bits = static_cast<std::uint16_t>((bits << 6) + (follower & 0x3F));
    }
    unit = bits;
    text += 1 + followers;
    return true;
}

}  // namespace

int kvDecodeUTF8ToUCS2(const char* src, wchar_t* dst, int maxUnits)
{
    if (src == nullptr)
        return 0;
    const int limit = GetLimit(maxUnits);
    int count = 0;
    std::uint16_t unit = 0;
    while (*src != '\0' && count < limit && DecodeUnit(src, unit)) {
        if (dst != nullptr)
            dst[count] = static_cast<wchar_t>(unit);
        ++count;
    }
    return count;
}

int kvEncodeUCS2ToUTF8(const wchar_t* src, char* dst, int maxBytes)
{
    if (src == nullptr)
        return 0;
    const int limit = GetLimit(maxBytes);
    int count = 0;
    for (;; ++src) {
        auto unit = static_cast<std::uint16_t>(*src & 0xFFFF);
        const int size = unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
        if (unit == 0 || limit - count < size)
            return count;
        if (dst != nullptr) {
            for (int i = size - 1; i > 0; --i) {
                dst[count + i] = static_cast<char>(0x80 | (unit & 0x3F));
                unit = static_cast<std::uint16_t>(unit >> 6);
            }
            const int leadMark = size == 1 ? 0 : (0xFF << (8 - size)) & 0xFF;
            dst[count] = static_cast<char>(leadMark | unit);
        }
        count += size;
    }
}

void kvConvertASCIIToUCS2(const char* src, wchar_t* dst, int maxUnits)
{
    const int limit = GetLimit(maxUnits);
    int count = 0;
    for (; count < limit && src[count] != '\0'; ++count)
        dst[count] = static_cast<wchar_t>(static_cast<std::uint8_t>(src[count]));
    dst[count] = L'\0';
}
