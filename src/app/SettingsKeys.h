#pragma once

#include "app/mdlKonverter.h"
#include "app/mdlRegIni.h"

namespace kalmo::app {

/// A key of the settings file that holds a number.
struct NumberKey
{
    QStringView section;
    QStringView key;
    float fallback;
};

/// A key that holds a text; unset reads as the mark of an unset key.
struct TextKey
{
    QStringView section;
    QStringView key;
};

namespace keys {

inline constexpr NumberKey ComPortNew{u"frmEinstellungen", u"ComPortNew", 1};
inline constexpr NumberKey PrefDetectBaud{u"frmEinstellungen", u"PrefDetectBaud",
                                          19200};                  ///< negative: LF mode
inline constexpr TextKey Version{u"frmEinstellungen", u"Version"}; ///< version that last saved the settings
inline constexpr NumberKey AutoBackup{u"frmEinstellungen", u"AutoBackup", 1};
inline constexpr NumberKey SwWarning{u"frmEinstellungen", u"SwWarning", 1};
inline constexpr NumberKey ShowSuccessPopup{u"frmEinstellungen", u"chkShowSuccessPopup", 0};
inline constexpr NumberKey UseUtf8Contacts{u"frmEinstellungen", u"chkUseUTF8contacts", 0};
inline constexpr TextKey LastUnclosedObexDevice{u"Reminder", u"LastUnclosedObexDevice"};
inline constexpr TextKey LastUnclosedObexDeviceCOM{u"Reminder", u"LastUnclosedObexDeviceCOM"};
inline constexpr TextKey KeptLists{u"Reminder",
                                   u"KeptLists"}; ///< files of lists that were not written, parted by '|'
inline constexpr TextKey LastSaveFolder{u"frmPB", u"mnuFFSsave_Sel0"}; ///< of files from the phone
inline constexpr NumberKey LastShownSponsor{u"Sponsor", u"LastShown", -1};

} // namespace keys

inline float get(const Settings& settings, const NumberKey& key)
{
    return settings.GetIniNumber(key.section.toString(), key.key.toString(), key.fallback);
}

inline int getInt(const Settings& settings, const NumberKey& key)
{
    return toInt32(get(settings, key));
}

inline QString get(const Settings& settings, const TextKey& key)
{
    return settings.GetIniText(key.section.toString(), key.key.toString());
}

inline bool isOn(const Settings& settings, const NumberKey& key)
{
    return get(settings, key) != 0;
}

inline void put(Settings& settings, const NumberKey& key, double value)
{
    settings.PutIniNumber(key.section.toString(), key.key.toString(), value);
}

inline void put(Settings& settings, const TextKey& key, const QString& value)
{
    settings.PutIniText(key.section.toString(), key.key.toString(), value);
}

} // namespace kalmo::app
