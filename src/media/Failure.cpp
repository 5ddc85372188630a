#include "media/Failure.h"

#include <QFileInfo>

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

QString because(const Failure& failure)
{
    return failure.detail.isEmpty() ? u"."_s : u": "_s + failure.detail;
}

Message warning(const QString& text, const QString& english)
{
    return {.text = text, .icon = Icon::Exclamation, .english = english};
}

/// The message for a picture that can't be converted.
Message pictureMessage(const Failure& failure)
{
    const QString& file = failure.file;
    const QString name = QFileInfo(file).fileName();
    switch (failure.fault) {
    case Fault::BadPicture:
        return warning(
            u"Die Datei "_s + name +
                u" ist fehlerhaft und kann nicht geladen werden. Sie sollten diese Datei überprüfen und "
                u"ggf. löschen."_s,
            u"%1 can't be read as a picture%2"_s.arg(file, because(failure)));
    case Fault::OtherFormat:
        return warning(
            u"Die Datei "_s + name +
                u" ist trotz ihrer Endung kein Bild im Format BMP, GIF, JPG oder PNG und kann nicht "
                u"umgewandelt werden."_s,
            u"%1 can't be converted%2"_s.arg(file, because(failure)));
    case Fault::LargePicture:
        return warning(
            u"Das Bild %1 ist mit %2 Pixeln zu groß und kann nicht umgewandelt werden. Verkleinern "
            u"Sie es vorher."_s.arg(name, failure.detail),
            u"%1 is too large to convert: it has %2 pixels"_s.arg(file, failure.detail));
    case Fault::NoBitmap:
        return warning(u"Die Quelldatei "_s + file + u" existiert nicht. JPG Umwandlung nicht möglich."_s,
                       u"there is no file %1"_s.arg(file));
    default: // Fault::NoJpeg
        return warning(u"JPG Umwandlung gescheitert (."_s + failure.detail + u")."_s,
                       u"%1 can't be coded as JPEG%2"_s.arg(file, because(failure)));
    }
}

} // namespace

Message messageFor(const Failure& failure)
{
    const QString& file = failure.file;
    switch (failure.fault) {
    case Fault::NoSource:
        return warning(u"Datei "_s + file + u" existiert nicht."_s, u"there is no file %1"_s.arg(file));
    case Fault::NotReadable:
        return warning(u"Die Datei "_s + file +
                           u" kann nicht gelesen werden. Prüfen Sie die Zugriffsrechte."_s,
                       u"%1 can't be read%2"_s.arg(file, because(failure)));
    case Fault::NotFit:
        return warning(u"Die Datei "_s + file +
                           u" passt nicht in den gewählten Ordner und wurde nicht übertragen."_s,
                       u"%1 is of a kind that the folder does not take"_s.arg(file));
    case Fault::NoFolder:
        return {
            .text =
                u"In den gewählten Ordner können keine Dateien übertragen werden. Verwenden Sie folgende "
                u"Ordner als Ziele:\n- Clip Pictures oder Pictures für Bilder\n- Sounds für Klingeltöne"_s,
            .icon = Icon::Information,
            .english = u"only Pictures, Clip Pictures and Sounds take converted files"_s};
    case Fault::BadPicture:
    case Fault::OtherFormat:
    case Fault::LargePicture:
    case Fault::NoBitmap:
    case Fault::NoJpeg:
        return pictureMessage(failure);
    case Fault::BadSound:
        return warning(u"Die Umwandlung in eine telefongerechte 722-Audio-Datei ist gescheitert."_s,
                       u"%1 can't be converted to a sound for handsets%2"_s.arg(file, because(failure)));
    case Fault::BadMelody:
        return warning(
            u"Die Konvertierung von "_s + file +
                u" ist gescheitert. Vermutlich haben Sie eine ungeeignete oder beschädigte Mididatei "
                u"ausgewählt."_s,
            u"%1 can't be converted to a melody for handsets%2"_s.arg(file, because(failure)));
    case Fault::LargeMelody:
        return warning(u"Die gewählte Datei "_s + file +
                           u" ist größer als 32kB und kann nicht übertragen werden."_s,
                       u"%1 is larger than 32000 bytes, the most that handsets take"_s.arg(file));
    case Fault::NoName:
        return warning(u"Die Datei "_s + file + u" hat keinen Namen, den das Telefon annimmt."_s,
                       u"phones take no character of the name %1"_s.arg(file));
    case Fault::NoConverter:
        return missing(failure.program);
    case Fault::NoMp3:
        return warning(u"Die Datei "_s + file +
                           u" kann nicht umgewandelt werden: SoX liest hier kein MP3. Installieren Sie das "
                           u"Paket libsox-fmt-mp3."_s,
                       u"%1 can't be converted: SoX reads no MP3 here; install the package \"%2\""_s.arg(
                           file, u"libsox-fmt-mp3"_s));
    case Fault::TooLong:
        return warning(u"Die Umwandlung von "_s + file + u" dauert zu lange und wurde abgebrochen."_s,
                       u"%1 took too long to convert"_s.arg(file));
    case Fault::NotWritten:
        return warning(u"Fehler beim Schreiben der Datei "_s + file,
                       u"%1 can't be written%2"_s.arg(file, because(failure)));
    case Fault::Cancelled:
        break;
    }
    return {.text = u"Die Umwandlung wurde abgebrochen."_s,
            .icon = Icon::Information,
            .english = u"interrupted; %1 was not converted"_s.arg(file)};
} // namespace

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
