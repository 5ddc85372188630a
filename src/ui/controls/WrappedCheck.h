#pragma once

#include <QCheckBox>

namespace kalmo::ui {

/// A check box whose text takes as many lines as its width asks for.
class WrappedCheck : public QCheckBox
{
    Q_OBJECT

public:
    /// `characters` is the length of a line where there is room for it.
    explicit WrappedCheck(const QString& text, int characters = 64);

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

    int m_characters;
};

} // namespace kalmo::ui
