#pragma once

#include "support/TestContext.h"

#include <QCoreApplication>
#include <QDir>

namespace kalmo::tests {

/// A program folder with the converters in it, and a storage folder, for conversions in real time.
struct Workshop : TestContext
{
    Workshop()
    {
        QDir().mkpath(plugin({}));
        const QDir built(QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/Plugins"));
        for (const QString& name : {QStringLiteral("m9b"), QStringLiteral("g722demo")})
            QFile::link(built.absoluteFilePath(name), plugin(name));
    }

    QString plugin(const QString& name) const { return sy.Paths.Exe + QStringLiteral("/Plugins/") + name; }

    /// Puts a script in the place of a converter; an empty one takes the converter away.
    void replacePlugin(const QString& name, const QByteArray& script) const
    {
        QFile file(plugin(name));
        file.remove();
        if (script.isEmpty() || !file.open(QIODevice::WriteOnly))
            return;
        file.write("#!/bin/sh\n" + script + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// What is left of work folders.
    QStringList leftovers() const
    {
        return QDir(storage + QStringLiteral("/config/temp"))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
};

} // namespace kalmo::tests
