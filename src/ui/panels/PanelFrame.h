#pragma once

#include <QFrame>

class QLabel;
class QVBoxLayout;

namespace kalmo::ui {

/// A content panel of the main window: a caption and the content below it.
class PanelFrame : public QFrame
{
    Q_OBJECT

public:
    explicit PanelFrame(const QString& name, QWidget* parent = nullptr);

    QString caption() const;
    void setCaption(const QString& text);

protected:
    QVBoxLayout* content() const { return m_content; }

private:
    QLabel* m_caption;
    QVBoxLayout* m_content;
};

} // namespace kalmo::ui
