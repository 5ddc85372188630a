#include "ui/window/AboutBox.h"

#include "app/Version.h"
#include "ui/adaptors/QtDialogs.h"
#include "ui/icons/Icons.h"

#include <QMessageBox>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

void showAbout(QWidget& parent)
{
    QMessageBox box(&parent);
    box.setObjectName(u"aboutBox"_s);
    box.setWindowTitle(u"Über Kalmo"_s);
    box.setStandardButtons(QMessageBox::Close);
    dressBox(box, toolkit::Icon::None);
    box.setIconPixmap(programIcon().pixmap(64));
    box.setTextFormat(Qt::RichText);
    box.setText(u"<h3>%1 %2</h3>"_s.arg(app::productName(), app::programVersion()) +
                u"<p>Verwaltet Telefonbuch, Dateien, Klingeltöne und Einstellungen von "
                u"DECT-Schnurlostelefonen.</p>"_s);
    box.setInformativeText(u"Stand %1. Läuft mit Qt %2.\n\nVor jeder Änderung sichert Kalmo, was das Telefon "
                           u"enthält."_s.arg(app::versionDate(), QString::fromLatin1(qVersion())));
    box.exec();
}

} // namespace kalmo::ui
