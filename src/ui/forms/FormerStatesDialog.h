#pragma once

#include "operations/Undo.h"
#include "ui/adaptors/ProgressWidgets.h"
#include "ui/Program.h"

#include <QDialog>
#include <QPushButton>
#include <QSet>

namespace kalmo::ui {

class RowsView;
class SearchLine;

/// The former states of this phone's lists: one row for each record, below them the differences of the chosen
/// one to what the phone holds now, and a button that puts it back. operations::identifyPhone() has to come
/// before.
class FormerStatesDialog : public QDialog
{
    Q_OBJECT

public:
    /// The newest record of `list` is selected first.
    FormerStatesDialog(Program& program, const operations::UndoJob& job, operations::RecordedList list,
                       QWidget* parent = nullptr);
    ~FormerStatesDialog() override;

    /// The lists of which a state was put back, as a whole or in part.
    const QSet<operations::RecordedList>& changedLists() const { return m_changed; }

    void reject() override;
    void done(int result) override;

private:
    void makeRows();
    void makeContextMenu();
    void layOut();
    QWidget* makeButtons();
    void fill();
    void select(operations::RecordedList list);
    std::optional<operations::Record> chosen() const;
    std::unique_ptr<operations::Undo> chosenUndo();
    std::optional<operations::UndoDiff> knownDifference(const operations::Record& record);
    operations::Cause plan(operations::Undo& undo);
    void compare();
    void putBack();
    bool agrees(const operations::Undo& undo, operations::Cause planned);
    void report(const operations::Undo& undo, const operations::Outcome& outcome);
    void showDifference(const operations::UndoDiff& diff);
    void showChoice();

    Program& m_program;
    operations::UndoJob m_job;
    operations::Records m_records;
    std::unique_ptr<toolkit::ListRows> m_rows;
    std::unique_ptr<toolkit::ListRows> m_differences;
    RowsView* m_view;
    SearchLine* m_search;
    RowsView* m_differenceView;
    QLabel* m_caption;
    QPushButton* m_compare;
    QPushButton* m_putBack;
    QPushButton* m_close;
    StatusLabel* m_status;
    ProgressStrip* m_bar;
    CancelCheck* m_cancel;
    std::unique_ptr<WindowBusy> m_busy;
    QSet<operations::RecordedList> m_changed;
};

} // namespace kalmo::ui
