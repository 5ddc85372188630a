#include "ui/icons/Icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <algorithm>
#include <array>

// Outside of any namespace, as the macro needs it. Without it the linker leaves the drawings out.
static void loadDrawings()
{
    Q_INIT_RESOURCE(icons);
}

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

struct Alias
{
    QStringView name;
    QStringView file;
};

/// Names that share a drawing: those of rows, and commands that mean the same in two places.
constexpr auto aliases = std::to_array<Alias>({
    {u"cmd_root", u"root"},  {u"cmd_up", u"up"},     {u"unknown", u"file"},        {u"sms", u"message"},
    {u"tmo", u"message"},    {u"txt", u"text"},      {u"bmp", u"picture"},         {u"mmf", u"sound"},
    {u"mid", u"sound"},      {u"vmo", u"voice"},     {u"mp3", u"sound"},           {u"aac", u"sound"},
    {u"m3u", u"playlist"},   {u"3gp", u"video"},     {u"ffs-open", u"write"},      {u"ffs-save", u"read"},
    {u"ffs-del", u"delete"}, {u"ffs-show", u"show"}, {u"ffs-refresh", u"refresh"}, {u"tel", u"handy"},
});

QString fileOf(const QString& name)
{
    loadDrawings();
    const auto alias = std::ranges::find(aliases, QStringView(name), &Alias::name);
    const QString file = alias == aliases.end() ? name.toLower() : alias->file.toString();
    return u":/icons/"_s + file + u".svg"_s;
}

constexpr QByteArrayView accent("#3d8bcd");

QColor inkOf(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    if (mode == QIcon::Disabled)
        return palette.color(QPalette::Disabled, QPalette::WindowText);
    if (mode == QIcon::Selected)
        return palette.color(QPalette::HighlightedText);
    return palette.color(QPalette::WindowText);
}

/// A drawing whose lines use `currentColor`, which is replaced by the palette's colour.
QPixmap render(const QString& file, const QSize& size, QIcon::Mode mode)
{
    const QColor ink = inkOf(mode);
    const QString key = u"kalmo:%1:%2x%3:%4:%5"_s.arg(file)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(static_cast<int>(mode))
                            .arg(ink.name(QColor::HexArgb));
    QPixmap made;
    if (QPixmapCache::find(key, &made))
        return made;
    QFile drawing(file);
    if (!drawing.open(QIODevice::ReadOnly))
        return {};
    QByteArray text = drawing.readAll();
    text.replace("currentColor", ink.name().toLatin1());
    if (mode == QIcon::Selected)
        text.replace(accent, ink.name().toLatin1()); // it would vanish on the colour of a selection
    QSvgRenderer renderer(text);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    made = QPixmap(size);
    made.fill(Qt::transparent);
    QPainter painter(&made);
    if (mode == QIcon::Disabled)
        painter.setOpacity(0.55);
    renderer.render(&painter);
    painter.end();
    QPixmapCache::insert(key, made);
    return made;
}

class DrawnIcon final : public QIconEngine
{
public:
    explicit DrawnIcon(QString file) : m_file(std::move(file)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal ratio = painter->device()->devicePixelRatioF();
        QPixmap drawn = render(m_file, (QSizeF(rect.size()) * ratio).toSize(), mode);
        drawn.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect.topLeft(), drawn);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        return render(m_file, size, mode);
    }
    QIconEngine* clone() const override { return new DrawnIcon(m_file); }
    QString key() const override { return u"kalmo-drawn"_s; }

private:
    QString m_file;
};

} // namespace

QIcon icon(const QString& name)
{
    const QString file = fileOf(name);
    return QFile::exists(file) ? QIcon(new DrawnIcon(file)) : QIcon();
}

QPixmap pixmap(const QString& name, int size, qreal devicePixelRatio)
{
    const QSize pixels = (QSizeF(size, size) * devicePixelRatio).toSize();
    QPixmap drawn = render(fileOf(name), pixels, QIcon::Normal);
    drawn.setDevicePixelRatio(devicePixelRatio);
    return drawn;
}

QIcon programIcon()
{
    return icon(u"kalmo"_s);
}

} // namespace kalmo::ui
