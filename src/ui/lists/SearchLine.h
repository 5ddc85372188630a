#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace kalmo::ui {

class FilteredView;

/// The search field above a list. The list shows the rows that match as the user types; Escape shows all
/// again, in the list too. The keys Enter, Down and Escape give the focus back to the list.
class SearchLine : public QWidget
{
    Q_OBJECT

public:
    /// `view` outlives the field.
    explicit SearchLine(FilteredView& view, QWidget* parent = nullptr);

    void startTyping(); ///< takes the focus and selects what was typed before
    void clear();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool handleKey(int key);
    void showCount();

    FilteredView& m_view;
    QLineEdit* m_field;
    QLabel* m_count;
};

} // namespace kalmo::ui
