#include "ui/controls/ReadablePalette.h"

#include "ui/controls/ReadableColour.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>

namespace kalmo::ui {

namespace {

struct Pair
{
    QPalette::ColorRole changed;
    QPalette::ColorRole other;
    double contrast;
};

constexpr double underMarks = 5.6; // the marks of focus and mouse on a selected row make its ground lighter

constexpr Pair pairs[] = {
    {QPalette::Highlight, QPalette::HighlightedText, underMarks},
    {QPalette::Link, QPalette::Base, readableContrast},
    {QPalette::LinkVisited, QPalette::Base, readableContrast},
};

void keepReadable()
{
    const QPalette given = QGuiApplication::palette();
    QPalette readable = given;
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        for (const auto& [changed, other, least] : pairs)
            readable.setColor(group, changed,
                              readableOn(given.color(group, changed), given.color(group, other), least));
    }
    if (readable != given)
        QApplication::setPalette(readable);
}

} // namespace

ReadablePalette::ReadablePalette(QObject* parent) : QObject(parent)
{
    keepReadable();
    qApp->installEventFilter(this);
}

bool ReadablePalette::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        keepReadable();
    return false;
}

} // namespace kalmo::ui
