// A parameter that is one colour.

#pragma once

#include "math/KvColor.h"
#include "reflection/KvParameter.h"

/// Channels run from 0 to 1 by custom; nothing clamps them.
class CKvParameterColor : public CKvParameter
{
public:
    CKvParameterColor(const TKvString<char>& name, const CKvRGBA<float>& value)
        : CKvParameter(name), m_value(value)
    {
    }
    CKvParameterColor(const TKvString<char>& name, float red, float green, float blue, float alpha)
        : CKvParameterColor(name, CKvRGBA<float>(red, green, blue, alpha))
    {
    }

    const CKvRGBA<float>& GetValue() const { return m_value; }
    void SetValue(const CKvRGBA<float>& value) { m_value = value; }
    void SetValue(float red, float green, float blue, float alpha)
    {
        m_value = CKvRGBA<float>(red, green, blue, alpha);
    }

    EType GetType() const override { return TYPE_COLOR; }

    /// "%d,%d,%d,%d": the channels times 255, their fractions dropped. What no int holds becomes
    /// the nearest one, a channel that is no number 0.
    void GetValueAsText(char* buffer, int size) const override;

private:
    CKvRGBA<float> m_value;
};
