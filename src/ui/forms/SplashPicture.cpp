#include "ui/forms/SplashPicture.h"

#include "app/Version.h"
#include "ui/icons/Icons.h"

#include <QPainter>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr QColor topColor(0x1b, 0x3f, 0x5a);
constexpr QColor bottomColor(0x10, 0x28, 0x3b);
constexpr QColor waveColor(0x3d, 0x8b, 0xcd);
constexpr QColor signBack(0xee, 0xf5, 0xfa);
constexpr QColor faintText(0xb8, 0xd3, 0xe6);
constexpr int waves = 5;

QFont scaled(QFont font, double factor)
{
    font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

QFont titleFont(const QFont& font)
{
    QFont title = scaled(font, 2.8);
    title.setWeight(QFont::DemiBold);
    return title;
}

} // namespace

SplashPicture::SplashPicture(QWidget* parent) : QWidget(parent)
{
    setObjectName(u"picPreload"_s);
    QPalette colors;
    colors.setColor(QPalette::WindowText, Qt::white);
    setPalette(colors);
}

int SplashPicture::headHeight() const
{
    const int line = fontMetrics().height();
    return line * 2 + QFontMetrics(titleFont(font())).height() + line * 2;
}

void SplashPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawBackground(painter);
    drawHead(painter);
}

void SplashPicture::drawBackground(QPainter& painter) const
{
    QLinearGradient shade(0, 0, 0, height());
    shade.setColorAt(0, topColor);
    shade.setColorAt(1, bottomColor);
    painter.fillRect(rect(), shade);
    painter.setBrush(Qt::NoBrush);
    // The waves of a base station beyond the upper right corner.
    for (int wave = 1; wave <= waves; ++wave) {
        QColor color = waveColor;
        color.setAlphaF(0.42F - 0.07F * static_cast<float>(wave));
        painter.setPen(QPen(color, 2));
        const int radius = height() * wave / 5;
        painter.drawEllipse(QPoint(width() - height() / 6, height() / 6), radius, radius);
    }
}

void SplashPicture::drawHead(QPainter& painter) const
{
    const int line = fontMetrics().height();
    const int sign = headHeight() - line * 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(signBack);
    painter.drawRoundedRect(line * 3 / 2, line * 3 / 2, sign, sign, line, line);
    painter.drawPixmap(line * 3 / 2, line * 3 / 2, pixmap(u"kalmo"_s, sign, devicePixelRatioF()));
    const int left = line * 5 / 2 + sign;
    QRect place(left, line * 2, width() - left - line, QFontMetrics(titleFont(font())).height());
    painter.setFont(titleFont(font()));
    painter.setPen(Qt::white);
    painter.drawText(place, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), app::productName());
    painter.setFont(font());
    painter.setPen(faintText);
    place = QRect(left, place.bottom() + line / 4, place.width(), line * 2);
    painter.drawText(place, static_cast<int>(Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap),
                     u"Gigaset, OpenScape & Mitel Telefon Verwaltungstool\nVersion %1 vom %2"_s.arg(
                         app::programVersion(), app::versionDate()));
}

} // namespace kalmo::ui
