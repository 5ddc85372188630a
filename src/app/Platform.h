#pragma once

#include "app/Sy.h"

#include <QString>
#include <QUrl>

namespace kalmo::app {

/// Special folders by their shell numbers.
enum class Folder { Documents = 5, Desktop = 16, LocalAppData = 28 };

/// The operating system, apart from files. The interface is small, so that tests neither touch the user's
/// settings nor start programs.
class Platform
{
public:
    virtual ~Platform() = default;

    /// Folder of the program itself.
    virtual QString ExePath() const = 0;
    virtual OsVersion osVersion() const = 0;
    /// Returns true if the version numbers are those that the classes 1 to 5 are made from.
    virtual bool hasClassicVersionNumbers() const = 0;

    /// Path of a special folder, empty on failure. `create` makes a folder that is not there yet.
    virtual QString SpecialFolder(Folder id, bool create) const = 0;

    /// The per-user value `StoragePath`, empty if there is none.
    virtual QString storagePathValue() const = 0;
    /// 0 on success, an error code otherwise.
    virtual int setStoragePathValue(const QString& value) = 0;

    /// Returns true if this process is the only instance of the window, and claims that for its lifetime. A
    /// second call changes nothing.
    virtual bool claimSingleInstance() = 0;
};

/// Opens files and pages with the user's own programs.
class Desktop
{
public:
    virtual ~Desktop() = default;
    virtual bool hasAssociation(const QString& path) const = 0; ///< true if a program is set for such a file
    virtual bool open(const QString& path) = 0;                 ///< with the program that is set for it
    virtual bool openWith(const QString& program, const QString& path) = 0;
    virtual bool openUrl(const QUrl& url) = 0; ///< in the user's browser
};

} // namespace kalmo::app
