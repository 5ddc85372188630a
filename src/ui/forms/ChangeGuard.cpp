#include "ui/forms/ChangeGuard.h"

#include "ui/adaptors/ProgressWidgets.h"
#include "ui/lists/SearchLine.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::Answer;

namespace {

/// The values that the user can change, in the order of the widgets. Editable boxes contain a field of their
/// own.
QStringList valuesOf(const QWidget& part)
{
    QStringList values;
    for (const auto* field : part.findChildren<QLineEdit*>()) {
        if (!qobject_cast<const SearchLine*>(field->parentWidget())) // a search changes nothing
            values.append(field->text());
    }
    for (const auto* box : part.findChildren<QComboBox*>())
        values.append(box->currentText());
    for (const auto* button : part.findChildren<QAbstractButton*>()) {
        if (button->isCheckable() && !qobject_cast<const CancelCheck*>(button))
            values.append(button->isChecked() ? u"1"_s : u"0"_s);
    }
    return values;
}

} // namespace

ChangeGuard::ChangeGuard(QDialog& dialog, const QAbstractButton& button, app::Context& context)
    : QObject(&dialog), m_dialog(dialog), m_button(button), m_part(&dialog), m_context(context),
      m_question(u"Ihre Änderungen sind noch nicht gespeichert.\n\nSollen sie verworfen werden?"_s)
{
    dialog.installEventFilter(this);
}

bool ChangeGuard::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Show && !event->spontaneous())
        keep();
    const bool isEscape = event->type() == QEvent::KeyPress &&
                          static_cast<const QKeyEvent*>(event)->matches(QKeySequence::Cancel);
    const bool isClose = event->type() == QEvent::Close && m_dialog.isVisible();
    if ((!isEscape && !isClose) || mayGo())
        return false;
    event->ignore();
    return true;
}

QStringList ChangeGuard::values() const
{
    QStringList values = valuesOf(*m_part);
    if (m_more)
        values.append(m_more());
    return values;
}

bool ChangeGuard::mayGo()
{
    if (!m_button.isEnabled() || values() == m_before)
        return true;
    return m_context.dialogs.Show({.text = m_question,
                                   .title = m_dialog.windowTitle(),
                                   .buttons = toolkit::Buttons::YesNo,
                                   .icon = toolkit::Icon::Question,
                                   .defaultButton = Answer::No}) == Answer::Yes;
}

} // namespace kalmo::ui
