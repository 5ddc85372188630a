#include "app/FileAssociations.h"

#include "app/Version.h"

#include <QFileInfo>

namespace kalmo::app {

using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

bool NoAssociationDialog(Context& context, Desktop& desktop, const QString& path, const QString& title)
{
    const QString extension = QFileInfo(path).suffix();
    const QString upper = extension.toUpper();
    if (upper == u"3GP"_s || upper == u"AMR"_s) {
        context.dialogs.Show(
            {.text =
                 u"Auf Ihrem Rechner ist aktuell kein Programm zum Öffnen von *.3GP Videos oder *.AMR Daeien "
                 u"installiert.\n"
                 u"Bitte installieren Sie sich das passende Programm. Eine Auswahl finden Sie auf der "
                 u"Orvane! Homepage im Internet im Bereich Software > Download."_s,
             .title = title,
             .icon = Icon::Information});
        return false;
    }
    if (upper == u"L22"_s || upper == u"722"_s) {
        context.dialogs.Show(
            {.text =
                 u"Aus urheberrechtlichen Gründen können mit Kalmo keine Klingeltöne aus dem Telefon zurück "
                 u"in weit verbreitete Audioformate (*.wav oder *.mp3) umgewandelt werden.\n\n"
                 u"Sie können den Klingelton aber auf Ihrem Computer speichern und auf ein anderes Telefon "
                 u"übertragen, indem Sie oben die Knöpfe \"PC -> Tel\" bzw. \"PC <- Tel\" verwenden."_s,
             .title = title,
             .icon = Icon::Information});
        return false;
    }
    const Answer answer = context.dialogs.Show(
        {.text = u"Für die Datei "_s + QFileInfo(path).fileName() +
                 u" ist auf Ihrem Rechner aktuell kein Programm als Standard zum Öffnen dieses Dateityps "
                 u"festgelegt.\n"
                 u"Bitte installieren Sie ein Programm, das mit *."_s +
                 extension +
                 u" Dateien umgehen kann. Wenn ein solche Programm schon vorhanden sein sollte, wählen Sie "
                 u"\"JA\" und geben Sie den Pfad zu diesen Programm an.\n\n"
                 u"Programme zum Öffnen manuell wählen?"_s,
         .title = title,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question});
    return answer == Answer::Yes && OpenWithDialog(context, desktop, path);
}

bool OpenWithDialog(Context& context, Desktop& desktop, const QString& path)
{
    // Without that folder the chooser starts at its own default.
    const QString program =
        context.dialogs.OpenFile({.title = productName() + u" - Programm wählen"_s, .folder = u"/usr/bin"_s});
    if (program.isEmpty())
        return false;
    if (desktop.openWith(program, path))
        return true;
    context.dialogs.Show({.text = u"Das Programm "_s + program + u" konnte nicht gestartet werden."_s,
                          .icon = Icon::Exclamation});
    return false;
}

} // namespace kalmo::app
