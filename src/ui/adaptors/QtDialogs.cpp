#include "ui/adaptors/QtDialogs.h"

#include "app/Version.h"
#include "ui/adaptors/ScrolledBox.h"
#include "ui/adaptors/WindowInFront.h"
#include "ui/icons/Icons.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <cstdlib>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::FileRequest;
using toolkit::Icon;
using toolkit::Message;

namespace {

constexpr int pictureSize = 40; // logical pixels

struct ButtonRow
{
    Buttons buttons;
    QMessageBox::StandardButtons shown;
    QMessageBox::StandardButton first;
    QMessageBox::StandardButton onClose;
};

constexpr ButtonRow buttonTable[] = {
    {Buttons::Ok, QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok},
    {Buttons::OkCancel, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok, QMessageBox::Cancel},
    {Buttons::YesNo, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, QMessageBox::No},
    {Buttons::YesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes,
     QMessageBox::Cancel},
    {Buttons::RetryCancel, QMessageBox::Retry | QMessageBox::Cancel, QMessageBox::Retry, QMessageBox::Cancel},
};

struct AnswerRow
{
    Answer answer;
    QMessageBox::StandardButton button;
};

constexpr AnswerRow answerTable[] = {
    {Answer::Ok, QMessageBox::Ok}, {Answer::Cancel, QMessageBox::Cancel}, {Answer::Yes, QMessageBox::Yes},
    {Answer::No, QMessageBox::No}, {Answer::Retry, QMessageBox::Retry},
};

/// While a box waits for the user the cursor is plain, even in the middle of an operation.
class PlainCursor
{
public:
    PlainCursor() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~PlainCursor() { QApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(PlainCursor)
};

QString pictureOf(Icon icon)
{
    switch (icon) {
    case Icon::Information:
        return u"div"_s;
    case Icon::Question:
        return u"help"_s;
    case Icon::Exclamation:
        return u"warning"_s;
    case Icon::Critical:
        return u"critical"_s;
    case Icon::None:
        break;
    }
    return {};
}

const ButtonRow& rowOf(Buttons buttons)
{
    return *std::ranges::find(buttonTable, buttons, &ButtonRow::buttons);
}

QMessageBox::StandardButton defaultOf(const ButtonRow& row, Answer wanted)
{
    const auto found = std::ranges::find(answerTable, wanted, &AnswerRow::answer);
    return row.shown.testFlag(found->button) ? found->button : row.first;
}

Answer answerOf(int button)
{
    const auto found = std::ranges::find(answerTable, button, &AnswerRow::button);
    return found == std::end(answerTable) ? Answer::Cancel : found->answer;
}

QStringList filtersOf(const FileRequest& request)
{
    QStringList filters;
    for (const toolkit::FileType& type : request.types) {
        const QString patterns = u'(' + type.patterns.join(u' ') + u')';
        const QString listed = u'(' + type.patterns.join(u';') + u')'; // the toolkit parts them by blanks
        // Most descriptions contain their patterns already.
        const QString description = QString(type.description).replace(listed, patterns);
        filters.append(description.endsWith(patterns) ? description : description + u' ' + patterns);
    }
    return filters;
}

/// The file name extension of a filter, "csv" for "CSV Datei (*.csv)". Empty if any is accepted, or if a file
/// may be saved with several: the caller appends the right one.
QString endingOf(const QString& filter, QFileDialog::AcceptMode accept)
{
    const QString patterns = filter.section(u'(', -1).section(u')', 0, 0);
    if (accept == QFileDialog::AcceptSave && patterns.contains(u' '))
        return {};
    const QString pattern = patterns.section(u' ', 0, 0);
    return pattern.startsWith(u"*."_s) && !pattern.endsWith(u'*') ? pattern.sliced(2) : QString();
}

/// The parent of a dialog. While the user works in another program the task bar shows that Kalmo asks.
QWidget* parentInFront()
{
    QWidget* window = windowInFront();
    if (window)
        QApplication::alert(window); // does nothing for the active window
    return window;
}

QStringList chooseFiles(const FileRequest& request, QFileDialog::AcceptMode accept,
                        QFileDialog::FileMode mode)
{
    const PlainCursor cursor;
    QFileDialog dialog(parentInFront(), request.title, request.folder);
    dialog.setAcceptMode(accept);
    dialog.setFileMode(mode);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.confirmOverwrite);
    if (!request.acceptLabel.isEmpty())
        dialog.setLabelText(QFileDialog::Accept, request.acceptLabel);
    const QStringList filters = filtersOf(request);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        dialog.setDefaultSuffix(endingOf(filters.first(), accept));
        QObject::connect(
            &dialog, &QFileDialog::filterSelected, &dialog,
            [&dialog, accept](const QString& filter) { dialog.setDefaultSuffix(endingOf(filter, accept)); });
    }
    if (!request.name.isEmpty())
        dialog.selectFile(request.name);
    QStringList paths;
    if (dialog.exec() == QDialog::Accepted) {
        for (const QString& file : dialog.selectedFiles())
            paths.append(QFileInfo(file).absoluteFilePath());
    }
    return paths;
}

} // namespace

void dressBox(QMessageBox& box, Icon icon)
{
    if (icon != Icon::None)
        box.setIconPixmap(pixmap(pictureOf(icon), pictureSize, box.devicePixelRatioF()));
    for (QAbstractButton* button : box.buttons())
        button->setIcon({}); // the toolkit's own icons have another style
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

QMessageBox* makeSideQuestion(const QString& text, QWidget* parent)
{
    auto* box = new QMessageBox(QMessageBox::Question, app::productName(), text,
                                QMessageBox::Yes | QMessageBox::No, parent);
    dressBox(*box, Icon::Question);
    box->setDefaultButton(QMessageBox::No);
    box->setEscapeButton(QMessageBox::No);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QGuiApplication::setOverrideCursor(Qt::ArrowCursor); // the box is not busy
    QObject::connect(box, &QMessageBox::finished, box, [] { QGuiApplication::restoreOverrideCursor(); });
    return box;
}

Answer QtDialogs::Show(const Message& message)
{
    const PlainCursor cursor;
    const ButtonRow& row = rowOf(message.buttons);
    // The window in front may go while the box waits: a search destroys its splash.
    const QPointer<ScrolledBox> box =
        new ScrolledBox(QMessageBox::NoIcon, message.title, message.text, row.shown, parentInFront());
    const auto end = qScopeGuard([&box] { delete box; });
    dressBox(*box, message.icon);
    box->setDefaultButton(defaultOf(row, message.defaultButton));
    box->setEscapeButton(row.onClose);
    const int button = box->exec();
    return answerOf(box ? button : row.onClose);
}

QString QtDialogs::OpenFile(const FileRequest& request)
{
    return chooseFiles(request, QFileDialog::AcceptOpen, QFileDialog::ExistingFile).value(0);
}

QStringList QtDialogs::OpenFiles(const FileRequest& request)
{
    return chooseFiles(request, QFileDialog::AcceptOpen, QFileDialog::ExistingFiles);
}

QString QtDialogs::SaveFile(const FileRequest& request)
{
    return chooseFiles(request, QFileDialog::AcceptSave, QFileDialog::AnyFile).value(0);
}

QString QtDialogs::PickFolder(const QString& title, const QString& start)
{
    const PlainCursor cursor;
    const QString chosen = QFileDialog::getExistingDirectory(parentInFront(), title, start);
    return chosen.isEmpty() ? QString() : QDir(chosen).absolutePath();
}

void QtEnding::end(int status)
{
    std::_Exit(status);
}

} // namespace kalmo::ui
