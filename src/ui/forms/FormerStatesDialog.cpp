#include "ui/forms/FormerStatesDialog.h"

#include "app/Version.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/Named.h"
#include "ui/controls/ScreenRoom.h"
#include "ui/controls/ucHeadline.h"
#include "ui/forms/EntryDialogs.h"
#include "ui/forms/FormerStateWords.h"
#include "ui/help/HelpWindow.h"
#include "ui/lists/ListLayout.h"
#include "ui/lists/RowsView.h"
#include "ui/lists/SearchLine.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QShortcut>
#include <QVBoxLayout>

#include <array>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using operations::Cause;
using operations::Record;
using operations::RecordedList;
using operations::State;
using operations::Undo;
using operations::UndoDiff;
using toolkit::ListRow;
using toolkit::ListRows;

namespace {

enum Column { MomentColumn, ListColumn, CauseColumn, EntriesColumn, DifferenceColumn };

constexpr int rowsShown = 9;
constexpr int differencesShown = 6;

const QString introduction = u"Vor jeder Änderung hebt Kalmo auf, was das Telefon enthält. Hier können Sie "
                             u"einen früheren Stand ansehen "
                             u"und zurückholen."_s;
const QString notCompared = u"noch nicht verglichen"_s;
const QString chooseOne =
    u"Wählen Sie einen Stand aus und vergleichen Sie ihn mit dem, was das Telefon jetzt "
    u"enthält."_s;
const QString noStates = u"Kalmo hat an diesem Telefon noch nichts geändert."_s;

std::unique_ptr<ListRows> makeStateRows()
{
    return std::make_unique<ListRows>(u"lvwFormerStates"_s,
                                      QList<toolkit::ListColumn>{{u"Stand vom"_s, toolkit::SortBy::Tag},
                                                                 {u"Liste"_s},
                                                                 {u"vor der Änderung"_s},
                                                                 {u"Einträge"_s, toolkit::SortBy::Tag, true},
                                                                 {u"Unterschiede zu jetzt"_s}});
}

std::unique_ptr<ListRows> makeDifferenceRows()
{
    return std::make_unique<ListRows>(u"lvwDifferences"_s,
                                      QList<toolkit::ListColumn>{{u"Beim Zurückholen"_s}, {u"Eintrag"_s}});
}

ListRow rowOf(const Record& record, const std::optional<UndoDiff>& known)
{
    const QString cause =
        causeInWords(record.cause) + (record.state == State::Unknown ? u" (nicht bestätigt)"_s : QString());
    return {
        .key = record.id,
        .cells = {{momentInWords(record.time), record.id.rightJustified(10, u'0')},
                  {inWords(record.list)},
                  {cause},
                  {QString::number(record.entries), QString::number(record.entries).rightJustified(10, u'0')},
                  {known ? differenceInWords(*known) : notCompared}}};
}

/// The row of the newest record of that list; of any if no list is named. -1 without one.
int newest(const ListRows& rows, const QString& list)
{
    int found = -1;
    for (int row = 0; row < rows.count(); ++row) {
        const auto number = [&rows](int each) { return rows.row(each).cells[MomentColumn].tag; };
        const bool isOfList = list.isEmpty() || rows.text(row, ListColumn) == list;
        if (isOfList && (found < 0 || number(row) > number(found)))
            found = row;
    }
    return found;
}

void setRowsShown(RowsView& view, int rows)
{
    view.setMinimumHeight(view.fontMetrics().height() * (rows + 1) * 3 / 2);
}

} // namespace

FormerStatesDialog::FormerStatesDialog(Program& program, const operations::UndoJob& job, RecordedList list,
                                       QWidget* parent)
    : QDialog(parent), m_program(program), m_job(job),
      m_records(program.context, operations::knownIdentity(program.context.sy)), m_rows(makeStateRows()),
      m_differences(makeDifferenceRows()), m_view(new RowsView), m_search(new SearchLine(*m_view)),
      m_differenceView(new RowsView), m_caption(named(new QLabel, u"lblDifferences"_s)),
      m_compare(named(new QPushButton(u"&Vergleichen"_s), u"cmdCompare"_s)),
      m_putBack(named(new QPushButton(u"&Zurückholen..."_s), u"cmdPutBack"_s)),
      m_close(named(new QPushButton(u"&Schließen"_s), u"cmdClose"_s)),
      m_status(named(new StatusLabel, u"sta"_s, u"Status"_s)), m_bar(named(new ProgressStrip, u"prg"_s)),
      m_cancel(named(new CancelCheck, u"cmdCancel"_s))
{
    setObjectName(u"frmFormerStates"_s);
    setWindowTitle(app::productName() + u" - Frühere Stände"_s);
    setWindowModality(Qt::WindowModal);
    makeRows();
    makeContextMenu();
    layOut();
    auto* help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, [] { openHelp(); });
    m_job.progress = {m_status, m_bar, m_cancel};
    m_job.window = m_busy.get();
    fill();
    select(list);
}

