#pragma once

#include "support/TestContext.h"

#include <QCoreApplication>
#include <QDir>

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
        const QDir built(QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/Plugins"));
        for (const QString& name : {QStringLiteral("m9b"), QStringLiteral("g722demo")})
            QFile::link(built.absoluteFilePath(name), m_path + name);
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

/// What is left of the work of conversions.
inline QStringList workLeftIn(const TestContext& test)
{
    return QDir(test.storage + QStringLiteral("/config/temp"))
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

} // namespace kalmo::tests
