#include "obex/ResponseCodes.h"

#include "app/Version.h"

#include <array>

namespace kalmo::obex {

using namespace Qt::StringLiterals;

namespace {

constexpr int finalBit = 0x80;

/// %1 in the texts is the program's name. If the English text is empty the German one holds for both.
struct CodeRow
{
    int code; // of a response without its final bit
    QStringView german;
    QStringView english = {};
};

constexpr auto responses = std::to_array<CodeRow>({
    {0x10, u"ReCode: 100 Continue"},
    {0x20, u"ReCode: 200 OK, Success"},
    {0x21, u"ReCode: 201 Created"},
    {0x22, u"ReCode: 202 Accepted"},
    {0x23, u"ReCode: 203 Non-Authoritative Information"},
    {0x24, u"ReCode: 204 No Content"},
    {0x25, u"ReCode: 205 Reset Content"},
    {0x26, u"ReCode: 206 Partial Content"},
    {0x30, u"ReCode: 300 Multiple Choices"},
    {0x31, u"ReCode: 301 Moved Permanently"},
    {0x32, u"ReCode: 302 Moved temporarily"},
    {0x33, u"ReCode: 303 See Other"},
    {0x34, u"ReCode: 304 Not modified"},
    {0x35, u"ReCode: 305 Use Proxy"},
    {0x40, u"ReCode: 400 Bad Request - server couldn’t understand request"},
    {0x41, u"ReCode: 401 Unauthorized"},
    {0x42, u"ReCode: 402 Payment required"},
    {0x43, u"ReCode: 403 Forbidden - operation is understood but refused"},
    {0x44, u"ReCode: 404 Data Not Found"},
    {0x45, u"ReCode: 405 Method not allowed"},
    {0x46, u"ReCode: 406 Not Acceptable"},
    {0x47, u"ReCode: 407 Proxy Authentication required"},
    {0x48, u"ReCode: 408 Request Time Out"},
    {0x49, u"ReCode: 409 Conflict"},
    {0x4A, u"ReCode: 410 Gone"},
    {0x4B, u"ReCode: 411 Length Required"},
    {0x4C,
     u"ReCode: 412 Precondition failed\n\n"
     u"Wenn diese Meldung beim Löschen eines Ordners auftaucht, stellen Sie bitte sicher, daß der Ordner "
     u"keine Dateien mehr enthält, bevor er gelöscht wird. Lässt sich eine einzelne Datei oder ein leerer "
     u"Ordner auf normalem Weg nicht löschen, machen Sie einen Rechtsklick auf die Datei und wählen Sie "
     u"\"Löschen erzwingen\".",
     u"ReCode: 412 Precondition failed"},
    {0x4D, u"ReCode: 413 Requested entity too large"},
    {0x4E, u"ReCode: 414 Request URL too large"},
    {0x4F, u"ReCode: 415 Unsupported media type"},
    {0x50, u"ReCode: 500 Internal Server Error\n\nBitte wiederholen Sie die letzte Aktion.",
     u"ReCode: 500 Internal Server Error, please try again"},
    {0x51, u"ReCode: 501 Not Implemented"},
    {0x52, u"ReCode: 502 Bad Gateway"},
    {0x53, u"ReCode: 503 Service Unavailable"},
    {0x54, u"ReCode: 504 Gateway Timeout"},
    {0x55, u"ReCode: 505 HTTP version not supported"},
    {0x60,
     u"ReCode: Database Full - Es steht kein weiterer Speicherplatz zur Verfügung. Die Aktion wurde "
     u"abgebrochen",
     u"ReCode: Database Full, there is no room left in the phone"},
    {0x61,
     u"ReCode: Database Locked\n\n"
     u"Bitte wiederholen Sie die letzte Aktion. Sollte dieser Fehler sofort wieder auftreten, muß das "
     u"Telefon einmal aus- und wieder eingeschaltet sowie %1 neu gestartet werden.",
     u"ReCode: Database Locked, please try again; if it stays so, switch the phone off and on"},
});

static_assert(largestObject == 64 * app::megabyte, "a text below says it");

constexpr auto localCodes = std::to_array<CodeRow>({
    {Timeout,
     u"TimeOut - Das Telefon hat in der vorgegebenen Zeit nicht geantwortet. Bitte wiederholen Sie die "
     u"letzte Aktion.\n\n"
     u"Sollte dieser Fehler sofort wieder auftauchen, muß das aktuelle Programmfenster geschlossen und "
     u"wieder aufgerufen werden, um die Kommunikation mit dem Telefon erneut aufzubauen. Taucht der Fehler "
     u"danach immer noch sofort wieder auf, muß das Telefon einmal aus- und wieder eingeschaltet und %1 neu "
     u"gestartet werden.",
     u"the phone did not answer in time"},
    {Cancelled, u"Vorzeitiger Abbruch durch den Benutzer.", u"cancelled by the user"},
    {DeleteFailed, u"Löschen einer Datei fehlgeschlagen.", u"a local file could not be removed"},
    {UnknownProvider,
     u"Der aktuelle Provider für den das Providerlogo zugewiesen werden soll ist Orvane! nocht nicht "
     u"bekannt. Bitte schließen Sie dieses Programmfester, stellen Sie sicher, daß das Handy im Netz "
     u"eingebucht ist und rufen Sie die Funktion noch einmal auf.",
     u"the network's provider is not known"},
    {TooMuchData, u"Die Daten sind größer als 64 MB. Die Übertragung wurde abgebrochen.",
     u"the data is larger than 64 MB; the transfer was stopped"},
    {RequestTooLong, u"Der Name oder Pfad ist zu lang für das Telefon. Es wurde nichts gesendet.",
     u"the name or path is too long for the phone; nothing was sent"},
    {ChannelNotOpen,
     u"Der Datenkanal zum Telefon ist nicht offen oder mit einer anderen Aktion beschäftigt. Es wurde "
     u"nichts gesendet.",
     u"the data channel to the phone is not open or busy; nothing was sent"},
    {ReadFailed, u"Die Datei auf dem Computer konnte nicht gelesen werden.",
     u"the local file could not be read"},
    {WriteFailed, u"Die Datei konnte auf dem Computer nicht gespeichert werden.",
     u"the local file could not be written"},
    {FolderUnknown,
     u"Der aktuelle Ordner im Telefon ist nicht bekannt. Wechseln Sie zuerst in das Basisverzeichnis. Es "
     u"wurde nichts gesendet.",
     u"the phone's current folder is not known; nothing was sent"},
    {NeverEnough,
     u"Das Telefon fordert immer weitere Daten an, obwohl die Datei vollständig gesendet wurde. Die "
     u"Übertragung wurde abgebrochen.",
     u"the phone keeps asking for more after the end of the file; the transfer was aborted"},
    {ChannelRefused,
     u"Das Telefon hat den Datenkanal nicht geöffnet. Stellen Sie sicher, daß das Telefon in keinem "
     u"Menüpunkt ist - ggf. die rote Taste mehrfach drücken - und wiederholen Sie die Aktion.",
     u"the phone refused to open its data channel; leave all menus on the phone and try again"},
    {ChannelStuck,
     u"Das Telefon reagiert nicht mehr auf Fernsteuerbefehle. Das Telefon MUSS einmal aus- und wieder "
     u"eingeschaltet und %1 neu gestartet werden.\n"
     u"Häufigster Grund für diesen Fehler ist eine Unterbrechnung während der Kommunikation (Kabel "
     u"Abziehen, IrDA / Bluetooth Verbindungsabbrüche) - Bitte vermeiden Sie diese Unterbrechnungen.",
     u"the phone did not leave its data mode"},
});

const CodeRow* find(int code)
{
    const auto search = [](const auto& table, int wanted) -> const CodeRow* {
        for (const CodeRow& row : table) {
            if (row.code == wanted)
                return &row;
        }
        return nullptr;
    };
    return code < 0 ? search(localCodes, code) : search(responses, code & ~finalBit);
}

QString named(QStringView text)
{
    return text.toString().replace(u"%1"_s, app::productName());
}

QString unknown(int code)
{
    return u"ReCode: unknown ReCode - &H"_s + hexCode(code);
}

} // namespace

QString hexCode(int code)
{
    return QString::number(static_cast<quint16>(code), 16).toUpper();
}

QString GetFriedlyErrMsg(int code)
{
    const CodeRow* row = find(code);
    return row ? named(row->german) : unknown(code);
}

QString friendlyErrorEnglish(int code)
{
    const CodeRow* row = find(code);
    if (!row)
        return unknown(code);
    return named(row->english.isEmpty() ? row->german : row->english);
}

toolkit::Message failureMessage(int code)
{
    const bool isSessionLost = code == Timeout || code == ChannelStuck || code == ChannelNotOpen;
    return {.text = u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"_s +
                    GetFriedlyErrMsg(code),
            .title = app::productName(),
            .icon = toolkit::Icon::Exclamation,
            .english = u"could not access the phone: %1."_s.arg(friendlyErrorEnglish(code)),
            .about = isSessionLost ? toolkit::About::LostSession : toolkit::About::Request};
}

} // namespace kalmo::obex
