#pragma once

#include "support/TestContext.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

namespace kalmo::tests {

/// The folder "Plugins" of a test's program folder, with the converters in it. What they convert takes real
/// time, of which a virtual clock lets pass enough.
class ConverterFolder
{
public:
    explicit ConverterFolder(const TestContext& test)
        : m_path(test.platform.exePath + QStringLiteral("/Plugins/"))
    {
        QDir().mkpath(m_path);
        for (const QString& name : {QStringLiteral("m9b"), QStringLiteral("g722demo")})
            QFile::link(built(name), m_path + name);
    }

    /// Path of a converter of this build.
    static QString built(const QString& name)
    {
        return QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/Plugins"))
            .absoluteFilePath(name);
    }

    /// Puts a shell script in the place of a converter; an empty one takes the converter away.
    void replace(const QString& name, const QByteArray& script) const
    {
        QFile file(m_path + name);
        file.remove();
        if (script.isEmpty() || !file.open(QIODevice::WriteOnly))
            return;
        file.write("#!/bin/sh\n" + script + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

private:
    QString m_path;
};

/// Command of a shell script that runs a converter with room for 4096 bytes a file, as if its disk were full.
inline QByteArray withFullDisk(const QByteArray& converter)
{
    return "trap '' XFSZ; ulimit -f 8; exec " + converter + " \"$@\"";
}

/// Makes a work folder as a killed program leaves it. Returns false if that fails.
inline bool leaveWorkOfKilled(const TestContext& test)
{
    QProcess dead;
    dead.start(QStringLiteral("true"), QStringList());
    if (!dead.waitForStarted())
        return false;
    const qint64 id = dead.processId();
    const QString folder = test.storage + QStringLiteral("/config/temp/work-killed");
    QFile lock(folder + QStringLiteral("/owner.lock"));
    return dead.waitForFinished() && QDir().mkpath(folder + QStringLiteral("/deep")) &&
           lock.open(QIODevice::WriteOnly) &&
           lock.write(QByteArray::number(id) + "\ntrue\n" + QSysInfo::machineHostName().toUtf8() + '\n') > 0;
}

/// The files that conversions have left in the folder of their work.
inline QStringList workLeftIn(const TestContext& test)
{
    return QDir(test.storage + QStringLiteral("/config/temp"))
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

} // namespace kalmo::tests
