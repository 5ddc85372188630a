#include "phonedata/VcfFiles.h"

#include "app/CodePage.h"
#include "app/Files.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/VcfText.h"

#include <QFileInfo>

#include <algorithm>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using toolkit::ListRows;

namespace {

const QString csvHeading =
    u"\"Nachname\",\"Vorname\",\"Telefon\",\"Tel. (Mobil)\",\"Tel. (Büro)\",\"Email\",\"Jahrestag\""_s;
constexpr int csvFields = VcfBirthday + 1;
constexpr qsizetype longestQuotedLine = 76;

QString tabbedCell(QString text)
{
    return text.replace(u'\t', u' ').trimmed();
}

bool isPlain(char byte)
{
    return byte >= ' ' && byte <= '~' && byte != '=';
}

/// A line of a card whose value is quoted-printable where it has to be, folded so that none is longer
/// than 76.
QByteArray cardLine(const QByteArray& key, const QString& value)
{
    const QByteArray text = value.toUtf8();
    if (std::all_of(text.begin(), text.end(), isPlain))
        return key + ':' + text + "\r\n";
    QByteArray card;
    QByteArray line = key + ";ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:";
    for (const char byte : text) {
        const QByteArray part =
            isPlain(byte) ? QByteArray(1, byte) : '=' + QByteArray(1, byte).toHex().toUpper();
        if (line.size() + part.size() >= longestQuotedLine) {
            card += line + "=\r\n";
            line.clear();
        }
        line += part;
    }
    return card + line + "\r\n";
}

/// Returns true if a line can go to other programs as it is, with all that continues it.
bool isPlainLine(const CardLine& line)
{
    const QByteArray bytes = line.bytes();
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte > 0; });
}

} // namespace

QByteArray vcfCardBytes(const tVcfEntry& entry, const std::vector<CardLine>& others)
{
    const std::pair<QByteArray, QString> fields[] = {
        {"EMAIL;INTERNET", entry.email},
        {"TEL;HOME", entry.home},
        {"TEL;WORK", entry.work},
        {"TEL;CELL", entry.mobile},
        {"BDAY", displayBirthday(entry.birthday).isEmpty() ? QString() : entry.birthday},
        {"X-IRMC-LUID", entry.luid},
    };
    QByteArray card = "BEGIN:VCARD\r\nVERSION:2.1\r\n" +
                      cardLine("N", VcfEsc(entry.lastName) + u';' + VcfEsc(entry.firstName));
    for (const auto& [key, value] : fields) {
        if (!value.isEmpty())
            card += cardLine(key, VcfEsc(value));
    }
    for (const CardLine& line : others)
        card += isPlainLine(line) ? line.bytes() : cardLine(line.key, lineText(line));
    return card + "END:VCARD\r\n\r\n";
}

QByteArray vcfCsvBytes(const ListRows& list)
{
    QString text = csvHeading + u"\r\n"_s;
    for (int index = 0; index < list.count(); ++index) {
        QStringList fields;
        for (int column = 0; column < csvFields; ++column)
            fields.append(list.text(index, column));
        text += u'"' + fields.join(u"\",\""_s) + u"\"\r\n"_s;
    }
    return app::toCp1252(text);
}

bool SaveVcfCsv(app::Context& context, const ListRows& list, const QString& path)
{
    return list.count() == 0 || saveBackup(context, path, vcfCsvBytes(list));
}

QByteArray vcfBackupBytes(const ListRows& list)
{
    QStringList cells;
    for (const toolkit::ListColumn& column : list.columns())
        cells.append(tabbedCell(column.title));
    QString text = cells.join(u'\t') + u"\r\n"_s;
    for (int index = 0; index < list.count(); ++index) {
        cells.clear();
        for (int column = 0; column < list.columns().size(); ++column)
            cells.append(tabbedCell(list.text(index, column)));
        text += cells.join(u'\t') + u"\r\n"_s;
    }
    return app::toCp1252(text);
}

bool VCF2BackupFile(app::Context& context, const ListRows& list, const QString& path)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (!app::EnsureDirExistsNoMsgBox(context, folder)) {
        context.dialogs.Show(
            {.text = u"Der Ordner "_s + folder +
                     u" konnte nicht angelegt werden. Das automatische Backup wurde nicht "
                     u"angelegt."_s,
             .icon = toolkit::Icon::Exclamation,
             .english = u"could not create the folder %1; no backup was made."_s.arg(folder)});
        return false;
    }
    if (saveBackup(context, path, vcfBackupBytes(list)))
        return true;
    context.log.WriteDebugLog(u"Warning"_s,
                              u"VCF2BackupFile:Error  Source: "_s + list.name() + u" Destination: "_s + path);
    return false;
}

} // namespace kalmo::phonedata
