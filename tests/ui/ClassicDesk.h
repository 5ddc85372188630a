#pragma once

#include "app/SettingsKeys.h"
#include "operations/Records.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/RawReplies.h"
#include "support/ClassicPhone.h"
#include "ui/TestProgram.h"
#include "ui/window/ClassicWriting.h"

namespace kalmo::tests {

using namespace Qt::StringLiterals;
using namespace phonedata;

inline const std::vector<ClassicEntry> held = {{.name = u"Held"_s, .number = u"1"_s},
                                               {.name = u"Too"_s, .number = u"2"_s}};
inline const std::vector<ClassicEntry> wanted = {{.name = u"New"_s, .number = u"3"_s},
                                                 {.name = u"Next"_s, .number = u"4"_s}};
inline const QByteArray firstWritten = "AT^WSWE=3,New,1,3,0,\r\n";
inline const QByteArray secondWritten = "AT^WSWE=4,Next,1,4,0,\r\n";
inline const QString listBackup = u"Backup von 2026-11-21  12-00-00.tel"_s;
inline const QString accessError = u"Fehler beim Zugriff auf das Telefon"_s;

inline QString phoneCopy(const QString& time)
{
    return u"Inhalt des Telefons vom 2026-11-21  "_s + time + u".tel"_s;
}

/// A handset of family 2 whose list on screen has been changed.
struct Desk : ClassicPhone
{
    Desk() : ClassicPhone(2)
    {
        QDir().mkpath(test.storage + u"/Backup"_s);
        fill(wanted);
        memory.TbDirty = true;
    }
    Desk& knows(Certainty how = Certainty::Known, qint64 secondsAgo = 0)
    {
        knows(held, {"^WSRE: 4,Held,1,1,0,", "^WSRE: 3,Too,1,2,0,"}, how, secondsAgo);
        return *this;
    }
    void knows(const std::vector<ClassicEntry>& entries, const QByteArrayList& replies,
               Certainty how = Certainty::Known, qint64 secondsAgo = 0)
    {
        memory.phonebook.becomes(entries, how, replies);
        memory.phonebook.since = line.context().clock.Now().addSecs(-secondsAgo);
        origin = memory.phonebook;
    }
    void shows(const std::vector<ClassicEntry>& entries)
    {
        app::put(test.settings, app::keys::AutoBackup, 0);
        list->clear();
        fill(entries);
    }

    Desk& probe()
    {
        script.expect("AT+CGMM\r", "WOODY");
        return *this;
    }
    Desk& read()
    {
        script.expect("AT^WSSL=\"TB\"\r").expect("AT^WSRE\r", "^WSRE: 4,Held,1,1,0,");
        script.expect("AT^WSRE\r", "^WSRE: 3,Too,1,2,0,").expect("AT^WSRE\r").expect("AT\r");
        return *this;
    }
    Desk& erase()
    {
        script.expectAll({"AT^WSEL=\"TB\"\r", "AT\r", "AT^WSSL=\"TB\"\r"});
        return *this;
    }
    Desk& write()
    {
        erase();
        script.expectAll({firstWritten, secondWritten, "AT\r"});
        return readBack({"3,New,1,3,0,", "4,Next,1,4,0,"});
    }
    Desk& readBack(const QByteArrayList& entries)
    {
        script.expect("AT^WSSL=\"TB\"\r");
        for (const QByteArray& entry : entries)
            script.expect("AT^WSRE\r", "^WSRE: " + entry);
        script.expect("AT^WSRE\r").expect("AT\r");
        return *this;
    }
    Desk& ask(const QString& text, Answer answer)
    {
        auto asked = question(text + u"\n\nTrotzdem schreiben?"_s);
        asked.icon = Icon::Exclamation;
        test.dialogs.expect(asked, answer);
        return *this;
    }
    Desk& tell(const QString& text)
    {
        test.dialogs.expect(Icon::Information, text);
        return *this;
    }
    Desk& tellNoAnswer(const QString& command)
    {
        test.dialogs.expect(Icon::Exclamation,
                            u"Es ist ein Übertragungsfehler aufgetreten. ... Fehlercode: "_s + command);
        return *this;
    }
    /// The box of a write that failed when both halves had been saved.
    Desk& tellFailure(const QString& state)
    {
        return tell(
            accessError + u"\n\n"_s + state +
            u"\n\nDie Liste, die geschrieben werden sollte, ist gesichert in:\n"_s + backup(listBackup) +
            u"\n\nDer bisherige Inhalt des Telefons ist gesichert in:\n"_s +
            backup(phoneCopy(u"12-00-00"_s)) +
            u"\n\nDie Liste im Fenster ist unverändert. Stellen Sie die Verbindung wieder her und führen "
            u"Sie \"Schreiben\" noch einmal aus, oder öffnen Sie vorher eine dieser Sicherungen."_s);
    }
    operations::ListJob listJob()
    {
        return {line, memory, Store::Phonebook, &window, progress.all(), list.get()};
    }
    /// State and raw replies of the newest record.
    QString record() const
    {
        const operations::Records records(test.context, {u"Emulated"_s, u"1"_s});
        const auto all = records.all();
        const auto newest = all.empty() ? std::nullopt : records.read(all.front().id);
        if (!newest || newest->before.empty())
            return {};
        const auto replies = repliesFrom(newest->before.front().bytes);
        return operations::wordOf(newest->state) + u": "_s +
               QString::fromLatin1(replies.value_or(QByteArrayList()).join('|'));
    }
    StoreContent origin; ///< content that the list was made from

    QString backup(const QString& name) const { return test.storage + u"/Backup/"_s + name; }
    void blockBackups()
    {
        QDir(test.storage).rmdir(u"Backup"_s);
        QFile file(test.storage + u"/Backup"_s); // a file in its place: no folder that could take one
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    /// "name: names of the entries in it" for each backup.
    QStringList backups() const
    {
        QStringList lines;
        for (const QString& name : QDir(test.storage + u"/Backup"_s).entryList(QDir::Files)) {
            QStringList names;
            for (const ClassicEntry& entry : telEntries(TestContext::contentOf(backup(name)), 2))
                names.append(entry.name);
            lines.append(name + u": "_s + names.join(u' '));
        }
        return lines;
    }
};

using Prepare = std::function<void(Desk&)>;

} // namespace kalmo::tests
