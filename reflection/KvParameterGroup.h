// Parameters under one name, as a property panel shows them.

#pragma once

#include <memory>
#include <utility>

#include "core/KvArray.h"
#include "core/KvString.h"
#include "reflection/KvParameterColor.h"
#include "reflection/KvParameterColorGradient.h"
#include "reflection/KvParameterNumber.h"

/// Fields stand in the documented order.
///
/// Ownership: the group owns its parameters; pointers that it hands out are valid until their
///            parameter is removed or the group ends. It moves but does not copy.
class CKvParameterGroup
{
public:
    CKvParameterGroup() = default;
    explicit CKvParameterGroup(const TKvString<char>& name) : m_name(name) {}
    CKvParameterGroup(CKvParameterGroup&&) noexcept = default;
    CKvParameterGroup& operator=(CKvParameterGroup&&) noexcept = default;
    virtual ~CKvParameterGroup() = default;

    const TKvString<char>& GetName() const { return m_name; }
    void SetName(const TKvString<char>& name) { m_name = name; }

    int GetParameterCount() const { return m_parameters.GetCount(); }

    /// Errors: an index out of range asserts; null in a release build.
    CKvParameter* GetParameter(int index) const;

    CKvParameterInt* AddParameterInt(const TKvString<char>& name, int value, int min, int max,
                                     int step);
    CKvParameterFloat* AddParameterFloat(const TKvString<char>& name, float value, float min,
                                         float max, float step);
    CKvParameterColor* AddParameterColor(const TKvString<char>& name, float red, float green,
                                         float blue, float alpha);
    CKvParameterColorGradient* AddParameterColorGradient(const TKvString<char>& name,
                                                         const CKvRGBA<float>& from,
                                                         const CKvRGBA<float>& to, int count);

    /// Appends a parameter of any kind, a program's own included, and gives it back.
    template <class TParameter>
    TParameter* AddParameter(std::unique_ptr<TParameter> parameter)
    {
        TParameter* const added = parameter.get();
        m_parameters.Add(std::move(parameter));
        return added;
    }

    /// Takes a parameter out; the later ones move down by one place. Does nothing when the group
    /// does not hold it.
    ///
    /// Ownership: with \a destroy it is deleted, otherwise it is the caller's from here on.
    void RemoveParameter(CKvParameter* parameter, bool destroy);

    /// Takes all out, as RemoveParameter() does. The list keeps its storage.
    void RemoveAllParameters(bool destroy);

private:
    void RemoveAt(int index, bool destroy);

    TKvString<char> m_name;
    CKvArray<std::unique_ptr<CKvParameter>> m_parameters;
};
