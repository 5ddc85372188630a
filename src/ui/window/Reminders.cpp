#include "ui/window/Reminders.h"

#include "ui/icons/Icons.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QStackedLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {
constexpr int reminderPictureSize = 22;
}

Reminders::Reminders(QWidget* parent) : QFrame(parent), m_place(new QStackedLayout(this))
{
    setObjectName(u"reminders"_s);
    m_place->setContentsMargins(0, 0, 0, 0);
    addFrame(u"fraSaveReminder"_s, u"warning"_s, u"Speicher Hinweis"_s,
             u"Telefonbuch bzw- Providerliste geändert - \"Schreiben\" nicht vergessen."_s);
    addFrame(u"fraFFScloseReminder"_s, u"warning"_s, u"Hinweis"_s,
             u"Dateisystem geöffnet! Telefon nicht trennen! Erst Kalmo beenden oder Funktion wechseln."_s);
    addFrame(
        u"fraHinweisTelNichtInMenu"_s, u"handy"_s, u"Hinweis"_s,
        u"Während Kalmo Daten zum Telefon sendet oder empfängt, darf das Telefon NICHT in einem Untermenü "
        u"sein, da in Untermenüs die Datenübertragung behindert wird."_s);
    showKind(NoMenu);
}

void Reminders::addFrame(const QString& name, const QString& picture, const QString& caption,
                         const QString& text)
{
    auto* frame = new QFrame(this);
    frame->setObjectName(name);
    frame->setAccessibleName(caption);
    frame->setAccessibleDescription(text);
    frame->setAutoFillBackground(true);
    frame->setBackgroundRole(QPalette::AlternateBase);
    auto* line = new QHBoxLayout(frame);
    line->setContentsMargins(16, 6, 16, 6);
    line->setSpacing(12);
    auto* image = new QLabel(frame);
    image->setPixmap(icon(picture).pixmap(reminderPictureSize));
    auto* heading = new QLabel(caption, frame);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    auto* label = new QLabel(text, frame);
    label->setObjectName(name == u"fraSaveReminder"_s ? u"Label1"_s : name + u"_text"_s);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    line->addWidget(image);
    line->addWidget(heading);
    line->addWidget(label, 1);
    m_place->addWidget(frame);
}

void Reminders::showKind(Kind kind)
{
    m_shown.removeAll(kind);
    m_shown.append(kind);
    showFront();
}

void Reminders::hideKind(Kind kind)
{
    m_shown.removeAll(kind);
    showFront();
}

void Reminders::showFront()
{
    setVisible(!m_shown.isEmpty());
    if (m_shown.isEmpty() || m_place->currentIndex() == m_shown.last())
        return;
    m_place->setCurrentIndex(m_shown.last());
    QAccessibleEvent shown(m_place->currentWidget(), QAccessible::Alert);
    QAccessible::updateAccessibility(&shown);
}

} // namespace kalmo::ui
