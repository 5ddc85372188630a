// Kalmo's engine against the emulated handset.

#include "link/mdlStatus.h"
#include "obex/clsMmc.h"
#include "support/FakeDesktop.h"
#include "support/FakeSearchView.h"
#include "support/HandsetPort.h"
#include "support/RecordedProgress.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"

namespace {

/// Kalmo's engine with a handset on its line. Any box, and anything that it does wrong on the line, fails the
/// test.
struct Meeting
{
    explicit Meeting(const handset::Options& options) : port(test.clock, test.verdict, options)
    {
        port.Close();
    }

    bool search()
    {
        FakeSearchView view;
        FakeDesktop desktop;
        return link::PhoneSearch(line, view, desktop).SearchPhone() == link::SearchOutcome::PhoneFound;
    }

    TestContext test;
    HandsetPort port;
    link::Line line{test.context, port};
    RecordedProgress progress;
};

QStringList namesOf(const QList<obex::tObxDirEntry>& entries)
{
    QStringList names;
    for (const obex::tObxDirEntry& entry : entries)
        names.append(entry.name);
    return names;
}

} // namespace

/// Both ends of the wire, which share no code, against each other.
class MeetsTheClient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void files();
    void endlessFolders();
};

void MeetsTheClient::files()
{
    using handset::ListingForm;
    const Rows<QString, int, handset::ListingForms> rows{
        {"5", u"S68H"_s, 0, ListingForm::Plain},
        {"6, smallest frames", u"SL37"_s, 255, ListingForm::Spaced},
        {"10", u"SL400H"_s, 0, ListingForm::OneLine},
        {"11", u"S850H"_s, 0, ListingForm::HalfSpaced | ListingForm::Tight},
        {"12, more than the client sends", u"S820"_s, 16390, ListingForm::Plain},
        {"13, more than 32767", u"SL5 prof"_s, 65535, ListingForm::Plain},
    };
    rows.each([&](const auto& model, const auto& maxPacket, const auto& listing) {
        Meeting meeting({.model = model, .maxPacket = maxPacket, .memoryCard = 5000000, .listing = listing});
        QVERIFY(meeting.search());
        QCOMPARE(meeting.test.sy.PhoneType, meeting.port.handset().phone().family.number);
        QCOMPARE(meeting.test.sy.ComSettings, u"115200,N,8,1"_s);
        const auto mmc = std::make_shared<obex::clsMmc>(meeting.line);
        const toolkit::Progress progress = meeting.progress.all();
        QVERIFY(mmc->Online(progress));
        QList<obex::tObxDirEntry> entries;
        QVERIFY(mmc->Dir(entries, progress));
        QCOMPARE(namesOf(entries), QStringList({u"Pictures"_s, u"Clip Pictures"_s, u"Sounds"_s, u"System"_s,
                                                u"Liesmich.txt"_s}));
        qint32 bytes = 0;
        QVERIFY(mmc->GetSpaceTotal(bytes, progress));
        QCOMPARE(bytes, meeting.port.handset().phone().files.capacity());
        QVERIFY(mmc->GetSpaceFreeMmc(bytes, progress));
        QCOMPARE(bytes, 5000000);

        const QByteArray content(25000, 'w');
        const QString local = meeting.test.makeFile(u"Welle.wav"_s, content);
        QVERIFY(mmc->Cd(u"Sounds"_s, false));
        QVERIFY(mmc->PutFile(local, progress));
        QVERIFY(mmc->Dir(entries, progress));
        QCOMPARE(namesOf(entries),
                 QStringList({u"Tonleiter.mid"_s, u"Gong.mid"_s, u"Piep.wav"_s, u"Welle.wav"_s}));
        QByteArray back;
        QVERIFY(mmc->GetFile(u"Welle.wav"_s, back, progress));
        QCOMPARE(back, content);
        QVERIFY(mmc->Offline(progress));
        QVERIFY(!meeting.port.handset().isInDataMode());
        QString text;
        QVERIFY(link::GetSoftwareVersion(meeting.line, text));
        QCOMPARE(text, meeting.test.sy.PhoneSVN);
        QCOMPARE(link::GetBattery(meeting.line), 70);
    });
}

/// A folder that holds itself, and names that lead nowhere or elsewhere, bring the client's walk to an end.
void MeetsTheClient::endlessFolders()
{
    Meeting meeting({.model = u"S68H"_s, .faults = {.hostileNames = true}});
    QVERIFY(meeting.search());
    const auto mmc = std::make_shared<obex::clsMmc>(meeting.line);
    QVERIFY(mmc->Online({}));
    qint64 total = 0;
    int count = 0;
    QVERIFY(mmc->GetFolderInfosRec(u"Endlos"_s, total, count, {}, u"Mobile:\\"_s));
    QCOMPARE(mmc->DirAct(), u"Mobile:\\"_s);
    QByteArray data;
    QVERIFY(mmc->GetFile(u"../../x"_s, data, {})); // nothing but a name in the phone
    QCOMPARE(data, "harmless");
    QVERIFY(mmc->Offline({}));
}

KALMO_TEST(MeetsTheClient)
#include "tst_MeetsTheClient.moc"
