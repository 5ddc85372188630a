#pragma once

#include <QPushButton>

namespace kalmo::ui {

/// A button that looks like a link within a text, and is as wide as its text.
class LinkButton : public QPushButton
{
    Q_OBJECT

public:
    explicit LinkButton(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kalmo::ui
