#include "reflection/KvParameterColor.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>

namespace {

int ToByteScale(float channel)
{
    const double scaled = channel * 255.0;
    return std::isnan(scaled) ? 0 : static_cast<int>(std::clamp<double>(scaled, INT_MIN, INT_MAX));
}

}  // namespace

void CKvParameterColor::GetValueAsText(char* buffer, int size) const
{
    char text[64];
    std::snprintf(text, sizeof text, "%d,%d,%d,%d", ToByteScale(m_value.r), ToByteScale(m_value.g),
                  ToByteScale(m_value.b), ToByteScale(m_value.a));
    WriteText(text, buffer, size);
}
