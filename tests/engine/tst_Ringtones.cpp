// Ringtone settings: the melodies and settings of families 2 to 4, and the names of sounds.

#include "phonedata/Ringtones.h"
#include "support/ClassicPhone.h"
#include "support/Rows.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using namespace kalmo::tests;

namespace {

const QByteArray melodyList = "^WFFO: 0,Walzer,x,MID,1200,33\r\n"
                              "something else\r\n"
                              "^WFFO: 1,J\xF6"
                              "del,x,MMF,0,34";

RingtoneJob jobFor(ClassicPhone& phone)
{
    return {phone.line, phone.memory, &phone.window, &phone.progress.panel};
}

} // namespace

class tst_Ringtones : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsMelodies()
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

    void readsSettings()
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
        QCOMPARE(phone.script.timeline(), (QStringList{u"0.85 AT^WREX?"_s, u"1.04 AT^WRIN?"_s,
                                                       u"1.23 AT^WRAP?"_s, u"1.42 AT^WRAL?"_s}));
        QCOMPARE(phone.memory.soundSettings[0].soundId, 33);
        QCOMPARE(phone.window.states, (QList<bool>{true, false}));
    }

    void setsATone()
    {
        const Rows<SoundEvent, QString, int, QByteArray> rows{
            {"external, rising", SoundEvent::External, u"Melodie 3"_s, 6, "AT^WREX=3,6\r"},
            {"appointment", SoundEvent::Appointment, u"Walzer"_s, 2, "AT^WRAP=33,2\r"},
        };
        for (const auto& [event, tone, volume, command] : rows) {
            ClassicPhone phone(4);
            phone.memory.sounds.add({u"Walzer"_s, u"MID"_s, 1200, 33});
            phone.script.expect(command);
            QVERIFY(SetSound(jobFor(phone), event, tone, volume));
            QCOMPARE(phone.progress.panel.texts,
                     (QStringList{u"Klingelton wird gesetzt..."_s, u"Bereit."_s}));
        }
    }
};

QTEST_GUILESS_MAIN(tst_Ringtones)
#include "tst_Ringtones.moc"