FormerStatesDialog::~FormerStatesDialog() = default;

void FormerStatesDialog::makeRows()
{
    m_view->setRows(*m_rows);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setAccessibleName(u"Frühere Stände"_s);
    m_view->setPlaceholder(noStates);
    m_view->setColumnCharacters({19, 11, 34, 8, 24});
    setRowsShown(*m_view, rowsShown);
    m_differenceView->setRows(*m_differences);
    m_differenceView->setAccessibleName(u"Unterschiede"_s);
    m_differenceView->setColumnCharacters({20, 60});
    setRowsShown(*m_differenceView, differencesShown);
    for (RowsView* view : {m_view, m_differenceView})
        restoreListLayout(*view, m_program.context.settings);
    connect(m_view, &RowsView::rowDoubleClicked, this, &FormerStatesDialog::compare);
    connect(m_rows.get(), &ListRows::selectionChanged, this, &FormerStatesDialog::showChoice);
}

/// The menu offers the actions of the buttons and those of other lists.
void FormerStatesDialog::makeContextMenu()
{
    const auto entry = [this](const QString& text, const QKeySequence& key, const auto& run) {
        auto* action = new QAction(text, this);
        action->setShortcut(key);
        connect(action, &QAction::triggered, this, run);
        m_view->addAction(action);
    };
    const auto ofButton = [entry](QPushButton* button) {
        entry(button->text(), {}, [button] { button->click(); });
    };
    ofButton(m_compare);
    ofButton(m_putBack);
    entry(u"&Kopieren"_s, QKeySequence::Copy,
          [this] { (m_differenceView->hasFocus() ? m_differenceView : m_view)->copySelected(); });
    entry(u"&Suchen"_s, QKeySequence::Find, [this] { m_view->wantSearch(); });
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void FormerStatesDialog::layOut()
{
    auto* layout = new QVBoxLayout(this);
    makeRoom(*layout);
    layout->addWidget(
        named(new ucHeadline(u"refresh"_s, u"Frühere Stände"_s, introduction), u"ucHeadline1"_s));
    layout->addWidget(m_search);
    layout->addWidget(m_view, 3);
    layout->addWidget(m_caption);
    layout->addWidget(m_differenceView, 2);
    QWidget* buttons = makeButtons();
    layout->addWidget(buttons);
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_status, 1);
    foot->addWidget(m_bar);
    foot->addWidget(m_cancel);
    layout->addLayout(foot);
    scrollAbove(*layout, layout->indexOf(buttons));
    m_caption->setWordWrap(true);
    m_bar->hide();
    m_cancel->hide();
    m_cancel->answerIn(*m_status);
    m_busy = std::make_unique<WindowBusy>(QList<QWidget*>{m_search, m_view, m_differenceView, buttons});
    m_status->SetText(u"Bereit."_s);
    const int width = fontMetrics().averageCharWidth() * 122;
    resizeWithinScreen(*this, {width, sizeHint().height()});
}

QWidget* FormerStatesDialog::makeButtons()
{
    auto* box = new QDialogButtonBox;
    box->addButton(m_compare, QDialogButtonBox::ActionRole);
    box->addButton(m_putBack, QDialogButtonBox::ActionRole);
    box->addButton(m_close, QDialogButtonBox::RejectRole);
    m_compare->setDefault(true);
    m_compare->setToolTip(u"Liest, was das Telefon jetzt enthält, und zeigt die Unterschiede"_s);
    m_putBack->setToolTip(u"Zeigt die Unterschiede und holt den Stand nach einer Rückfrage zurück"_s);
    connect(m_compare, &QPushButton::clicked, this, &FormerStatesDialog::compare);
    connect(m_putBack, &QPushButton::clicked, this, &FormerStatesDialog::putBack);
    connect(m_close, &QPushButton::clicked, this, &FormerStatesDialog::reject);
    return box;
}

