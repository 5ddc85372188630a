// Folder listings: from the phone's text to entries, and from entries to rows.

#include "obex/FileTypes.h"
#include "obex/FolderListing.h"
#include "obex/FolderRows.h"
#include "support/TestProgram.h"

using namespace kalmo::obex;
using kalmo::toolkit::ListRows;

namespace {

const QString root = u"Mobile:\\"_s;

/// One line for all that is known of an entry.
QString inWords(const tObxDirEntry& entry)
{
    return u"%1 %2 | %3 | %4 bytes | %5 | %6/%7"_s
        .arg(entry.isFile() ? u"file"_s : u"folder"_s, entry.name, entry.path)
        .arg(entry.size)
        .arg(entry.modified.isValid() ? entry.modified.toString(u"yyyy-MM-dd hh:mm:ss"_s) : u"-"_s)
        .arg(entry.userPerm)
        .arg(entry.groupPerm);
}

QStringList inWords(const QList<tObxDirEntry>& entries)
{
    QStringList lines;
    for (const tObxDirEntry& entry : entries)
        lines.append(inWords(entry));
    return lines;
}

QString fileTag(const QString& name)
{
    return u"<file name=\""_s + name + u"\" size=\"1\" user-perm=\"R\" group-perm=\"\"/>"_s;
}

} // namespace

class tst_ObexListing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listings()
    {
        Rows<QString, QString, QStringList> rows;
        rows.add("a folder and a file in one line", root,
                 u"<folder name=\"a\" modified=\"20021120T164606\" user-perm=\"RWD\" group-perm=\"R\"/><file "
                 u"name=\"b.txt\" size = \"10\" modified=\"x\" user-perm=\"R\" group-perm=\"\"/>"_s,
                 {u"folder a | Mobile:\\a | 0 bytes | 2002-11-20 16:46:06 | 7/1"_s,
                  u"file b.txt | Mobile:\\b.txt | 10 bytes | - | 1/0"_s});
        rows.add("lines, attributes in another order", u"Mobile:\\Pics"_s,
                 u"<folder-listing>\r\n"
                 u" <file group-perm=\"WD\" user-perm=\"D\" size =\"2147483647\" file name=\"x.bmp\" "
                 u"modified=\"19991231T235959\"/>\r\n"
                 u"</folder-listing>"_s,
                 {u"file x.bmp | Mobile:\\Pics\\x.bmp | 2147483647 bytes | 1999-12-31 23:59:59 | 2/6"_s});
        rows.add("telecom is hidden in the root", root,
                 u"<folder name=\"TELECOM\" user-perm=\"R\"/><folder name=\"telecom2\" user-perm=\"R\"/>"_s,
                 {u"folder telecom2 | Mobile:\\telecom2 | 0 bytes | - | 1/0"_s});
        rows.add(
            "nothing behind the keys", root, u"<folder name=><file name="_s,
            {u"folder > | Mobile:\\> | 0 bytes | - | 0/0"_s, u"file  | Mobile:\\ | 0 bytes | - | 0/0"_s});
        rows.add("a name with blanks, quotes and a way out", root,
                 u"<file name=\"..\\..\\x y\"z\" size=\"1\" user-perm=\"R\" group-perm=\"\"/>"_s,
                 {u"file ..\\..\\x y\"z | Mobile:\\..\\..\\x y\"z | 1 bytes | - | 1/0"_s});
        rows.add("names as requests have them", root,
                 fileTag(u"A&amp;B &#38;lt; &#x2E;q;&Z.&;"_s) + fileTag(u"Â§1 &quot;ÂÂ°Âx"_s),
                 {u"file A&B &lt; .q;&Z.&; | Mobile:\\A&B &lt; .q;&Z.&; | 1 bytes | - | 1/0"_s,
                  u"file §1 \"Â°Âx | Mobile:\\§1 \"Â°Âx | 1 bytes | - | 1/0"_s});

        rows.each([&](const auto& folder, const auto& listing, const auto& entries) {
            QCOMPARE(inWords(parseFolderListing(listing, folder)), entries);
        });
    }

    void filters()
    {
        const Rows<QStringList, QStringList> rows{
            {"empty takes nothing", {}, {}},
            {"with folders", {u"$ADD_FOLDER"_s, u".mid"_s}, {u"sub"_s, u"b.mid"_s}},
            {"folders only if said first", {u".mid"_s, u"$ADD_FOLDER"_s}, {u"b.mid"_s}},
        };
        rows.each([&](const auto& filter, const auto& wantedNames) {
            QStringList names;
            const QString listing =
                u"<folder name=\"sub\"/>"_s + fileTag(u"a.TXT"_s) + fileTag(u"b.mid"_s) + fileTag(u"c.bmp"_s);
            for (const tObxDirEntry& entry : parseFolderListing(listing, root, &filter))
                names.append(entry.name);
            QCOMPARE(names, wantedNames);
        });
    }

    void hugeListing() // anything but a linear walk would not come to an end
    {
        const QString listing = fileTag(u"x"_s).repeated(200000);
        QCOMPARE(parseFolderListing(listing, root).size(), 200000);
        QCOMPARE(parseFolderListing(u"<file name="_s.repeated(500000), root).size(), 1);
    }

    void rows()
    {
        QLocale::setDefault(QLocale::c());
        ListRows list(u"FFS"_s, {{u"Name"_s, kalmo::toolkit::SortBy::Tag},
                                 {u"Typ"_s},
                                 {u"Größe"_s, kalmo::toolkit::SortBy::Tag},
                                 {u"Attribut"_s}});
        list.add({.key = u"old"_s});
        const auto entry = [](EntryKind kind, const QString& name, qint32 size, int user, int group) {
            return tObxDirEntry{kind, name, {}, size, {}, user, group};
        };
        DirInLvw({entry(EntryKind::File, u"zz.bmp"_s, 2048, MayRead | MayWrite, MayRead),
                  entry(EntryKind::File, u"hidden.bmp"_s, 1, 0, 0),
                  entry(EntryKind::Folder, u"Zoo"_s, 0, 7, 0),
                  entry(EntryKind::File, u"aa.txt"_s, 1, 0, MayDelete),
                  entry(EntryKind::Folder, u"closed"_s, 0, 0, 0)},
                 list);
        QStringList lines;
        for (int index = 0; index < list.count(); ++index) {
            const auto& row = list.row(index);
            QStringList cells{row.key, row.icon, row.tag};
            for (const auto& cell : row.cells)
                cells.append(cell.text + (&cell == &row.cells[2] ? u'<' + cell.tag + u'>' : QString()));
            lines.append(cells.join(u'|'));
        }
        QCOMPARE(lines, (QStringList{
                            u"FOL_closed|folderhidden|C_closed|closed|Ordner| <>|/"_s,
                            u"FOL_Zoo|folder|C_Zoo|Zoo|Ordner| <>|rwd/"_s,
                            u"FIL_aa.txt|txt|D__aa.txt|aa.txt|Text TXT|0.1kB<0000000000000001>|/d"_s,
                            u"FIL_zz.bmp|bmp|D__zz.bmp|zz.bmp|Bild BMP|2.0kB<0000000000002048>|rw/r"_s,
                            u"ROT_|cmd_root||Basisverzeichnis|Befehl| <>|"_s,
                            u"CDU_|cmd_up||Verzeichnis aufwärts|Befehl| <>|"_s,
                        }));
        QVERIFY(!list.isSorted());
    }
};

KALMO_TEST(tst_ObexListing)
#include "tst_ObexListing.moc"
