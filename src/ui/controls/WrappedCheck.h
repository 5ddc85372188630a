#pragma once

#include <QCheckBox>

namespace kalmo::ui {

/// A check box whose text takes as many lines as its width asks for.
class WrappedCheck : public QCheckBox
{
    Q_OBJECT

public:
    explicit WrappedCheck(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }
    void paintEvent(QPaintEvent* event) override;

private:
    int indent() const;
    QRect textIn(const QRect& room) const;
};

} // namespace kalmo::ui
