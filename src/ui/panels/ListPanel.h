#pragma once

#include "ui/lists/RowsView.h"
#include "ui/lists/SearchLine.h"
#include "ui/panels/PanelFrame.h"
#include "ui/window/ToolbarTable.h"

namespace kalmo::ui {

/// A panel that shows one list, with a search field above and a note below it: fraPBTB, fraPBNE, fraVCF. A
/// double click emits the toolbar's command that edits, the key Entf, with any modifiers, the one that
/// deletes.
class ListPanel : public PanelFrame
{
    Q_OBJECT

public:
    /// `plainASelects`: the letter A selects all rows without Ctrl too, unless a name is being typed.
    ListPanel(const QString& name, toolkit::ListRows& rows, bool plainASelects, QWidget* parent = nullptr);

    RowsView& view() const { return *m_view; }
    SearchLine& search() const { return *m_search; }
    void setNote(const QStringList& lines, const QString& name);

Q_SIGNALS:
    void commandWanted(kalmo::ui::Command command);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keepNoteReadable();
    bool handleKey(int key, Qt::KeyboardModifiers modifiers);

    RowsView* m_view;
    SearchLine* m_search;
    QLabel* m_note;
    bool m_plainASelects;
};

} // namespace kalmo::ui
