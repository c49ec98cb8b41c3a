#include "project/KvProjectSettingsGroups.h"

#include <type_traits>
#include <utility>

#include "reflection/KvReflectionField.h"

namespace {

using Information = CKvReflectionInformation;

/// Collects the fields of a class behind those of its base.
class CFields
{
public:
    explicit CFields(const CKvProjectSettings* group)
        : m_group(group), m_fields(group->CKvProjectSettings::GetReflectionInformationArray())
    {
    }

    /// Texts are of the kind that snapshots leave alone.
    template <typename T>
    CFields& Add(const char* key, const T& field)
    {
        if constexpr (std::is_same_v<T, TKvString<char>>) {
            m_fields.Add(Information(CKvIdentifier(key), Information::TYPE_TEXT,
                                     KvFieldOffset(m_group, &field)));
        } else {
            m_fields.Add(KvDescribeField(key, m_group, field));
        }
        return *this;
    }

    CKvArray<Information> Take() { return std::move(m_fields); }

private:
    const CKvProjectSettings* m_group;
    CKvArray<Information> m_fields;
};

}  // namespace

const CKvArray<Information>& CKvProjectSettingsAndroid::GetReflectionInformationArray() const
{
    static const auto s_fields = CFields(this)
                                     .Add("androidSdkId", m_androidSdkId)
                                     .Add("androidKeyStore", m_androidKeyStore)
                                     .Add("androidKeyStorePwd", m_androidKeyStorePwd)
                                     .Add("androidKeyAlias", m_androidKeyAlias)
                                     .Add("androidKeyAliasPwd", m_androidKeyAliasPwd)
                                     .Take();
    return s_fields;
}

const CKvArray<Information>& CKvProjectSettingsDesktop::GetReflectionInformationArray() const
{
    static const auto s_fields = CFields(this)
                                     .Add("desktopWidth", m_desktopWidth)
                                     .Add("desktopHeight", m_desktopHeight)
                                     .Take();
    return s_fields;
}

const CKvArray<Information>& CKvProjectSettingsConsole::GetReflectionInformationArray() const
{
    static const auto s_fields =
        CFields(this).Add("console1080p", m_console1080p).Add("console720p", m_console720p).Take();
    return s_fields;
}

const CKvArray<Information>& CKvProjectSettingsMobile::GetReflectionInformationArray() const
{
    static const auto s_fields = CFields(this)
                                     .Add("mobileLandscape", m_mobileLandscape)
                                     .Add("mobilePortrait", m_mobilePortrait)
                                     .Take();
    return s_fields;
}

const CKvArray<Information>& CKvProjectSettingsGeneral::GetReflectionInformationArray() const
{
    static const auto s_fields = CFields(this)
                                     .Add("generalName", m_generalName)
                                     .Add("generalGeneric", m_generalGeneric)
                                     .Add("generalTmp", m_generalTmp)
                                     .Add("generalIcon", m_generalIcon)
                                     .Add("generalSplashscreen", m_generalSplashscreen)
                                     .Add("generalMajor", m_generalMajor)
                                     .Add("generalMinor", m_generalMinor)
                                     .Add("English", m_english)
                                     .Add("French", m_french)
                                     .Add("Spanish", m_spanish)
                                     .Add("German", m_german)
                                     .Add("Italian", m_italian)
                                     .Add("generalNetworking", m_generalNetworking)
                                     .Add("generalRecording", m_generalRecording)
                                     .Add("generalLocalMultiplayer", m_generalLocalMultiplayer)
                                     .Take();
    return s_fields;
}
