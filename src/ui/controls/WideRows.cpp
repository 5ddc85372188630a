#include "ui/controls/WideRows.h"

#include "ui/controls/ScreenRoom.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>

namespace kalmo::ui {

namespace {

constexpr int linesAround = 6; // width of the margins and frames around a row, in heights of a line

int roomForRow(const QWidget& part)
{
    return roomOnScreen(part).width() - part.fontMetrics().height() * linesAround;
}

/// How many of the boxes fit side by side, so that all rows hold about the same number.
int boxesInARow(const QList<QComboBox*>& boxes)
{
    int width = 0;
    for (const QComboBox* box : boxes)
        width += box->minimumSizeHint().width() + box->fontMetrics().height() / 2;
    const int count = static_cast<int>(boxes.size());
    const int rows = width / roomForRow(*boxes.first()) + 1;
    return (count + rows - 1) / rows;
}

} // namespace

void stackIfTooWide(QBoxLayout& row)
{
    if (row.minimumSize().width() > roomForRow(*row.parentWidget()))
        row.setDirection(QBoxLayout::TopToBottom);
}

void placeBelowTitles(QGridLayout& grid, const QList<QComboBox*>& boxes, const QStringList& titles)
{
    const int inARow = boxesInARow(boxes);
    for (int index = 0; index < boxes.size(); ++index) {
        auto* label = new QLabel(titles[index]);
        label->setBuddy(boxes[index]);
        const int row = index / inARow * 2;
        grid.addWidget(label, row, index % inARow);
        grid.addWidget(boxes[index], row + 1, index % inARow);
    }
}

} // namespace kalmo::ui
