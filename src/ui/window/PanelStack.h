#pragma once

#include <QStackedWidget>

namespace kalmo::ui {

/// The place that the content panels share. One panel is shown at a time. The panel of the file system can be
/// hidden again, which shows the one before it.
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
