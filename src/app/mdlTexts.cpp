#include "app/mdlTexts.h"

#include <array>

namespace kalmo::app {

namespace {

struct Row
{
    int id;
    QStringView text;
};

constexpr std::array<Row, 6> table = {{
    {TextSettingsCaption, u"Einstellungen"},
    {TextSearching, u"Suche Telefon an"},
    {TextTransferError, u"Es ist ein Übertragungsfehler aufgetreten. ... Fehlercode: "},
    {TextChangeInterface, u"Möchten Sie die Schnittstelleneinstellungen ändern?"},
    {TextCancel, u"Abbruch"},
    {TextSave, u"Speichern"},
}};

} // namespace

QString ResText(int id)
{
    for (const Row& row : table) {
        if (row.id == id)
            return row.text.toString();
    }
    return QStringLiteral("unknow ID");
}

} // namespace kalmo::app
