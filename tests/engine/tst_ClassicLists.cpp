// Lists of classic handsets besides the phonebook: melodies and ringtone settings, and the provider list
// where it differs.

#include "app/mdlTexts.h"
#include "phonedata/ProviderList.h"
#include "phonedata/Ringtones.h"
#include "support/ClassicPhone.h"
#include "support/TestProgram.h"

using namespace kalmo::phonedata;

namespace {

const QByteArray melodyList = "^WFFO: 0,Walzer,x,MID,1200,33\r\n"
                              "something else\r\n"
                              "^WFFO: 1,J\xF6"
                              "del,x,MMF,0,34";

const std::vector<ProviderEntry> providers = {{u"Billig, AG"_s, u"01013"_s}, {u"Ohne Name"_s, u"01070"_s}};

RingtoneJob jobFor(ClassicPhone& phone)
{
    return {phone.line, phone.memory, &phone.window, &phone.progress.panel};
}

} // namespace

class tst_ClassicLists : public QObject
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

    void setsByName()
    {
        ClassicPhone phone(2);
        phone.memory.sounds.add({u"Walzer"_s, u"MID"_s, 1200, 33});
        phone.script.expect("AT^WRIN=33,4\r").refuse("AT^WRAL=3,1\r");
        QVERIFY(SetSound(jobFor(phone), SoundEvent::Internal, u"Walzer"_s, 4));
        phone.test.dialogs.expectStart(app::ResText(app::TextTransferError).first(30));
        QVERIFY(!SetSound(jobFor(phone), SoundEvent::Alarm, u"Melodie 3"_s, 1));
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

    /// Family 3: the provider list is not prepared, and the command that writes it ends in CR alone.
    void providersKeepTheirPauses()
    {
        ClassicPhone phone(3, Store::Providers);
        phone.script.expect("AT^WSSL=\"NE\"\r").expect("AT^WSRE\r", "^WSRE: 10,Billig, AG,5,01013");
        phone.script.expect("AT^WSRE\r", "^WSRE: ,,5,01070").expectAll({"AT^WSRE\r", "AT^WSSL\r"});
        QVERIFY(ReadPB_NE(phone.job()));
        QCOMPARE(providerEntries(*phone.list), providers);
        QCOMPARE(phone.memory.providers.entries, classicEntries(*phone.list));
        QCOMPARE(phone.memory.providers.certainty, Certainty::Known);

        phone.list->add(toRow(ProviderEntry{u"Jörg"_s, u"1"_s}));
        phone.script.expectAll({"AT^WSEL=\"NE\"\r", "AT^WSSL\r", "AT^WSSL=\"NE\"\r",
                                "AT^WSWE=10,Billig, AG,5,01013\r", "AT^WSWE=9,Ohne Name,5,01070\r",
                                "AT^WSWE=4,J\xF6rg,1,1\r", "AT^WSSL\r"});
        QVERIFY(WritePB_NE(phone.job()));
        QCOMPARE(phone.memory.providers.entries.size(), 3U);
        QCOMPARE(phone.window.states, (QList<bool>{true, false, true, false}));
        QCOMPARE(phone.script.timeline().join(u'|'),
                 u"0.00 AT^WSSL=\"NE\"|0.52 AT^WSRE|0.64 AT^WSRE|0.76 AT^WSRE|1.08 AT^WSSL|"
                 "5.08 AT^WSEL=\"NE\"|5.10 AT^WSSL|8.60 AT^WSSL=\"NE\"|9.12 AT^WSWE=10,Billig, AG,5,01013|"
                 "9.34 AT^WSWE=9,Ohne Name,5,01070|9.56 AT^WSWE=4,Jörg,1,1|10.28 AT^WSSL"_s);
    }
};

KALMO_TEST(tst_ClassicLists)
#include "tst_ClassicLists.moc"
