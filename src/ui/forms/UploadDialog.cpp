#include "ui/forms/UploadDialog.h"

#include "ui/controls/FormScroll.h"
#include "ui/controls/ScreenRoom.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/forms/SomeOf.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int widthInLetters = 130;
constexpr int sidebarInLetters = 24;
constexpr int heightInLetters = 98;

QStringList filtersOf(media::UploadKind kind)
{
    QStringList filters;
    for (const toolkit::FileType& type : media::fileTypes(kind))
        filters.append(type.description.section(u'(', 0, 0) + u'(' + type.patterns.join(u' ') + u')');
    return filters;
}

/// The dialog of the toolkit, since that of the desktop takes no panel.
std::unique_ptr<QFileDialog> makeDialog(const UploadQuestion& question, QWidget* parent)
{
    auto dialog =
        std::make_unique<QFileDialog>(parent, u"Datei auf zum Telefon übertragen"_s, question.folder);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setObjectName(u"dsCmDlg"_s);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilters(filtersOf(question.kind));
    dialog->setLabelText(QFileDialog::Accept, u"Ü&bertragen"_s);
    dialog->setLabelText(QFileDialog::Reject, u"Abbrechen"_s);
    for (QAbstractButton* button : dialog->findChild<QDialogButtonBox*>()->buttons())
        button->setIcon({}); // the toolkit's own are of another style
    QHeaderView* columns = dialog->findChild<QTreeView*>(u"treeView"_s)->header();
    columns->setSectionResizeMode(QHeaderView::ResizeToContents);
    columns->setSectionResizeMode(0, QHeaderView::Stretch); // the names get the rest
    return dialog;
}

/// The selected files, without folders and names that are being typed.
QStringList filesOf(const QFileDialog& dialog)
{
    QStringList files;
    for (const QString& path : dialog.selectedFiles()) {
        if (QFileInfo(path).isFile())
            files.append(path);
    }
    return files;
}

/// Escape asks before it discards what was chosen for the files.
void guardChoices(QDialog& dialog, const frmMmcOpenControls& choices, const QAbstractButton& send,
                  app::Context& context)
{
    auto* guard = new ChangeGuard(dialog, send, context);
    guard->watchOnly(choices);
    guard->setQuestion(u"Die Dateien sind noch nicht übertragen.\n\nSollen Ihre Angaben verworfen werden?"_s);
}

constexpr qsizetype mostNamesShown = 5;

QString namesOf(const QStringList& paths)
{
    QStringList names;
    for (const QString& path : paths)
        names.append(QFileInfo(path).fileName());
    return someOf(names, mostNamesShown, u", "_s);
}

/// Shows what the given files become in the phone, and asks to send them.
std::optional<UploadChoice> confirmUpload(Program& program, const UploadQuestion& question, QWidget* parent)
{
    QDialog dialog(parent);
    dialog.setObjectName(u"dlgGiven"_s);
    dialog.setWindowTitle(u"Zum Telefon übertragen"_s);
    auto* controls = new frmMmcOpenControls(program, question);
    auto* names = new QLabel(namesOf(question.given));
    names->setTextFormat(Qt::PlainText);
    names->setWordWrap(true);
    auto* buttons = new QDialogButtonBox;
    QAbstractButton* send = buttons->addButton(u"Ü&bertragen"_s, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"Abbrechen"_s, QDialogButtonBox::RejectRole);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(names);
    layout->addWidget(controls, 1);
    layout->addWidget(buttons);
    scrollAbove(*layout, layout->indexOf(buttons));
    guardChoices(dialog, *controls, *send, program.context);
    controls->showSelection(question.given);
    send->setEnabled(std::ranges::any_of(
        question.given, [&question](const QString& path) { return media::isFit(path, question.kind); }));
    for (;;) {
        const bool isAccepted = dialog.exec() == QDialog::Accepted;
        controls->cmdSndStop_Click();
        if (!isAccepted)
            return {};
        if (auto choice = controls->GetSelFiles(question.given)) // otherwise the user corrects the choice
            return choice;
    }
}

} // namespace

std::optional<UploadChoice> chooseUpload(Program& program, const UploadQuestion& question, QWidget* parent)
{
    if (!question.given.isEmpty())
        return confirmUpload(program, question, parent);
    const auto dialog = makeDialog(question, parent);
    auto* controls = new frmMmcOpenControls(program, question);
    auto* layout = qobject_cast<QGridLayout*>(dialog->layout());
    layout->addWidget(controls, layout->rowCount(), 0, 1, layout->columnCount());
    guardChoices(*dialog, *controls, *dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open),
                 program.context);
    // Its text follows the selection; the dialog's own signal comes ahead of it.
    QObject::connect(dialog->findChild<QLineEdit*>(u"fileNameEdit"_s), &QLineEdit::textChanged, controls,
                     [&dialog, controls] { controls->showSelection(filesOf(*dialog)); });
    const int letter = dialog->fontMetrics().averageCharWidth();
    resizeWithinScreen(*dialog, {widthInLetters * letter, heightInLetters * letter});
    dialog->findChild<QSplitter*>(u"splitter"_s)
        ->setSizes({sidebarInLetters * letter, (widthInLetters - sidebarInLetters) * letter});
    for (;;) {
        const bool isAccepted = dialog->exec() == QDialog::Accepted;
        controls->cmdSndStop_Click();
        const QStringList paths = dialog->selectedFiles();
        if (!isAccepted || paths.isEmpty())
            return {};
        if (auto choice = controls->GetSelFiles(paths)) // otherwise the user corrects the choice
            return choice;
    }
}

} // namespace kalmo::ui
