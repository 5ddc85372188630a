// Questions before a section with unsaved changes is left, and the commands of each section.

#include "app/SettingsKeys.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"
#include "ui/window/SectionGuard.h"

using phonedata::Store;

class SectionGuardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksAbout()
    {
        // For the sections 0 to 6: both lists changed, then the phonebook alone. P: provider list, T:
        // phonebook
        const QString free = u"....... ......."_s;
        const Rows<QString, QString> rows{
            {"phonebook", u"TB"_s, u"..P.... ......."_s},
            {"providers", u"NE"_s, u".T..... .T....."_s},
            {"diverse", u"DIV"_s, u".PP.... .TT...."_s},
            {"sounds", u"SOUND"_s, u".PP.... .TT...."_s},
            {"sponsors", u"SPONSOR"_s, u".TP.... .T....."_s},
            {"one sponsor", u"SPONSOR_TARIN"_s, u".TP.... .T....."_s},
            {"settings", u"SETUP"_s, u".TP.... .T....."_s},
            {"files", u"FFS"_s, free},
            {"Bluetooth", u"BT"_s, free},
            {"preselection", u"VW"_s, free},
            {"phone", u"PHONE"_s, free},
        };
        rows.each([](const auto& node, const auto& asked) {
            TestContext test;
            phonedata::PhoneMemory memory;
            ui::SectionGuard guard(memory, test.settings);
            memory.TbDirty = true;
            QStringList found;
            for (const bool providers : {true, false}) {
                memory.NeDirty = providers;
                QString line;
                for (guard.ActiveSection = 0; guard.ActiveSection <= 6; ++guard.ActiveSection) {
                    const auto prompt = guard.promptFor(node);
                    line += !prompt ? u'.' : *prompt == Store::Providers ? u'P' : u'T';
                }
                found.append(line);
            }
            QCOMPARE(found.join(u' '), asked);
        });
    }

    void allFourWaysHold()
    {
        for (int without = 0; without <= 4; ++without) { // 0: nothing is missing
            TestContext test;
            phonedata::PhoneMemory memory;
            ui::SectionGuard guard(memory, test.settings);
            app::put(test.settings, app::keys::SwWarning, without == 1 ? 0 : 1);
            memory.TbDirty = without != 2;
            guard.GuardSuppressed = without == 3;
            guard.ActiveSection = without == 4 ? ui::SectionDiverse : ui::SectionPhonebook;
            QCOMPARE(guard.promptFor(u"DIV"_s).has_value(), without == 0);
        }
    }
};

KALMO_TEST(SectionGuardTest)
#include "tst_SectionGuard.moc"
