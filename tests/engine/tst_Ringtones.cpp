// Ringtone settings: the melodies and settings of families 2 to 4, and the names of sounds.

#include "phonedata/Ringtones.h"
#include "support/ClassicPhone.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using namespace kalmo::tests;
using toolkit::Icon;

namespace {

const QByteArray melodyList = "^WFFO: 0,Walzer,x,MID,1200,33\r\n"
                              "something else\r\n"
                              "^WFFO: 1,J\xF6"
                              "del,x,MMF,0,34";

RingtoneJob jobFor(ClassicPhone& phone)
{
    return {phone.line, phone.memory, &phone.window, &phone.progress.panel};
}

void expectTransferError(ClassicPhone& phone, const QString& command)
{
    phone.test.dialogs.expect(
        {.text = u"Es ist ein Übertragungsfehler aufgetreten. ... Fehlercode: "_s + command,
         .icon = Icon::Exclamation});
}

} // namespace

class tst_Ringtones : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void soundCodes_data();
    void soundCodes();
    void soundNames();
    void listCommands_data();
    void listCommands();
    void readsMelodies();
    void failedListKeepsWhatWasRead_data();
    void failedListKeepsWhatWasRead();
    void readsSettings();
    void failedSettingKeepsTheOthers();
    void setsATone_data();
    void setsATone();
    void refusedToneIsTold();
};

void tst_Ringtones::soundCodes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("codes"); // families 1, 2 and 5
    QTest::newRow("silent") << u"Optisch"_s << QStringList{u"S"_s, u"S"_s, {}};
    QTest::newRow("first") << u"Melodie 1"_s << QStringList{u"0"_s, u"1"_s, {}};
    QTest::newRow("tenth") << u"Melodie 10"_s << QStringList{u"9"_s, u"10"_s, {}};
    QTest::newRow("eleventh") << u"Melodie 11"_s << QStringList{{}, {}, {}};
    QTest::newRow("own") << u"Walzer"_s << QStringList{{}, u"33"_s, {}};
    QTest::newRow("none") << QString() << QStringList{{}, {}, {}};
}

void tst_Ringtones::soundCodes()
{
    QFETCH(QString, name);
    SoundList sounds;
    sounds.add({u"Walzer"_s, u"MID"_s, 1200, 33});
    QTEST((QStringList{GetSoundCode(name, 1, sounds), GetSoundCode(name, 2, sounds),
                       GetSoundCode(name, 5, sounds)}),
          "codes");
}

void tst_Ringtones::soundNames()
{
    TestContext test;
    test.startLog();
    SoundList sounds;
    sounds.add({u"Walzer"_s, u"MID"_s, 1200, 33});
    QStringList names;
    for (const int id : {1, 10, 33, 11, 0})
        names.append(GetSoundName(id, sounds, test.log));
    QCOMPARE(names,
             (QStringList{u"Melodie 1"_s, u"Melodie 10"_s, u"Walzer"_s, u"Melodie 1"_s, u"Melodie 1"_s}));
    QCOMPARE(test.logged(),
             (QStringList{u"Warning:: GetSoundName(11) Element not found, default Melodie 1 used"_s,
                          u"Warning:: GetSoundName(0) Element not found, default Melodie 1 used"_s}));
}

void tst_Ringtones::listCommands_data()
{
    QTest::addColumn<int>("phoneType");
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("2") << 2 << QByteArray("AT^WFFO=\"MEL\"\r");
    QTest::newRow("3") << 3 << QByteArray("AT^WFFO=\"0\"\r");
    QTest::newRow("4") << 4 << QByteArray("AT^WFFO=\"3\"\r");
}

void tst_Ringtones::listCommands()
{
    QFETCH(int, phoneType);
    QFETCH(QByteArray, command);
    ClassicPhone phone(phoneType);
    phone.script.expect(command);
    const auto rows = makeSoundRows();
    QVERIFY(ReadSoundList(jobFor(phone), *rows));
    QCOMPARE(phone.memory.sounds.upperBound(), 0);
}

void tst_Ringtones::readsMelodies()
{
    ClassicPhone phone(3);
    phone.memory.sounds.add({u"gone"_s, {}, 0, 1});
    phone.script.expect("AT^WFFO=\"0\"\r", melodyList);
    const auto rows = makeSoundRows();
    rows->add({});
    QVERIFY(ReadSoundList(jobFor(phone), *rows));

    QStringList shown;
    for (int index = 0; index < rows->count(); ++index) {
        const toolkit::ListRow& row = rows->row(index);
        const Melody& melody = phone.memory.sounds.row(index + 1);
        shown.append(u"%1 %2 %3 %4: %5 %6"_s.arg(row.key, row.icon, row.text(0), row.text(1))
                         .arg(melody.size)
                         .arg(melody.id));
    }
    QCOMPARE(shown, (QStringList{u"A33 Sounds Walzer MID: 1200 33"_s, u"A34 Sounds Jödel MMF: 0 34"_s}));
    QCOMPARE(phone.progress.panel.texts,
             (QStringList{u"Klingeltöne werden ein eingelesen..."_s, u"Bereit."_s}));
    QCOMPARE(phone.window.states, (QList<bool>{true, false}));
}

