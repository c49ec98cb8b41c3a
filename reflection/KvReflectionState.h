// The small fields of one object at one moment, to look at later: each value has 16 bytes.

#pragma once

#include <array>

#include "core/KvArray.h"
#include "reflection/KvReflectionInformation.h"

/// One field's value. Fields stand in the documented order.
struct CKvReflectionValue
{
    CKvReflectionInformation::EType type = CKvReflectionInformation::TYPE_INT;

    /// All 0 for kinds that no variant holds (CKvReflectionInformation::GetVariantType) and for
    /// those of more than 16 bytes.
    std::array<unsigned char, 16> bytes = {};
};

/// A value that copies and refers to no object. Fields stand in the documented order.
class CKvReflectionState
{
public:
    /// Takes the current values of all fields.
    CKvReflectionState(void* object, const CKvArray<CKvReflectionInformation>& informations);
    CKvReflectionState(const CKvReflectionState&) = default;
    CKvReflectionState(CKvReflectionState&&) noexcept = default;
    CKvReflectionState& operator=(const CKvReflectionState&) = default;
    CKvReflectionState& operator=(CKvReflectionState&&) noexcept = default;
    virtual ~CKvReflectionState() = default;

    const CKvArray<CKvReflectionInformation>& GetInformations() const { return m_informations; }

    /// One value per information, in the same order.
    const CKvArray<CKvReflectionValue>& GetValues() const { return m_values; }

private:
    CKvArray<CKvReflectionInformation> m_informations;
    CKvArray<CKvReflectionValue> m_values;
};
