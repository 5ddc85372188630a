#pragma once

#include <QWidget>

namespace kalmo::ui {

/// The picture that fills the splash: colours, the program's sign, name and version. It has the same colours
/// in every palette.
class SplashPicture : public QWidget
{
public:
    explicit SplashPicture(QWidget* parent);

    /// Height that name and version take at the top.
    int headHeight() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawBackground(QPainter& painter) const;
    void drawHead(QPainter& painter) const;
};

} // namespace kalmo::ui
