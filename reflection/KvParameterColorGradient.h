// A parameter that is a row of colours.

#pragma once

#include "core/KvArray.h"
#include "math/KvColor.h"
#include "reflection/KvParameter.h"

class CKvParameterColorGradient : public CKvParameter
{
public:
    /// Makes \a count colours, from \a from on in equal steps that would reach \a to one colour
    /// behind the last; each channel goes its own way. A count below 1 makes none.
    CKvParameterColorGradient(const TKvString<char>& name, const CKvRGBA<float>& from,
                              const CKvRGBA<float>& to, int count);

    /// Takes over the array's growth step too.
    CKvParameterColorGradient(const TKvString<char>& name, const CKvArray<CKvRGBA<float>>& value)
        : CKvParameter(name), m_value(value)
    {
    }

    const CKvArray<CKvRGBA<float>>& GetValue() const { return m_value; }
    void SetValue(const CKvArray<CKvRGBA<float>>& value) { m_value = value; }

    EType GetType() const override { return TYPE_COLOR_GRADIENT; }

    /// "GRADIENT".
    void GetValueAsText(char* buffer, int size) const override;

private:
    CKvArray<CKvRGBA<float>> m_value;
};
