#include "ui/lists/ListState.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;

QString placeholderFor(ListState state)
{
    switch (state) {
    case ListState::NotRead:
        return u"Die Liste wurde noch nicht aus dem Telefon gelesen."_s;
    case ListState::Reading:
        return u"Die Liste wird aus dem Telefon gelesen ..."_s;
    case ListState::Failed:
        return u"Die Liste konnte nicht gelesen werden. Prüfen Sie die Verbindung und lesen Sie noch einmal."_s;
    case ListState::Cancelled:
        return u"Das Lesen wurde abgebrochen."_s;
    case ListState::Discarded:
        return u"Die gelesene Liste wurde verworfen. Lesen Sie noch einmal."_s;
    case ListState::Unknown:
        return u"Nach dem Fehler ist offen, was das Telefon enthält. Lesen Sie die Liste neu ein."_s;
    case ListState::NotWritten:
        return u"Die Liste ist leer. Das Telefon behält seine Einträge, bis Sie \"Schreiben\" ausführen."_s;
    case ListState::Read:
        break;
    }
    return u"Die Liste im Telefon ist leer."_s;
}

} // namespace kalmo::ui
