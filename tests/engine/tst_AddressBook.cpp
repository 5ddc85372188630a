// Windows Address Books and files of cards, whole and broken.

#include "support/AddressBooks.h"
#include "support/TestProgram.h"
#include "transfer/import/clsWab.h"
#include "transfer/import/SourceKind.h"
#include "transfer/import/VcardFile.h"
#include "transfer/import/WabFile.h"

using namespace kalmo::transfer;

namespace {

const QDate today(2026, 11, 21);

/// The content of a contact, a field in each word.
QString described(const WabContact& contact)
{
    QStringList words;
    const auto add = [&words](const QString& key, const QString& text) {
        if (!text.isEmpty())
            words.append(key + u'=' + text);
    };
    const std::pair<const char*, QString WabContact::*> texts[] = {
        {"given", &WabContact::givenName},     {"middle", &WabContact::middleName},
        {"surname", &WabContact::surname},     {"display", &WabContact::displayName},
        {"nick", &WabContact::nickname},       {"company", &WabContact::company},
        {"home", &WabContact::homePhone},      {"mobile", &WabContact::mobilePhone},
        {"homeFax", &WabContact::homeFax},     {"work", &WabContact::businessPhone},
        {"workFax", &WabContact::businessFax}, {"mail", &WabContact::email1},
        {"mail2", &WabContact::email2}};
    for (const auto& [key, member] : texts)
        add(QString::fromLatin1(key), contact.*member);
    add(u"city"_s, contact.homeCity + contact.businessCity);
    if (contact.birthday)
        add(u"birthday"_s,
            contact.birthday->toString(Qt::ISODate) + (contact.birthdayHasYear ? u""_s : u"?"_s));
    if (contact.numbersWithoutPlace > 0)
        add(u"lost"_s, QString::number(contact.numbersWithoutPlace));
    if (contact.lostExtensions > 0)
        add(u"extensions"_s, QString::number(contact.lostExtensions));
    add(u"unread"_s, contact.unreadBirthday);
    add(u"cut"_s, contact.isCutOff ? u"off"_s : u""_s);
    return words.join(u' ');
}

QString described(const std::vector<WabContact>& contacts)
{
    QStringList lines;
    for (const WabContact& contact : contacts)
        lines.append(described(contact));
    return lines.join(u'\n');
}

QString readBook(const QByteArray& bytes)
{
    const WabBook book = readWabFile(bytes);
    if (book.fault != WabFault::None)
        return book.fault == WabFault::Damaged ? u"damaged"_s : u"fault"_s;
    return described(book.contacts) +
           (book.damagedRecords > 0 ? u"\nmissing=%1"_s.arg(book.damagedRecords) : QString());
}

WabBuilder smallBook()
{
    WabBuilder book;
    book.add({WabBuilder::wide(0x3A11, u"Mu\u0308ller"_s), WabBuilder::wide(0x3A09, u"030 1"_s)});
    book.add({WabBuilder::narrow(0x3A11, "M\xFCll\x80"), WabBuilder::wide(0x3A1C, u"0170"_s)});
    return book;
}
const QString smallBookText = u"surname=Müller home=030 1\nsurname=Müll€ mobile=0170"_s;

QString readCard(const QByteArray& lines)
{
    return described(readVcardFile("BEGIN:VCARD\r\n" + lines + "\r\nEND:VCARD\r\n", today));
}

/// A folder with two files of cards, one without, a text with a card, and a book.
struct BookFolder
{
    BookFolder()
    {
        write(u"b.vcf"_s, "BEGIN:VCARD\nTEL:2\nEND:VCARD\n");
        write(u"A.VCF"_s, "\xEF\xBB\xBF"
                          "BEGIN:VCARD\nTEL:1\nEND:VCARD\nBEGIN:VCARD\nKIND:group\nEND:VCARD\n");
        write(u"c.vcf"_s, "no card");
        write(u"note.txt"_s, "BEGIN:VCARD\nTEL:3\nEND:VCARD\n");
        write(u"book.wab"_s, smallBook().bytes());
    }
    QString at(const QString& name) const { return folder.filePath(name); }
    void write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(at(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    QTemporaryDir folder;
};

} // namespace

class tst_AddressBook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wabProperties()
    {
        WabBuilder book;
        book.add({WabBuilder::wide(0x3001, u"Anzeige"_s), WabBuilder::wide(0x3A06, u"Vor"_s),
                  WabBuilder::wide(0x3A44, u"Mitte"_s), WabBuilder::wide(0x3A11, u"Nach"_s),
                  WabBuilder::wide(0x3A4F, u"Ruf"_s), WabBuilder::wide(0x3A16, u"Firma"_s),
                  WabBuilder::wide(0x3A09, u"1"_s), WabBuilder::wide(0x3A1C, u"2"_s),
                  WabBuilder::wide(0x3A25, u"3"_s), WabBuilder::wide(0x3A08, u"4"_s),
                  WabBuilder::wide(0x3A24, u"5"_s), WabBuilder::wide(0x3A21, u"6"_s),
                  WabBuilder::wideList(0x8007, {u"x"_s, {}}), WabBuilder::wide(0x3A59, u"Ort"_s)});
        QCOMPARE(readBook(book.bytes()),
                 u"given=Vor middle=Mitte surname=Nach display=Anzeige nick=Ruf company=Firma "
                 u"home=1 mobile=2 homeFax=3 work=4 workFax=5 city=Ort lost=1"_s);
    }

