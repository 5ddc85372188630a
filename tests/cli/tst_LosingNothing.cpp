// After any fault at any time while a list is written, the handset still holds what it held, or a backup
// does, and writing the backup brings it back.

#include "phonedata/BackupFiles.h"
#include "Shell.h"
#include "support/TestProgram.h"

namespace {

using SetFault = std::function<void(Faults&, int)>;

/// A file of a phonebook with a reminder by `sound`, and of one melody of the handset's own.
QString seedFile(const QByteArray& sound)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(u"seed.json"_s));
    if (file.open(QIODevice::WriteOnly))
        file.write(R"({"settings": {"melodies": [{"name": "Walzer", "kind": "MID", "size": 99, "id": 12}]},
            "phonebook": [{"name": "Mutter \u0022M\u0022", "number": "1", "anniversary": "24.12. 08:30",
                           "reminder": ")" +
                   sound + R"("}, {"name": "Jörg", "number": "2"},
                          {"name": "Anja, B.", "number": "3"}]})");
    return file.fileName();
}

/// A handset whose phonebook is replaced.
struct Attempt : Handset
{
    explicit Attempt(const QString& model)
        : Handset({.model = model, .seed = seedFile(model == u"GALICIA"_s ? "12" : "S")}), before(content())
    {
    }
    ExitStatus write(const QString& path) { return (*this)(u"--yes phonebook write"_s, {path}); }
    QByteArray content()
    {
        return QJsonDocument(port.handset().phone().phonebook.json()).toJson(QJsonDocument::Compact);
    }

    QByteArray before;
};

} // namespace

class tst_LosingNothing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyFaultAtAnyTime();
    void cardsThatDoNotComeThrough();
};

void tst_LosingNothing::anyFaultAtAnyTime()
{
    const QString simple = u"WOODSTOCK"_s;
    const QString delicate = u"GALICIA"_s; // prepares its store, and has melodies
    const auto late = [](double seconds) {
        return [seconds](Faults& faults, int at) { faults.lateAt = at, faults.lateBy = seconds; };
    };
    const Rows<QString, SetFault> rows{
        {"the line drops", simple, [](Faults& faults, int at) { faults.hangUpAt = at; }},
        {"a lost byte", simple, [](Faults& faults, int at) { faults.loseByteAt = at; }},
        {"the line drops", delicate, [](Faults& faults, int at) { faults.hangUpAt = at; }},
        {"a lost byte", delicate, [](Faults& faults, int at) { faults.loseByteAt = at; }},
        {"silence", delicate, [](Faults& faults, int at) { faults.silentAfter = at; }},
        {"noise", delicate, [](Faults& faults, int at) { faults.noiseAt = at; }},
        {"an answer beyond the first time limit", delicate, late(1.5)},
        {"an answer beyond the second", delicate, late(9)},
        {"an answer beyond all", delicate, late(20)},
        {"an entry that can't be read", delicate, [](Faults& faults, int at) { faults.readErrorAt = at; }},
        {"an entry that is refused", delicate, [](Faults& faults, int at) { faults.writeErrorAt = at; }},
        {"an entry that is refused once", delicate,
         [](Faults& faults, int at) { faults.writeErrorOnceAt = at; }},
    };
    const QByteArray lines = "\"J\xF6rg\",\"2\"\r\n\"Neu\",\"4\"\r\n\"A\",\"1\"\r\n\"B\",\"2\"\r\n";
    rows.each([&](const auto& model, const auto& setFault) {
        Attempt undisturbed(model);
        QCOMPARE(undisturbed.write(undisturbed.file(u"new.tel"_s, lines)), ExitDone);
        const QByteArray wanted = undisturbed.content();
        const int commands = undisturbed.port.handset().phone().faults.commands;
        QVERIFY(commands > 15);

        for (int at = 1; at <= commands; ++at) {
            Attempt attempt(model);
            Faults faults;
            setFault(faults, at);
            attempt.port.handset().setFaults(faults);
            const ExitStatus status = attempt.write(attempt.file(u"new.tel"_s, lines));
            const QByteArray why = QByteArray::number(at) + ": " + attempt.told.toUtf8() + attempt.content();
            // Only what was found right is called done.
            QVERIFY2(status != ExitDone || attempt.content() == wanted, why.constData());
            if (attempt.content() == attempt.before)
                continue;
            attempt.port.handset().setFaults({});
            QVERIFY2(attempt.backups().size() == 1, why.constData());
            const QString backup = attempt.test.storage + u"/Backup/"_s + attempt.backups().first();
            QVERIFY2(attempt.write(backup) == ExitDone, why.constData());
            QVERIFY2(attempt.content() == attempt.before, why.constData());
        }
    });
}

/// One name in quoted-printable has all cards decoded, so the first name is shown as "A" only.
void tst_LosingNothing::cardsThatDoNotComeThrough()
{
    const QTemporaryDir folder;
    QFile seed(folder.filePath(u"seed.json"_s));
    QVERIFY(seed.open(QIODevice::WriteOnly));
    seed.write(R"({"contacts": [{"lastName": "A=B; C", "home": "1"}, {"lastName": "Ayşe", "home": "2"}]})");
    seed.close();
    Handset handset({.model = u"S68H"_s, .seed = seed.fileName(), .cards = handset::CardText::Raw});
    QCOMPARE(handset(u"phonebook read -o x.json"_s), ExitDone);
    const QString lacks = u"x.json lacks a part of these contacts; a .vcf file would hold it: A\n"_s;
    QVERIFY2(handset.told.endsWith(lacks), qPrintable(handset.told));
    QCOMPARE(handset(u"phonebook read -o x.vcf"_s), ExitDone);
    QVERIFY2(!handset.told.contains(u"lacks"_s), qPrintable(handset.told));
    handset.file(u"half.json"_s, R"([{"lastName": "A", "firstName": "D", "home": "1"}])");
    QCOMPARE(handset(u"--yes phonebook set 0001 half.json"_s), ExitDone);
    const QString warning = u"D A: in the phone it says \"A=B; C\"; \"A\" would be written"_s;
    QVERIFY2(handset.told.contains(warning), qPrintable(handset.told));
}

KALMO_TEST(tst_LosingNothing)
#include "tst_LosingNothing.moc"
