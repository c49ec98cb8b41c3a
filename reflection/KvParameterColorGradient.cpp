#include "reflection/KvParameterColorGradient.h"

CKvParameterColorGradient::CKvParameterColorGradient(const TKvString<char>& name,
                                                     const CKvRGBA<float>& from,
                                                     const CKvRGBA<float>& to, int count)
    : CKvParameter(name)
{
    const auto steps = static_cast<float>(count);
    const CKvRGBA<float> step((to.r - from.r) / steps, (to.g - from.g) / steps,
                              (to.b - from.b) / steps, (to.a - from.a) / steps);
    for (int i = 0; i < count; ++i) {
        const auto place = static_cast<float>(i);
        m_value.Add(CKvRGBA<float>(from.r + place * step.r, from.g + place * step.g,
                                   from.b + place * step.b, from.a + place * step.a));
    }
}

void CKvParameterColorGradient::GetValueAsText(char* buffer, int size) const
{
    WriteText("GRADIENT", buffer, size);
}
