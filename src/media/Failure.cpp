#include "media/Failure.h"

#include <QFileInfo>

#include <algorithm>

namespace kalmo::media {

using namespace Qt::StringLiterals;
using toolkit::Icon;
using toolkit::Message;

namespace {

/// The message for a missing converter. Each converter has its own text.
Message missing(const QString& program)
{
    const QString name = QFileInfo(program).fileName();
    const QString english =
        u"the converter %1 is missing; install the package \"%2\""_s.arg(name, packageOf(program));
    if (name == u"m9b"_s) {
        return {.text = u"Klingetonkonverter "_s + program +
                        u" nicht gefunden. Bitte installieren Sie die Vollversion neu."_s,
                .icon = Icon::Exclamation,
                .english = english};
    }
    const QString kind = name == u"g722demo"_s ? u"g722"_s : name;
    return {
        .text =
            u"Der %1 Konverter %2 wurde nicht gefunden.\nInstallieren Sie Kalmo als Vollinstallation neu."_s
                .arg(kind, program),
        .icon = Icon::Exclamation,
        .english = english};
}

/// The words of a failure. %p is the path of the file, %n its name, %d the detail, %b the detail after a
/// colon or, if there is none, a full stop.
struct Words
{
    Fault fault;
    QStringView german;
    QStringView english;
    Icon icon = Icon::Exclamation;
};

constexpr Words messages[] = {
    {Fault::NoSource, u"Datei %p existiert nicht.", u"there is no file %p"},
    {Fault::NotReadable, u"Die Datei %p kann nicht gelesen werden. Prüfen Sie die Zugriffsrechte.",
     u"%p can't be read%b"},
    {Fault::NotFit, u"Die Datei %p passt nicht in den gewählten Ordner und wurde nicht übertragen.",
     u"%p is of a kind that the folder does not take"},
    {Fault::NoFolder,
     u"In den gewählten Ordner können keine Dateien übertragen werden. Verwenden Sie folgende Ordner als "
     u"Ziele:\n- Clip Pictures oder Pictures für Bilder\n- Sounds für Klingeltöne",
     u"only Pictures, Clip Pictures and Sounds take converted files", Icon::Information},
    {Fault::BadPicture,
     u"Die Datei %n ist fehlerhaft und kann nicht geladen werden. Sie sollten diese Datei überprüfen und "
     u"ggf. löschen.",
     u"%p can't be read as a picture%b"},
    {Fault::OtherFormat,
     u"Die Datei %n ist trotz ihrer Endung kein Bild im Format BMP, GIF, JPG oder PNG und kann nicht "
     u"umgewandelt werden.",
     u"%p can't be converted%b"},
    {Fault::LargePicture,
     u"Das Bild %n ist mit %d Pixeln zu groß und kann nicht umgewandelt werden. Verkleinern Sie es vorher.",
     u"%p is too large to convert: it has %d pixels"},
    {Fault::NoBitmap, u"Die Quelldatei %p existiert nicht. JPG Umwandlung nicht möglich.",
     u"there is no file %p"},
    {Fault::NoJpeg, u"JPG Umwandlung gescheitert (.%d).", u"%p can't be coded as JPEG%b"},
    {Fault::BadSound, u"Die Umwandlung in eine telefongerechte 722-Audio-Datei ist gescheitert.",
     u"%p can't be converted to a sound for handsets%b"},
    {Fault::BadMelody,
     u"Die Konvertierung von %p ist gescheitert. Vermutlich haben Sie eine ungeeignete oder beschädigte "
     u"Mididatei ausgewählt.",
     u"%p can't be converted to a melody for handsets%b"},
    {Fault::LargeMelody, u"Die gewählte Datei %p ist größer als 32kB und kann nicht übertragen werden.",
     u"%p is larger than 32000 bytes, the most that handsets take"},
    {Fault::NoName, u"Die Datei %p hat keinen Namen, den das Telefon annimmt.",
     u"phones take no character of the name %p"},
    {Fault::NoMp3,
     u"Die Datei %p kann nicht umgewandelt werden: SoX liest hier kein MP3. Installieren Sie das Paket "
     u"libsox-fmt-mp3.",
     u"%p can't be converted: SoX reads no MP3 here; install the package \"libsox-fmt-mp3\""},
    {Fault::TooLong, u"Die Umwandlung von %p dauert zu lange und wurde abgebrochen.",
     u"%p took too long to convert"},
    {Fault::NotWritten, u"Fehler beim Schreiben der Datei %p", u"%p can't be written%b"},
    {Fault::Cancelled, u"Die Umwandlung wurde abgebrochen.", u"interrupted; %p was not converted",
     Icon::Information},
};

QString because(const Failure& failure)
{
    return failure.detail.isEmpty() ? u"."_s : u": "_s + failure.detail;
}

/// Puts the failure's texts into their places, in one pass, since a file's name may hold a percent sign.
QString filled(QStringView words, const Failure& failure)
{
    QString text;
    for (qsizetype at = 0; at < words.size(); ++at) {
        const QChar mark = words[at] == u'%' ? words[++at] : QChar();
        if (mark == u'p')
            text += failure.file;
        else if (mark == u'n')
            text += QFileInfo(failure.file).fileName();
        else if (mark == u'd')
            text += failure.detail;
        else if (mark == u'b')
            text += because(failure);
        else
            text += words[at];
    }
    return text;
}

} // namespace

Message messageFor(const Failure& failure)
{
    if (failure.fault == Fault::NoConverter)
        return missing(failure.program);
    const auto* words = std::ranges::find(messages, failure.fault, &Words::fault);
    return {.text = filled(words->german, failure),
            .icon = words->icon,
            .english = filled(words->english, failure)};
}

QString packageOf(const QString& program)
{
    const QString name = QFileInfo(program).fileName();
    return name == u"m9b"_s || name == u"g722demo"_s ? u"kalmo"_s : name;
}

bool isBadInput(Fault fault)
{
    return fault != Fault::NoConverter && fault != Fault::NoMp3 && fault != Fault::NotWritten &&
           fault != Fault::TooLong && fault != Fault::Cancelled && fault != Fault::NoJpeg;
}

bool endsBatch(Fault fault)
{
    return fault == Fault::NoConverter || fault == Fault::NotWritten || fault == Fault::Cancelled;
}

} // namespace kalmo::media
