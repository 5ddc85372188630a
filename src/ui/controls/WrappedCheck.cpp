#include "ui/controls/WrappedCheck.h"

#include <QPainter>
#include <QStyleOptionButton>

#include <algorithm>

namespace kalmo::ui {

namespace {

constexpr int textFlags = static_cast<int>(Qt::AlignLeft) | static_cast<int>(Qt::AlignTop) |
                          static_cast<int>(Qt::TextWordWrap) | static_cast<int>(Qt::TextShowMnemonic);
constexpr int fewestCharacters = 24; // in a line
constexpr int manyLines = 10000;     // pixels
constexpr int padding = 2;           // pixels above and below: capitals with dots rise above the line

} // namespace

WrappedCheck::WrappedCheck(const QString& text, int characters) : QCheckBox(text), m_characters(characters)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

/// Width of the box and of the gap after it.
int WrappedCheck::indent() const
{
    return style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
           style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this);
}

QRect WrappedCheck::textIn(const QRect& room) const
{
    return fontMetrics().boundingRect(room.adjusted(indent(), padding, 0, 0), textFlags, text());
}

int WrappedCheck::heightForWidth(int width) const
{
    return std::max(textIn(QRect(0, 0, width, manyLines)).height() + 2 * padding,
                    style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this));
}

QSize WrappedCheck::sizeHint() const
{
    const int width = indent() + fontMetrics().averageCharWidth() * m_characters;
    return {width, heightForWidth(width)};
}

QSize WrappedCheck::minimumSizeHint() const
{
    return {indent() + fontMetrics().averageCharWidth() * fewestCharacters,
            fontMetrics().height() + 2 * padding};
}

void WrappedCheck::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRect text =
        style()->visualRect(layoutDirection(), rect(), rect().adjusted(indent(), padding, 0, 0));
    option.text.clear();
    option.rect.setHeight(
        std::max(fontMetrics().height(), style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this)));
    option.rect.translate(0, padding / 2);
    option.rect = style()->visualRect(layoutDirection(), rect(), option.rect);
    const bool hasFocusFrame = option.state.testFlag(QStyle::State_HasFocus);
    option.state.setFlag(QStyle::State_HasFocus, false);
    style()->drawControl(QStyle::CE_CheckBox, &option, &painter, this);
    style()->drawItemText(&painter, text, textFlags, palette(), isEnabled(), this->text(), foregroundRole());
    if (!hasFocusFrame)
        return;
    QStyleOptionFocusRect frame;
    frame.initFrom(this);
    frame.rect = textIn(rect()).adjusted(-2, 0, 2, 0);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

} // namespace kalmo::ui
