#include "ui/forms/EntryDialogs.h"

#include "ui/controls/Named.h"
#include "ui/controls/RoomLeft.h"
#include "ui/help/HelpWindow.h"

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QShortcut>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr double marginPart = 0.9; // of a line's height
constexpr double spacingPart = 0.5;
constexpr int fieldCharacters = 36; // that a field shows at least

} // namespace

void makeRoom(QLayout& layout)
{
    const int line = QFontMetrics(QGuiApplication::font()).lineSpacing();
    const int margin = qRound(line * marginPart);
    layout.setContentsMargins(margin, margin, margin, margin);
    layout.setSpacing(qRound(line * spacingPart));
}

QLabel* addField(QFormLayout& form, const QString& label, QWidget* field)
{
    auto* shown = new QLabel(label);
    shown->setBuddy(field);
    field->setMinimumWidth(field->fontMetrics().averageCharWidth() * fieldCharacters);
    form.addRow(shown, field);
    if (auto* line = qobject_cast<QLineEdit*>(field))
        new RoomLeft(*line);
    return shown;
}

void showWhole(QLineEdit& field, const QString& text)
{
    field.setMaxLength(std::max(field.maxLength(), static_cast<int>(text.size())));
    field.setText(text);
}

QGroupBox* makeNameAndNumber(QLineEdit* txtName, QLineEdit* txtNr)
{
    auto* frame = named(new QGroupBox(u"Eintrag"_s), u"Frame1"_s);
    auto* form = new QFormLayout(frame);
    makeRoom(*form);
    addField(*form, u"&Name"_s, named(txtName, u"txtName"_s, u"Name"_s));
    addField(*form, u"N&ummer"_s, named(txtNr, u"txtNr"_s, u"Nummer"_s));
    txtNr->setToolTip(u"Ziffern, * und #, P für eine Wählpause, R für die Rückfragetaste, ein + am Anfang"_s);
    return frame;
}

QWidget* makeSaveAndCancel(QDialog& dialog, QPushButton* save, QPushButton* cancel, int helpTopic)
{
    auto* box = new QDialogButtonBox;
    box->addButton(save, QDialogButtonBox::AcceptRole);
    box->addButton(cancel, QDialogButtonBox::RejectRole);
    save->setDefault(true);
    QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    dialog.setWindowModality(Qt::WindowModal);
    auto* help = new QShortcut(QKeySequence::HelpContents, &dialog);
    QObject::connect(help, &QShortcut::activated, &dialog, [helpTopic] { openHelp(helpTopic); });
    return box;
}

} // namespace kalmo::ui
