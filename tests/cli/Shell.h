#pragma once

#include "cli/CliDialogs.h"
#include "cli/Job.h"
#include "support/ClassicScript.h"
#include "support/FakeDesktop.h"
#include "support/HandsetMemory.h"
#include "support/HandsetPort.h"
#include "support/RecordedProgress.h"

#include <QDir>
#include <QJsonDocument>

namespace kalmo::tests {

using namespace Qt::StringLiterals;
using namespace kalmo::cli;

class OneDevice : public link::DeviceList
{
public:
    QList<link::SerialDevice> devices() override
    {
        return {{u"/dev/ttyX"_s, {}, u"Siemens USB Data Cable"_s, u"Maker"_s, u"USB\\VID_067B&PID_2303"_s}};
    }
};

/// A command line with everything around it made of fakes, but for the port.
struct CommandRunner
{
    CommandRunner() { QDir().mkpath(test.storage + u"/Backup"_s); }

    ExitStatus run(link::SPortAx& port, const QStringList& words)
    {
        const Invocation invocation = parseWords(words);
        if (invocation.kind != Invocation::Kind::Run)
            qFatal("%s", qPrintable(invocation.error));
        Output out(
            [this](Stream stream, const QByteArray& bytes) {
                (stream == Stream::Out ? printed : told) += QString::fromUtf8(bytes);
                return 0;
            },
            {.json = invocation.has(u"--json"_s), .quiet = invocation.has(u"--quiet"_s)});
        Questions questions(out, invocation.has(u"--yes"_s), reader());
        CliDialogs dialogs(out, questions);
        app::Context context{test.sy,       test.clock,    dialogs, test.ending,
                             test.platform, test.settings, test.log};
        link::PortTable ports(test.settings, devices);
        link::Line line(context, port);
        phonedata::PhoneMemory memory;
        CliProgress progress(out);
        Job job{invocation, context, line, ports, memory, out, questions, progress, stop, desktop};
        return invocation.command->run(job);
    }

    /// The JSON value that was printed, in one line.
    QString value() const
    {
        return QString::fromUtf8(QJsonDocument::fromJson(printed.toUtf8()).toJson(QJsonDocument::Compact));
    }
    QString file(const QString& name, const QByteArray& bytes) const { return test.makeFile(name, bytes); }
    QStringList backups() const { return QDir(test.storage + u"/Backup"_s).entryList(QDir::Files); }

    TestContext test;
    OneDevice devices;
    FakeDesktop desktop;
    SwitchedCancel stop;
    std::optional<QStringList> answers; // of the user, if there is one
    QString printed;
    QString told;

private:
    Questions::Reader reader()
    {
        if (!answers)
            return {};
        return [this] { return answers->isEmpty() ? std::nullopt : std::optional(answers->takeFirst()); };
    }
};

/// The same with an emulated handset at the port: one storage folder, and as many runs as it takes.
struct Handset : CommandRunner
{
    explicit Handset(const handset::Options& options = {.model = u"SL450HX"_s}) : port(test.clock, options)
    {
        QDir::setCurrent(test.folder.path());
    }
    ~Handset() { QDir::setCurrent(u"/"_s); }

    /// One run of a command. After it the cable is plugged in again, if it was out. `line` is split at its
    /// blanks, `path` is not.
    ExitStatus operator()(const QString& line, const QStringList& path = {})
    {
        printed.clear();
        told.clear();
        ExitStatus status = ExitFailed;
        try {
            status = run(port, line.split(u' ') + path);
        } catch (const ProgramEnded&) {
        }
        told.replace(test.folder.path(), u"HOME"_s);
        printed.replace(test.folder.path(), u"HOME"_s);
        port.Close();
        test.clock.WaitSeconds(2);
        return status;
    }
    /// Everything in the phone, with the names that nameless entries get.
    QStringList memory() { return named(memoryOf(port.handset().phone())); }

    HandsetPort port;
};

/// The same with a scripted phone at the port.
struct Shell : CommandRunner
{
    using Prepare = std::function<void(Shell&)>; ///< the phone's answers of a row, and the user's

    Shell() : port(test), script(test, port) {}

    /// Words apart by blanks.
    ExitStatus run(const QString& words) { return CommandRunner::run(port, words.split(u' ')); }

    /// A handset's answers to the search.
    ClassicScript& found(const QByteArray& model)
    {
        port.expect("ATZ\r").expect("ATZ\r", "ATZ\r\r\nOK\r\n");
        script.expect("AT+CGMM\r", model);
        return script.expect("AT+CMEE=0\r").expect("AT+CGMR\r", "4.2");
    }
    /// A handset that has been found says which one it is, ahead of a change.
    void identified() { twice("AT+CGSN\r", "0815"); }
    /// A short answer counts once it came twice the same.
    Shell& twice(const QByteArray& command, const QByteArray& payload)
    {
        script.expect(command, payload).expect(command, payload);
        return *this;
    }
    ClassicScript& read(const QByteArrayList& entries)
    {
        script.expect("AT^WSSL=\"TB\"\r");
        for (const QByteArray& entry : entries)
            script.expect("AT^WSRE\r", "^WSRE: " + entry);
        return script.expect("AT^WSRE\r").expect("AT\r");
    }
    ClassicScript& erase()
    {
        return script.expect("AT^WSEL=\"TB\"\r").expect("AT\r").expect("AT^WSSL=\"TB\"\r");
    }

    ScriptedPort port;
    ClassicScript script;
};

} // namespace kalmo::tests