void FormerStatesDialog::fill()
{
    std::vector<ListRow> rows;
    for (const Record& record : m_records.all())
        rows.push_back(rowOf(record, knownDifference(record)));
    m_rows->clear();
    m_rows->addAll(std::move(rows));
    showChoice();
}

void FormerStatesDialog::select(RecordedList list)
{
    const int ofList = newest(*m_rows, inWords(list));
    if (const int row = ofList >= 0 ? ofList : newest(*m_rows, {}); row >= 0)
        m_rows->setCurrent(row);
    m_view->setFocus();
}

std::optional<Record> FormerStatesDialog::chosen() const
{
    const QList<int> selected = m_rows->selectedRows();
    return selected.isEmpty() ? std::nullopt : m_records.read(m_rows->row(selected.first()).key);
}

/// The way back for the selected state. Without one the status line has the reason.
std::unique_ptr<Undo> FormerStatesDialog::chosenUndo()
{
    auto record = chosen();
    if (!record) {
        m_status->SetText(u"Der Stand kann nicht gelesen werden: Die Datei fehlt oder ist beschädigt."_s);
        return nullptr;
    }
    auto undo = operations::makeUndo(m_job, std::move(*record));
    if (!undo)
        m_status->SetText(reasonInWords({.cause = Cause::NotPossible}));
    return undo;
}

/// Reads the bytes of a record only if they are compared without a request.
std::optional<UndoDiff> FormerStatesDialog::knownDifference(const Record& record)
{
    if (!operations::canCompareWithKnown(m_job, record))
        return {};
    auto whole = m_records.read(record.id);
    const auto undo = whole ? operations::makeUndo(m_job, std::move(*whole)) : nullptr;
    return undo ? undo->compareWithKnown() : std::nullopt;
}

/// Nothing of an earlier comparison stays beside another choice.
void FormerStatesDialog::showChoice()
{
    const bool isChosen = !m_rows->selectedRows().isEmpty();
    m_compare->setEnabled(isChosen);
    m_putBack->setEnabled(isChosen);
    m_differences->clear();
    m_caption->setText(chooseOne);
}

void FormerStatesDialog::showDifference(const UndoDiff& diff)
{
    struct Group
    {
        const QStringList& names;
        QString text;
    };
    const std::array groups = {Group{diff.add, u"kommt zurück"_s},
                               Group{diff.change, u"wird geändert"_s},
                               Group{diff.remove, u"wird entfernt"_s},
                               Group{diff.blocked, u"ist nicht möglich"_s},
                               Group{diff.stuck, u"bleibt: ohne Referenznummer"_s},
                               Group{diff.kept, u"bleibt: vielleicht schon älter"_s}};
    std::vector<ListRow> rows;
    for (const Group& group : groups) {
        for (const QString& name : group.names)
            rows.push_back({.cells = {{group.text}, {name}}});
    }
    if (diff.isReordered)
        rows.push_back({.cells = {{u"wird umsortiert"_s}, {u"alle Einträge in der früheren Reihenfolge"_s}}});
    m_differences->clear();
    m_differences->addAll(std::move(rows));
    m_caption->setText(diff.isHeldAlready() ? u"Das Telefon enthält diesen Stand bereits."_s
                                            : u"Unterschiede zu jetzt: %1"_s.arg(differenceInWords(diff)));
    if (const QList<int> selected = m_rows->selectedRows(); !selected.isEmpty())
        m_rows->setText(selected.first(), DifferenceColumn, differenceInWords(diff));
}

void FormerStatesDialog::reject()
{
    if (!m_busy->isBusy())
        QDialog::reject();
    else if (!m_cancel->isHidden()) // a change, once begun, goes to its end
        m_cancel->setChecked(true);
}

void FormerStatesDialog::done(int result)
{
    for (const RowsView* view : {m_view, m_differenceView})
        saveListLayout(*view, m_program.context.settings);
    QDialog::done(result);
}

} // namespace kalmo::ui