void tst_Ringtones::failedListKeepsWhatWasRead_data()
{
    QTest::addColumn<bool>("answers");
    QTest::newRow("refused") << false;
    QTest::newRow("a line with too few parts") << true;
}

void tst_Ringtones::failedListKeepsWhatWasRead()
{
    QFETCH(bool, answers);
    ClassicPhone phone(3);
    const QByteArray command = "AT^WFFO=\"0\"\r";
    if (answers)
        phone.script.expect(command, melodyList + "\r\n^WFFO: 1,2");
    else
        phone.script.refuse(command);
    expectTransferError(phone, u"AT^WFFO=\"0\""_s);
    const auto rows = makeSoundRows();
    QVERIFY(!ReadSoundList(jobFor(phone), *rows));
    QCOMPARE(phone.memory.sounds.upperBound(), answers ? 2 : 0);
    QCOMPARE(rows->count(), answers ? 2 : 0);
    QCOMPARE(phone.progress.panel.Text(), u"Fehler beim Einlesen der Klingeltöne"_s);
    QCOMPARE(phone.window.states, (QList<bool>{true, false}));
}

void tst_Ringtones::readsSettings()
{
    ClassicPhone phone(2);
    phone.memory.sounds.add({u"Walzer"_s, u"MID"_s, 1200, 33});
    phone.script.expect("AT^WREX?\r", "^WREX: 33,6")
        .expect("AT^WRIN?\r", "^WRIN: 2,1")
        .expect("AT^WRAP?\r", "^WRAP: 77,5")
        .expect("AT^WRAL?\r", "^WRAL: 10,3");
    QStringList told;
    QVERIFY(ReadSoundSettings(
        jobFor(phone), [&](SoundEvent event, const SoundSetting& setting, const QString& tone) {
            told.append(u"%1: %2, %3"_s.arg(captionOf(event), tone).arg(setting.volume));
        }));
    QCOMPARE(told, (QStringList{u"Externe Anrufe: Walzer, 6"_s, u"Interne Anrufe: Melodie 2, 1"_s,
                                u"Termine: Melodie 1, 5"_s, u"Wecker: Melodie 10, 3"_s}));
    QCOMPARE(phone.script.timeline(),
             (QStringList{u"0.85 AT^WREX?"_s, u"1.04 AT^WRIN?"_s, u"1.23 AT^WRAP?"_s, u"1.42 AT^WRAL?"_s}));
    QCOMPARE(phone.memory.soundSettings[0].soundId, 33);
    QCOMPARE(phone.window.states, (QList<bool>{true, false}));
}

void tst_Ringtones::failedSettingKeepsTheOthers()
{
    ClassicPhone phone(2);
    phone.script.expect("AT^WREX?\r", "^WREX: 2,6").refuse("AT^WRIN?\r");
    expectTransferError(phone, u"AT^WRIN?"_s);
    int told = 0;
    QVERIFY(
        !ReadSoundSettings(jobFor(phone), [&](SoundEvent, const SoundSetting&, const QString&) { ++told; }));
    QCOMPARE(told, 1);
    QCOMPARE(phone.memory.soundSettings[0].volume, 6);
    QCOMPARE(phone.progress.panel.Text(), u"Fehler beim Einlesen der Klingeltöne"_s);
}

void tst_Ringtones::setsATone_data()
{
    QTest::addColumn<SoundEvent>("event");
    QTest::addColumn<QString>("tone");
    QTest::addColumn<int>("volume");
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("external, rising")
        << SoundEvent::External << u"Melodie 3"_s << 6 << QByteArray("AT^WREX=3,6\r");
    QTest::newRow("internal") << SoundEvent::Internal << u"Melodie 10"_s << 1 << QByteArray("AT^WRIN=10,1\r");
    QTest::newRow("appointment") << SoundEvent::Appointment << u"Walzer"_s << 2
                                 << QByteArray("AT^WRAP=33,2\r");
    QTest::newRow("alarm") << SoundEvent::Alarm << u"Melodie 1"_s << 5 << QByteArray("AT^WRAL=1,5\r");
}

void tst_Ringtones::setsATone()
{
    QFETCH(SoundEvent, event);
    QFETCH(QString, tone);
    QFETCH(int, volume);
    QFETCH(QByteArray, command);
    ClassicPhone phone(4);
    phone.memory.sounds.add({u"Walzer"_s, u"MID"_s, 1200, 33});
    phone.script.expect(command);
    QVERIFY(SetSound(jobFor(phone), event, tone, volume));
    QCOMPARE(phone.progress.panel.texts, (QStringList{u"Klingelton wird gesetzt..."_s, u"Bereit."_s}));
}

void tst_Ringtones::refusedToneIsTold()
{
    ClassicPhone phone(4);
    phone.script.refuse("AT^WRAL=1,5\r");
    expectTransferError(phone, u"AT^WRAL=1,5"_s);
    QVERIFY(!SetSound(jobFor(phone), SoundEvent::Alarm, u"Melodie 1"_s, 5));
    QCOMPARE(phone.progress.panel.Text(), u"Fehler beim setzen des Klingeltons."_s);
    QCOMPARE(phone.window.states, (QList<bool>{true, false}));
}

QTEST_GUILESS_MAIN(tst_Ringtones)
#include "tst_Ringtones.moc"
