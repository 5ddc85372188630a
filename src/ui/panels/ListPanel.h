#pragma once

#include "ui/lists/RowsView.h"
#include "ui/panels/PanelFrame.h"
#include "ui/window/ToolbarTable.h"

#include <QMap>

namespace kalmo::ui {

/// A panel that shows one list, with a note below it: fraPBTB, fraPBNE, fraVCF. Double click and keys of the
/// list ask for the commands of the toolbar.
class ListPanel : public PanelFrame
{
    Q_OBJECT

public:
    /// Key presses that stand for a command; those with Ctrl have Qt::CTRL in them.
    using Keys = QMap<int, Command>;

    /// `plainASelects`: the letter A selects all rows, with or without Ctrl.
    struct Ways
    {
        Keys keys;
        bool plainASelects = false;
    };

    ListPanel(const QString& name, toolkit::ListRows& rows, Ways ways, QWidget* parent = nullptr);

    RowsView& view() const { return *m_view; }
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
    QLabel* m_note;
    Ways m_ways;
};

} // namespace kalmo::ui
