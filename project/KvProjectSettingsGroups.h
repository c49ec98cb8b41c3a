// The settings groups that every project has: general ones and, below them, those of the kinds of
// systems and of each system. Those without fields are places for settings to come.
//
// Fields are reached through reflection, by their keys: general's are "generalName", "English", ...

#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>

#include "project/KvProjectSettings.h"

/// A literal as a template argument.
template <std::size_t kSize>
struct TKvGroupName
{
    constexpr TKvGroupName(const char (&literal)[kSize]) { std::copy_n(literal, kSize, text); }

    char text[kSize] = {};
};

/// What the groups share: type record, name, and children made in order.
template <TKvGroupName kClassName, TKvGroupName kIdentifier, class... TChildren>
class TKvProjectSettingsGroup : public CKvProjectSettings
{
public:
    static inline const CKvRTTI TYPE{kClassName.text, &CKvProjectSettings::TYPE};

    TKvProjectSettingsGroup() : CKvProjectSettings(CKvIdentifier(kIdentifier.text))
    {
        (AddChild(std::make_unique<TChildren>()), ...);
    }

    const CKvRTTI& GetRtti() const override { return TYPE; }
};

class CKvProjectSettingsWindows
    : public TKvProjectSettingsGroup<"CKvProjectSettingsWindows", "Windows">
{
};

class CKvProjectSettingsLinux : public TKvProjectSettingsGroup<"CKvProjectSettingsLinux", "Linux">
{
};

class CKvProjectSettingsMac : public TKvProjectSettingsGroup<"CKvProjectSettingsMac", "Mac">
{
};

class CKvProjectSettingsPS4 : public TKvProjectSettingsGroup<"CKvProjectSettingsPS4", "PS4">
{
};

class CKvProjectSettingsPS3 : public TKvProjectSettingsGroup<"CKvProjectSettingsPS3", "PS3">
{
};

class CKvProjectSettingsXOne : public TKvProjectSettingsGroup<"CKvProjectSettingsXOne", "XboxOne">
{
};

class CKvProjectSettingsX360 : public TKvProjectSettingsGroup<"CKvProjectSettingsX360", "Xbox360">
{
};

class CKvProjectSettingsIos : public TKvProjectSettingsGroup<"CKvProjectSettingsIos", "iOS">
{
};

/// Fields stand in the documented order, here and below.
class CKvProjectSettingsAndroid
    : public TKvProjectSettingsGroup<"CKvProjectSettingsAndroid", "Android">
{
public:
    const CKvArray<CKvReflectionInformation>& GetReflectionInformationArray() const override;

private:
    int m_androidSdkId = 0;
    TKvString<char> m_androidKeyStore;
    TKvString<char> m_androidKeyStorePwd;
    TKvString<char> m_androidKeyAlias;
    TKvString<char> m_androidKeyAliasPwd;
};

class CKvProjectSettingsDesktop
    : public TKvProjectSettingsGroup<"CKvProjectSettingsDesktop", "Desktop",
                                     CKvProjectSettingsWindows, CKvProjectSettingsLinux,
                                     CKvProjectSettingsMac>
{
public:
    const CKvArray<CKvReflectionInformation>& GetReflectionInformationArray() const override;

private:
    int m_desktopWidth = 0;
    int m_desktopHeight = 0;
};

class CKvProjectSettingsConsole
    : public TKvProjectSettingsGroup<"CKvProjectSettingsConsole", "Console", CKvProjectSettingsPS4,
                                     CKvProjectSettingsPS3, CKvProjectSettingsXOne,
                                     CKvProjectSettingsX360>
{
public:
    const CKvArray<CKvReflectionInformation>& GetReflectionInformationArray() const override;

private:
    bool m_console1080p = false;
    bool m_console720p = false;
};

class CKvProjectSettingsMobile
    : public TKvProjectSettingsGroup<"CKvProjectSettingsMobile", "Mobile",
                                     CKvProjectSettingsAndroid, CKvProjectSettingsIos>
{
public:
    const CKvArray<CKvReflectionInformation>& GetReflectionInformationArray() const override;

private:
    bool m_mobileLandscape = false;
    bool m_mobilePortrait = false;
};

/// The root of a project's settings. A new project has every language off.
class CKvProjectSettingsGeneral
    : public TKvProjectSettingsGroup<"CKvProjectSettingsGeneral", "General",
                                     CKvProjectSettingsDesktop, CKvProjectSettingsConsole,
                                     CKvProjectSettingsMobile>
{
public:
    const CKvArray<CKvReflectionInformation>& GetReflectionInformationArray() const override;

private:
    TKvString<char> m_generalName;
    TKvString<char> m_generalGeneric;
    TKvString<char> m_generalTmp;
    TKvString<char> m_generalIcon;
    TKvString<char> m_generalSplashscreen;
    int m_generalMajor = 0;
    int m_generalMinor = 0;
    bool m_english = false;
    bool m_french = false;
    bool m_spanish = false;
    bool m_german = false;
    bool m_italian = false;
    bool m_generalNetworking = false;
    bool m_generalRecording = false;
    bool m_generalLocalMultiplayer = false;
};
