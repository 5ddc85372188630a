#pragma once

#include <QAbstractButton>
#include <QSvgRenderer>

namespace kalmo::ui {

/// A drawing that can be pressed. It keeps its proportions and fills the room that there is.
class SponsorPicture : public QAbstractButton
{
    Q_OBJECT

public:
    explicit SponsorPicture(const QString& file, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSvgRenderer m_drawing;
};

} // namespace kalmo::ui