    void wabMails()
    {
        WabBuilder book;
        const auto list = WabBuilder::wideList(0x3A56, {u"a"_s, u"b"_s, u"c"_s});
        const auto one = WabBuilder::wide(0x3003, u"x"_s);
        book.add({list});
        book.add({list, one}); // overwrites the first
        book.add({one, list});
        book.add({WabBuilder::wideList(0x3A56, {u"only"_s})});
        QCOMPARE(readBook(book.bytes()), u"mail=a mail2=b\nmail=x mail2=b\nmail=a mail2=b\nmail=only"_s);
    }

    void wabBirthdays()
    {
        WabBuilder book; // the test runs in the zone of Berlin: 23:30 UTC is the next day there
        book.add({WabBuilder::time(
            0x3A42, QDateTime(QDate(1970, 3, 20), QTime(23, 30), Qt::UTC).toMSecsSinceEpoch())});
        book.add({{0x3A420040, QByteArray::fromHex("080000000000000000000000")}});
        book.add({{0x3A420040, QByteArray::fromHex("08000000ffffffffffffffff")}});
        QCOMPARE(readBook(book.bytes()), u"birthday=1970-03-21\n\n"_s);
    }

    void wabRecords()
    {
        WabBuilder book = smallBook();
        const std::vector<WabBuilder::Property> name{WabBuilder::wide(0x3A11, u"no contact"_s)};
        book.add(name, 2);
        book.add(name, 3);
        book.add(name, 1, 0);
        book.repeat(0);
        QCOMPARE(readBook(book.bytes()), smallBookText);
        QCOMPARE(readBook(book.bytes(1000)), smallBookText);
        QCOMPARE(readBook(WabBuilder().bytes()), QString());
        QByteArray lost = book.bytes();
        qToLittleEndian(quint32{0xFFFFFFFF}, lost.data() + 0x20);   // the index: records are found one by one
        QCOMPARE(readBook(lost), smallBookText + u"\nmissing=1"_s); // the index lists one twice
    }

    void otherBooks()
    {
        QCOMPARE(readWabFile("").fault, WabFault::NotAnAddressBook);
        QCOMPARE(readWabFile(QByteArray(500, 'x')).fault, WabFault::NotAnAddressBook);
        const QByteArray old = QByteArray::fromHex("813284c18505d011b29000aa003cf676");
        QCOMPARE(readWabFile(old).fault, WabFault::OldLayout);
    }

