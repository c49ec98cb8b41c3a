// Parameters that are one number. Bounds and step are what an editor's slider needs: setting the
// value does not clamp it, and setting the bounds does not move it.

#pragma once

#include "reflection/KvParameter.h"

/// What the two kinds of numbers share. Fields stand in the documented order.
template <typename T>
class TKvParameterNumber : public CKvParameter
{
public:
    TKvParameterNumber(const TKvString<char>& name, T value, T min, T max, T step)
        : CKvParameter(name), m_value(value), m_min(min), m_max(max), m_step(step)
    {
    }

    T GetValue() const { return m_value; }
    void SetValue(T value) { m_value = value; }

    T GetValueMin() const { return m_min; }
    void SetValueMin(T min) { m_min = min; }

    T GetValueMax() const { return m_max; }
    void SetValueMax(T max) { m_max = max; }

    T GetValueStep() const { return m_step; }
    void SetValueStep(T step) { m_step = step; }

private:
    T m_value;
    T m_min;
    T m_max;
    T m_step;
};

class CKvParameterInt : public TKvParameterNumber<int>
{
public:
    using TKvParameterNumber::TKvParameterNumber;

    EType GetType() const override { return TYPE_INT; }

    /// "%d".
    void GetValueAsText(char* buffer, int size) const override;
};

class CKvParameterFloat : public TKvParameterNumber<float>
{
public:
    using TKvParameterNumber::TKvParameterNumber;

    EType GetType() const override { return TYPE_FLOAT; }

    /// "%f", as kvFloatToString() writes it.
    void GetValueAsText(char* buffer, int size) const override;
};
