#include "ui/controls/SearchField.h"

#include "ui/icons/Icons.h"

#include <QLineEdit>
#include <QToolButton>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

void makeSearchField(QLineEdit& field)
{
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