    /// With a false length or offset the other contacts come out, or none, and no cut-off book counts as
    /// whole.
    void brokenBooks()
    {
        const QByteArray whole = smallBook().bytes(2);
        for (qsizetype size = 0; size < whole.size(); ++size)
            QVERIFY(readBook(whole.first(size)) != smallBookText);
        const QString first = u"surname=Müller home=030 1"_s;
        const qsizetype second =
            whole.lastIndexOf(QByteArray("\x02\0\0\0\x20", 5)); // its count of properties
        const auto with = [&whole](qsizetype place, quint32 value) {
            QByteArray broken = whole;
            qToLittleEndian(value, broken.data() + place);
            return broken;
        };
        QCOMPARE(readBook(with(second, 501)), first + u"\nmissing=1"_s);
        QCOMPARE(readBook(whole.chopped(1)), first + u"\nmissing=1"_s);
        QCOMPARE(readBook(whole.first(second)), first + u"\nmissing=1"_s);
        QCOMPARE(readBook(whole.first(0xB8)), u"damaged"_s);
        const qsizetype number = whole.lastIndexOf(QByteArray("\x1F\0\x1C\x3A", 4)); // in the record's data
        QCOMPARE(readBook(with(number, 0)), first + u"\nsurname=Müll€ cut=off"_s);
        QByteArray noIndex = with(0x20, 0xFFFFFFFF);
        qToLittleEndian(quint32{501}, noIndex.data() + second);
        QCOMPARE(readBook(noIndex), first + u"\nmissing=1"_s);
        const QByteArray card = "BEGIN:VCARD\nTEL:1\nEND:VCARD\n";
        QCOMPARE(described(readVcardFile(card + card.first(17), today)), u"home=1\nhome=1 cut=off"_s);
    }

    void cards()
    {
        Rows<QByteArray, QString> rows;
        rows.add(
            "2.1, quoted-printable",
            "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=BCller;J=\r\n =C3=B6rg\r\nTEL;HOME;VOICE:030 "
            "1\r\n"
            "TEL;CELL:0170",
            u"given=J örg surname=Müller home=030 1 mobile=0170"_s);
        rows.add("2.1, Latin 1", "N;CHARSET=ISO-8859-1;QUOTED-PRINTABLE:M=FCller;", u"surname=Müller"_s);
        rows.add("2.1, other Latin and Cyrillic",
                 "N;CHARSET=ISO-8859-15:\xA4;\r\nORG;CHARSET=KOI8-R:\xD0\xC5\xD4\xD2",
                 u"surname=€ company=петр"_s);
        rows.add("ANSI without a word", "N:M\xFCller;", u"surname=Müller"_s);
        rows.add("3.0, folded and grouped",
                 "VERSION:3.0\r\nN:Mei\r\n "
                 "er;Pe\r\n\tter;Paul\r\nitem1.TEL;TYPE=WORK,VOICE:1\r\nitem1.X-ABLabel:x\r\n"
                 "ORG:Firma\\, GmbH;Abteilung\r\nFN:P. Meier",
                 u"given=Peter middle=Paul surname=Meier display=P. Meier company=Firma, GmbH work=1"_s);
        rows.add("4.0",
                 "TEL;VALUE=uri;TYPE=\"cell,voice\":tel:+49-170;ext=5\r\nBDAY:19700321\r\nKIND:individual\r\n"
                 "TEL;TYPE=home:tel:12;phone-context=+49",
                 u"home=12 mobile=+49-170 birthday=1970-03-21 extensions=1"_s);
        rows.add("fax", "TEL;WORK;FAX:1\r\nTEL;HOME;FAX:2\r\nTEL;FAX:3", u"homeFax=2 workFax=1 lost=1"_s);
        rows.add("preferred first",
                 "TEL;HOME:1\r\nTEL;HOME;PREF:2\r\nTEL;TYPE=cell:3\r\nTEL;TYPE=cell;PREF=1:4",
                 u"home=2 mobile=4 lost=2"_s);
        rows.add("without a type", "TEL:1\r\nTEL;TYPE=VOICE:2\r\nTEL;WORK:3\r\nTEL:4",
                 u"home=1 mobile=2 work=3 lost=1"_s);
        rows.add("mails", "EMAIL;INTERNET:a@b\r\nEMAIL;PREF:c@d", u"mail=c@d mail2=a@b"_s);
        rows.add("birthdays", "BDAY:1970-03-21T12:30:00Z", u"birthday=1970-03-21"_s);
        rows.add("birthday without a year", "BDAY:--0321", u"birthday=2026-03-21?"_s);
        rows.add("birthday with the year left out", "BDAY;X-APPLE-OMIT-YEAR=1604:1604-03-21",
                 u"birthday=2026-03-21?"_s);
        rows.add("birthday that is a text", "BDAY;VALUE=text:circa 1800", u"unread=circa 1800"_s);
        rows.add("photo", "PHOTO;ENCODING=b;TYPE=JPEG:AAAA\r\n TEL:5\r\nTEL:1", u"home=1"_s);
        rows.add("card within the card", "AGENT:\r\nBEGIN:VCARD\r\nTEL:9\r\nEND:VCARD\r\nTEL:1", u"home=1"_s);
        rows.add("group", "KIND:group\r\nTEL:1", u""_s);
        rows.add("card without an end", "TEL:1\r\nBEGIN:VCARD\r\nTEL:2", u"home=1 cut=off\nhome=2"_s);
        rows.each([](const auto& lines, const auto& contact) { QCOMPARE(readCard(lines), contact); });
    }

