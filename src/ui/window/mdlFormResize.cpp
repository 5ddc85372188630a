#include "ui/window/mdlFormResize.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <optional>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int stateMinimized = 1;
constexpr int stateMaximized = 2;

bool isSizable(const QWidget& form)
{
    return form.minimumSize() != form.maximumSize();
}

QString pair(int first, int second)
{
    return u"%1|%2"_s.arg(first * twipsPerPixel).arg(second * twipsPerPixel);
}

/// Two numbers of pixels. Gives nothing without a "|" between them.
std::optional<QPoint> readPair(const app::Settings& settings, const QString& section, const QString& key)
{
    const QStringList parts = settings.GetIniText(section, key).split(u'|');
    bool isFirst = false;
    bool isSecond = false;
    const int first = parts.value(0).toInt(&isFirst);
    const int second = parts.value(1).toInt(&isSecond);
    if (!isFirst || !isSecond)
        return {};
    return QPoint(first / twipsPerPixel, second / twipsPerPixel);
}

/// Returns true if enough of the window's head would be on a screen to move it.
bool isReachable(const QPoint& place, int width)
{
    const QRect head(place, QSize(width, 40));
    const QList<QScreen*> screens = QGuiApplication::screens();
    return std::any_of(screens.cbegin(), screens.cend(), [&head](const QScreen* screen) {
        const QRect seen = screen->availableGeometry().intersected(head);
        return seen.width() >= 80 && seen.height() >= 20;
    });
}

} // namespace

void SaveFormLayout(const QWidget& form, app::Settings& settings)
{
    if (form.isMinimized())
        return;
    const QString name = form.objectName();
    const QRect normal = form.isMaximized() ? form.normalGeometry() : QRect(form.pos(), form.size());
    settings.PutIniText(name, name + u"_Position"_s, pair(normal.x(), normal.y()));
    if (isSizable(form))
        settings.PutIniText(name, name + u"_Size"_s, pair(normal.width(), normal.height()));
    settings.PutIniNumber(name, u"WindowState"_s, form.isMaximized() ? stateMaximized : 0);
}

void RestoreFormLayout(QWidget& form, const app::Settings& settings, Restore parts)
{
    const QString name = form.objectName();
    if (isSizable(form)) {
        const auto state = static_cast<int>(settings.GetIniNumber(name, u"WindowState"_s, 0));
        if (state != 0 && state != stateMinimized) {
            form.setWindowState(Qt::WindowMaximized);
            return;
        }
        if (const auto size = readPair(settings, name, name + u"_Size"_s);
            size && size->x() > 0 && size->y() > 0)
            form.resize(size->x(), size->y());
    }
    const auto place = readPair(settings, name, name + u"_Position"_s);
    if (parts == Restore::PlaceAndSize && place && isReachable(*place, form.width()))
        form.move(*place);
}

} // namespace kalmo::ui
