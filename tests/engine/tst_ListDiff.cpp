// The changes that writing a list makes, and the form in which a phone gives entries back.

#include "phonedata/ListDiff.h"
#include "phonedata/StoreTraits.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"

using namespace kalmo::phonedata;

namespace {

using Entries = std::vector<ClassicEntry>;

/// "name number date", with what is not needed left out.
Entries entries(const QStringList& lines)
{
    Entries made;
    for (const QString& line : lines)
        made.push_back({.name = line.section(u' ', 0, 0),
                        .number = line.section(u' ', 1, 1),
                        .date = line.section(u' ', 2, 2)});
    return made;
}

QString inWords(const ListDiff& diff)
{
    QStringList lines;
    const auto text = [](const ClassicEntry& entry) { return entry.name + entry.number + entry.date; };
    for (const ClassicEntry& entry : diff.add)
        lines.append(u'+' + text(entry));
    for (const ListDiff::Change& change : diff.change)
        lines.append(text(change.from) + u'>' + text(change.to));
    for (const ClassicEntry& entry : diff.remove)
        lines.append(u'-' + text(entry));
    return lines.join(u' ');
}

} // namespace

class tst_ListDiff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void diff()
    {
        Rows<QStringList, QStringList, QString> rows;
        rows.add("another order", {u"A 1"_s, u"B 2"_s}, {u"B 2"_s, u"A 1"_s}, {});
        rows.add("another date", {u"A 1 d"_s}, {u"A 1 e"_s}, u"A1d>A1e"_s);
        rows.add("another number is another entry", {u"A 1"_s}, {u"A 2"_s}, u"+A2 -A1"_s);
        rows.add("name and number don't run together", {u"A1 1"_s}, {u"A 11"_s}, u"+A11 -A11"_s);
        rows.add("one double less", {u"A 1"_s, u"A 1"_s}, {u"A 1"_s}, u"-A1"_s);
        rows.add("equal doubles find each other first", {u"A 1 d"_s, u"A 1 e"_s}, {u"A 1 e"_s, u"A 1 f"_s},
                 u"A1d>A1f"_s);

        rows.each([&](const auto& held, const auto& wanted, const auto& outcome) {
            const ListDiff diff = diffLists(entries(held), entries(wanted));
            QCOMPARE(inWords(diff), outcome);
            QCOMPARE(diff.isEmpty(), inWords(diff).isEmpty());
        });
    }

    void formInThePhone()
    {
        const ClassicEntry full{.name = u"Jörg, \"J\""_s,
                                .number = u"+49*1"_s,
                                .date = u"24.12  08:30"_s,
                                .dateSound = u"Melodie 3"_s,
                                .vip = u"Ja"_s,
                                .vipSound = u"Walzer"_s};
        const auto with = [&](auto change) {
            ClassicEntry entry = full;
            change(entry);
            return entry;
        };
        const Rows<Store, int, ClassicEntry, ClassicEntry> rows{
            {"all is kept", Store::Phonebook, 2, full, full},
            {"oldest family keeps no VIP, and names melodies otherwise", Store::Phonebook, 1, full,
             with([](ClassicEntry& e) { e.vip = e.vipSound = QString(), e.dateSound = u"Melodie 2"_s; })},
            {"characters that the code page lacks", Store::Phonebook, 3,
             with([](ClassicEntry& e) { e.name = u"Łódź"_s; }),
             with([](ClassicEntry& e) { e.name = u"?ód?"_s; })},
            {"no name", Store::Phonebook, 2, with([](ClassicEntry& e) { e.name.clear(); }),
             with([](ClassicEntry& e) { e.name = u"Ohne Name"_s; })},
            {"providers have a name and a number", Store::Providers, 2, full,
             ClassicEntry{.name = full.name, .number = full.number}},
        };
        rows.each([&](const auto& store, const auto& phoneType, const auto& entry, const auto& held) {
            TestContext test;
            SoundList sounds;
            sounds.add({u"Walzer"_s, u"MID"_s, 1200, 33});
            const StoreTraits& traits = traitsOf(store);
            const QByteArray reply = replyFor(traits.writeCommand(entry, phoneType, sounds));
            QVERIFY(traits.entryFromReply(reply, phoneType, sounds, test.log) == held);
        });
    }
};

KALMO_TEST(tst_ListDiff)
#include "tst_ListDiff.moc"