    void sourcesOfABook()
    {
        const BookFolder folder;
        folder.write(u"book.dat"_s, smallBook().bytes());
        folder.write(u"table.csv"_s, "Name;BEGIN:VCARD\n");
        QStringList books;
        for (const QString& name :
             {u"c.vcf"_s, u"note.txt"_s, u"book.dat"_s, u"table.csv"_s, u"gone"_s, u"."_s}) {
            if (sourceKindOf(folder.at(name)) == SourceKind::AddressBook)
                books.append(name);
        }
        QCOMPARE(books, (QStringList{u"c.vcf"_s, u"note.txt"_s, u"book.dat"_s, u"."_s}));
    }

    void book()
    {
        const BookFolder folder;
        QStringList events;
        clsWab wab(
            {.BusyStart = [&events] { events.append(u"start"_s); },
             .Busy = [&events](int current, int total) { events.append(u"%1/%2"_s.arg(current).arg(total)); },
             .BusyEnd = [&events] { events.append(u"end"_s); }});
        QVERIFY(!wab.ReadAllContacts(today)); // not open yet
        QVERIFY(wab.OpenWab(folder.at({})));
        QVERIFY(!wab.OpenWab(folder.at({})));
        QVERIFY(wab.ReadAllContacts(today));
        wab.CloseWap();
        QCOMPARE(described(wab.contacts()), u"home=1\nhome=2"_s); // held after closing
        QCOMPARE(wab.losses(), (ReadingLosses{.skippedFiles = {folder.at(u"c.vcf"_s)}}));
        QCOMPARE(events, (QStringList{u"start"_s, u"1/2"_s, u"2/2"_s, u"end"_s}));
        WabContact contact;
        QVERIFY(wab.GetContact(2, contact) && contact.entryNumber == 2);
        QVERIFY(!wab.GetContact(3, contact) && !wab.GetContact(0, contact));
        QVERIFY(wab.OpenWab(folder.at(u"book.wab"_s)) && wab.ReadAllContacts(today));
        wab.CloseWap();
        QCOMPARE(described(wab.contacts()), smallBookText);
    }

    /// Each file asks if it goes on, a long one within; one that was stopped leaves no part of itself.
    void stoppedBook()
    {
        const BookFolder folder;
        folder.write(u"long.vcf"_s, QByteArray("BEGIN:VCARD\nTEL:1\nEND:VCARD\n").repeated(3000));
        for (const int stopAt : {1, 4}) {
            int asked = 0;
            clsWab stopped({.Reading = [&asked, stopAt] { return ++asked != stopAt; }});
            QVERIFY(stopped.OpenWab(folder.at({})) && !stopped.ReadAllContacts(today));
            QCOMPARE(stopped.fault(), AddressBookFault::Stopped);
            QCOMPARE(asked, stopAt);
            QCOMPARE(stopped.ContactCount(), 0);
        }
    }

    void refusedBooks()
    {
        const BookFolder folder;
        QFile large(folder.at(u"d.vcf"_s)); // a sparse file
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(65 * 1024 * 1024));
        large.close();
        clsWab wab;
        QVERIFY(wab.OpenWab(folder.at({})) && !wab.ReadAllContacts(today));
        wab.CloseWap();
        QCOMPARE(wab.fault(), AddressBookFault::TooLarge);
        QCOMPARE(wab.faultyFile(), large.fileName());
        QVERIFY(!wab.OpenWab(folder.at(u"none"_s)));
        QCOMPARE(wab.fault(), AddressBookFault::NotThere);
    }
};

KALMO_TEST(tst_AddressBook)
#include "tst_AddressBook.moc"
