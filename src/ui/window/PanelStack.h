#pragma once

#include <QStackedWidget>

namespace kalmo::ui {

/// The place that the content panels share. A panel that is shown lies on top of the others; the file
/// system's alone can be taken away again, and what was shown before it comes back.
class PanelStack : public QStackedWidget
{
    Q_OBJECT

public:
    using QStackedWidget::QStackedWidget;

    void showPanel(QWidget* panel)
    {
        if (panel != currentWidget())
            m_below = currentWidget();
        setCurrentWidget(panel);
    }
    void hidePanel(const QWidget* panel)
    {
        if (panel && panel == currentWidget() && m_below)
            setCurrentWidget(m_below);
    }

private:
    QWidget* m_below = nullptr;
};

} // namespace kalmo::ui
