#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace kalmo::ui {

/// The part of a form that scrolls where the screen is too small for all of it, such as with large letters.
/// Elsewhere the form looks and measures as it would without the area. A control that gets the focus scrolls
/// into sight.
class FormScroll : public QScrollArea
{
    Q_OBJECT

public:
    /// Takes over the widget, which has a layout when it is shown.
    FormScroll(QWidget* content, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    int leastHeight(int width) const;
    void fitContent();
};

/// Puts what a form's column holds above the item `foot`, its buttons, into a FormScroll.
void scrollAbove(QVBoxLayout& column, int foot);

} // namespace kalmo::ui
