#include "handset/program/RealTime.h"

#include <QCoreApplication>
#include <QTimer>

#include <cmath>

namespace kalmo::handset {

void RealTime::after(double seconds, std::function<void()> action)
{
    const auto milliseconds = static_cast<int>(std::ceil(seconds * 1000));
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, QCoreApplication::instance(), std::move(action));
}

} // namespace kalmo::handset
