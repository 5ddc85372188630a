#pragma once

#include <QString>

namespace kalmo::app {

struct StoragePathsRecord
{
    QString Exe;     ///< program folder
    QString Storage; ///< root of all that the program writes
};

/// Version numbers as the operating system reports them.
struct OsVersion
{
    int major = 0;
    int minor = 0;
    int build = 0;
    int platform = 0;
};

/// The session record: made once in main, read by everybody, written by few.
struct Sy
{
    bool debug = false; ///< true while the debug log is written
    StoragePathsRecord Paths;
    QString StorageForThisRun; ///< folder given on the command line, empty for the one that is set
    QString DefUserExpRoot;    ///< root folder that exports are offered in
    QString startDate;
    OsVersion osVersion;
    int OsClass = 0; ///< 1 to 6; 1 to 3 are systems without folders per user
    int ScreenX = 0; ///< screen size in twips
    int ScreenY = 0;
    int PixelX = 0; ///< screen size in pixels
    int PixelY = 0;
    QString PrgVersion;
    int ComNo = 0;           ///< number of the COM port in use
    int ComNoForThisRun = 0; ///< port given on the command line, 0 for the one of the settings
    int ComNoEmulated = 0;   ///< number of the emulated handset's port in this run, 0 without one
    QString ComSettings;     ///< for example "19200,N,8,1"
    int PhoneType = 0;       ///< 0 is no phone, 1 to 13 a family of handsets
    QString PhoneID;         ///< the raw answer that identified the phone
    QString PhoneSerial;     ///< serial number of the phone that was found, empty until it is asked for
    QString PhoneSVN;        ///< the phone's software version, "9999" if it can't be read
    bool blnTxLfTerminator = false; ///< commands end in CR LF instead of CR
    QString StrStCom;               ///< remarks of the start-up for the log
    QString logPath;
    bool logKeepsAll = false; ///< a new header is appended to the log and does not replace it

    /// Returns true if the port in use is the emulated handset's.
    bool usesEmulated() const { return ComNoEmulated > 0 && ComNo == ComNoEmulated; }
};

} // namespace kalmo::app
