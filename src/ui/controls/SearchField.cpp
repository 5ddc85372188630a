#include "ui/controls/SearchField.h"

#include "ui/controls/ReadableColour.h"
#include "ui/icons/Icons.h"

#include <QLineEdit>
#include <QToolButton>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

/// The toolkit's colour for hints is half transparent, and black in some dark palettes.
void makeHintReadable(QLineEdit& field)
{
    const QColor text = field.palette().color(QPalette::Text);
    const QColor ground = field.palette().color(QPalette::Base);
    const QColor between((text.red() + ground.red()) / 2, (text.green() + ground.green()) / 2,
                         (text.blue() + ground.blue()) / 2);
    QPalette colours;
    colours.setColor(QPalette::PlaceholderText, readableOn(between, ground));
    field.setPalette(colours);
}

} // namespace

void makeSearchField(QLineEdit& field, const QString& hint)
{
    field.setPlaceholderText(hint);
    makeHintReadable(field);
    // The toolkit's buttons in a field have no name for a screen reader.
    field.setClearButtonEnabled(true);
    for (auto* button : field.findChildren<QToolButton*>())
        button->setAccessibleName(u"Suche leeren"_s);
    field.addAction(icon(u"search"_s), QLineEdit::LeadingPosition);
    for (auto* button : field.findChildren<QToolButton*>()) {
        if (button->accessibleName().isEmpty())
            button->setAccessibleName(u"Suche"_s);
    }
}

} // namespace kalmo::ui
