#include "reflection/KvReflectionInformationSnapShot.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace {

using Information = CKvReflectionInformation;

static_assert(sizeof(void*) <= CKvBasicVariant::max_value_byte_size);

CKvBasicVariant HoldResource(CKvResource* resource)
{
    CKvBasicVariant value;
    std::memcpy(value.GetMutableDataPtr(), &resource, sizeof(void*));
    return value;
}

CKvResource* HeldResource(const CKvBasicVariant& value)
{
    CKvResource* resource = nullptr;
    std::memcpy(&resource, value.GetConstDataPtr(), sizeof(void*));
    return resource;
}

}  // namespace

CKvReflectionInformationSnapShot::CKvReflectionInformationSnapShot(
    const CKvReflectionInformation& information, void* object)
    : m_information(information), m_object(object)
{
    if (m_object == nullptr)
        return;
    m_value = GetCurrentValue();
    m_text = GetCurrentText();
}

void CKvReflectionInformationSnapShot::BackUp()
{
    if (m_object == nullptr)
        return;
    const CKvBasicVariant value = GetCurrentValue();
    TKvString<char> text = GetCurrentText();
    if (m_information.GetType() == Information::TYPE_STRING)
        m_information.SetValueString(m_object, m_text);
    else if (m_information.GetType() == Information::TYPE_RESOURCE)
        m_information.SetValueResource(m_object, HeldResource(m_value));
    else
        m_information.SetValueVariant(m_object, m_value);
    m_value = value;
    m_text = std::move(text);
}

void CKvReflectionInformationSnapShot::SaveReflectionInformation(
    const CKvArray<CKvArray<CKvReflectionInformation>>& informations,
    const CKvArray<void*>& objects, CKvArray<CKvReflectionInformationSnapShot*>& snapshots)
{
    const int count = std::min(informations.GetCount(), objects.GetCount());
    for (int i = 0; i < count; ++i) {
        for (const CKvReflectionInformation& information : informations[i]) {
            auto snapshot =
                std::make_unique<CKvReflectionInformationSnapShot>(information, objects[i]);
            snapshots.Add(snapshot.get());
            static_cast<void>(snapshot.release());  // the caller's from here on
        }
    }
}

CKvBasicVariant CKvReflectionInformationSnapShot::GetCurrentValue() const
{
    if (m_information.GetType() == Information::TYPE_RESOURCE)
        return HoldResource(m_information.GetValueResource(m_object));
    return m_information.GetValueVariant(m_object);
}

TKvString<char> CKvReflectionInformationSnapShot::GetCurrentText() const
{
    if (m_information.GetType() == Information::TYPE_STRING)
        return m_information.GetValueString(m_object);
    return TKvString<char>();
}
