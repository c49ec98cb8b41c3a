#include "reflection/KvParameterGroup.h"

#include "core/KvEntryAt.h"

CKvParameter* CKvParameterGroup::GetParameter(int index) const
{
    return KvEntryAt(m_parameters, index);
}

CKvParameterInt* CKvParameterGroup::AddParameterInt(const TKvString<char>& name, int value, int min,
                                                    int max, int step)
{
    return AddParameter(std::make_unique<CKvParameterInt>(name, value, min, max, step));
}

CKvParameterFloat* CKvParameterGroup::AddParameterFloat(const TKvString<char>& name, float value,
                                                        float min, float max, float step)
{
    return AddParameter(std::make_unique<CKvParameterFloat>(name, value, min, max, step));
}

CKvParameterColor* CKvParameterGroup::AddParameterColor(const TKvString<char>& name, float red,
                                                        float green, float blue, float alpha)
{
    return AddParameter(std::make_unique<CKvParameterColor>(name, red, green, blue, alpha));
}

CKvParameterColorGradient* CKvParameterGroup::AddParameterColorGradient(const TKvString<char>& name,
                                                                        const CKvRGBA<float>& from,
                                                                        const CKvRGBA<float>& to,
                                                                        int count)
{
    return AddParameter(std::make_unique<CKvParameterColorGradient>(name, from, to, count));
}

void CKvParameterGroup::RemoveParameter(CKvParameter* parameter, bool destroy)
{
    for (int i = 0; i < m_parameters.GetCount(); ++i) {
        if (m_parameters[i].get() == parameter) {
            RemoveAt(i, destroy);
            return;
        }
    }
}

void CKvParameterGroup::RemoveAllParameters(bool destroy)
{
    while (!m_parameters.IsEmpty())
        RemoveAt(m_parameters.GetCount() - 1, destroy);
}

void CKvParameterGroup::RemoveAt(int index, bool destroy)
{
    std::unique_ptr<CKvParameter> removed = std::move(m_parameters[index]);
    m_parameters.RemoveAt(index);  // the list is whole again before the destructor runs
    if (!destroy)
        (void)removed.release();
}
