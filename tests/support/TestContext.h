#pragma once

#include "app/Context.h"
#include "support/FakePlatform.h"
#include "support/ScriptedDialogs.h"
#include "support/Verdict.h"
#include "support/VirtualClock.h"

#include <QTemporaryDir>

namespace kalmo::tests {

/// EndProgram() throws it in tests: QVERIFY_THROWS_EXCEPTION(ProgramEnded, ...).
struct ProgramEnded
{
};

class ThrowingEnding : public toolkit::Ending
{
protected:
    [[noreturn]] void end(int) override { throw ProgramEnded(); }
};

/// Everything that the engine works with, made of fakes: virtual time, scripted dialogs, a platform in
/// memory, and a storage root of its own in a temporary folder, with "config" and "config/temp" in it.
struct TestContext
{
    TestContext();
    Q_DISABLE_COPY_MOVE(TestContext)

    Verdict verdict; // first, so that it outlives all that complains
    QTemporaryDir folder;
    QString storage; ///< the storage root, without a separator at its end
    app::Sy sy;
    VirtualClock clock;
    ScriptedDialogs dialogs;
    ThrowingEnding ending;
    FakePlatform platform;
    app::Settings settings;
    app::DebugLog log;
    app::Context context;

    /// Path of a file in the temporary folder.
    QString path(const QString& name) const { return folder.filePath(name); }

    /// Makes a file there and returns its path.
    QString makeFile(const QString& name, const QByteArray& bytes) const;
    static QByteArray contentOf(const QString& path);

    /// Switches the debug log on.
    void startLog();
    /// Its lines so far, as "tag: text".
    QStringList logged() const;
};

} // namespace kalmo::tests
