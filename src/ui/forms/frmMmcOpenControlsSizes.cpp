// The upload panel's line about sizes: bytes and length of what is selected, and the room that it leaves.

#include "app/mdlKonverter.h"
#include "toolkit/BatchMeter.h"
#include "ui/controls/TrimChoice.h"
#include "ui/forms/frmMmcOpenControls.h"

#include <QLabel>
#include <QLocale>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

/// Finds the sizes of what is selected, for the present choices. The size of a single picture is known with
/// its preview.
void frmMmcOpenControls::measure()
{
    m_sizes.stop();
    if (m_paths.isEmpty() || m_type == Picture)
        return;
    m_sizes.measure(m_paths, options());
    showSizes();
}

void frmMmcOpenControls::showSizes()
{
    const UploadSizes::Sum& sum = m_sizes.sum();
    const double seconds = m_sizes.seconds(m_path);
    if (!m_sizes.isDone()) {
        showRoom(m_paths.size() > 1
                     ? QStringList(
                           u"Größe wird ermittelt... %1 von %2"_s.arg(sum.measured + 1).arg(m_paths.size()))
                     : QStringList(),
                 {});
        return;
    }
    m_lblLength->setText(seconds > 0 ? u"Länge: %1 min"_s.arg(toolkit::timeText(std::max(seconds, 1.0)))
                                     : u"Die Länge ist nicht bekannt."_s);
    if (m_trim->isUsed() && m_trim->seconds() <= 0) { // a box at each key would hinder the typing
        showRoom({u"Bitte geben Sie die Sekunden als ganze Zahl größer Null ein."_s}, {});
        return;
    }
    QStringList lines;
    if (sum.unfit > 0 && m_paths.size() > 1)
        lines.append(
            u"%1 von %2 Dateien passen nicht und werden ausgelassen."_s.arg(sum.unfit).arg(m_paths.size()));
    if (sum.failure && !media::isBadInput(sum.failure->fault))
        lines.append(media::messageFor(*sum.failure).text);
    else if (sum.failure && m_paths.size() == 1)
        lines.append(u"Diese Datei lässt sich nicht umwandeln und wird nicht übertragen."_s);
    showRoom(lines, sum.unfit < m_paths.size() ? std::optional(sum.bytes) : std::nullopt);
}

/// Shows the bytes in the phone and the room that they leave, after other lines.
void frmMmcOpenControls::showRoom(QStringList lines, std::optional<qint64> bytes)
{
    if (bytes) {
        lines.append(
            u"Größe im Telefon: %1 (%2 Bytes)"_s.arg(app::FormatSizeKB(*bytes), QLocale().toString(*bytes)));
        if (m_question.freeBytes && *bytes <= *m_question.freeBytes)
            lines.append(u"Danach sind im Telefon noch %1 frei."_s.arg(
                app::FormatSizeKB(*m_question.freeBytes - *bytes)));
        else if (m_question.freeBytes)
            lines.append(
                u"Im Telefon sind nur noch %1 frei."_s.arg(app::FormatSizeKB(*m_question.freeBytes)));
    }
    m_lblResult->setText(lines.join(u'\n'));
}

} // namespace kalmo::ui
