#include "app/mdlRegIni.h"

#include "app/Files.h"
#include "app/IniFile.h"
#include "app/mdlKonverter.h"

#include <QDir>
#include <QFile>
#include <QLockFile>

#include <optional>

namespace kalmo::app {

using namespace Qt::StringLiterals;

namespace {

// The profile functions have a buffer of 256 characters, with a terminator.
constexpr int longestValue = 255;

constexpr int lockTimeout = 2000; // milliseconds

/// Gives nothing if the file can't be read to its end.
std::optional<IniFile> load(const QString& path)
{
    QFile file(path);
    if (!file.exists())
        return IniFile();
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {};
    return IniFile::parse(bytes);
}

} // namespace

QString noValue()
{
    return u"<no value>"_s;
}

QString iniPath(const QString& root)
{
    return QDir(root).filePath(u"config/Kalmo.ini"_s);
}

QString Settings::pathOf(const QString& file) const
{
    return file.isEmpty() ? iniPath(m_sy.Paths.Storage) : file;
}

float Settings::GetIniNumber(const QString& section, const QString& key, float fallback,
                             const QString& file) const
{
    const QString text = GetIniText(section, key, file, QString::number(fallback));
    return IsNumeric(text) ? text.toFloat() : fallback;
}

void Settings::PutIniNumber(const QString& section, const QString& key, double value, const QString& file)
{
    PutIniText(section, key, QString::number(value, 'g', 15), file);
}

QString Settings::GetIniText(const QString& section, const QString& key, const QString& file,
                             const QString& fallback) const
{
    const auto value = load(pathOf(file)).value_or(IniFile()).value(section, key);
    return value.value_or(fallback.isEmpty() ? noValue() : fallback).left(longestValue);
}

void Settings::PutIniText(const QString& section, const QString& key, const QString& value,
                          const QString& file)
{
    const QString path = pathOf(file);
    // Two programs that set a key each must not lose one. Without a lock the file can't be written either.
    QLockFile lock(path + u".lock"_s);
    lock.tryLock(lockTimeout);
    std::optional<IniFile> ini = load(path);
    if (!ini)
        return;
    ini->setValue(section, key, value);
    writeWholeFile(path, ini->toBytes());
}

QStringList Settings::keys(const QString& section) const
{
    return load(pathOf({})).value_or(IniFile()).keys(section);
}

} // namespace kalmo::app
