// The preview of a picture: reading it beside the window, and the size of the form around it.

#include "media/Beside.h"
#include "media/PictureConversion.h"
#include "ui/adaptors/ProgressWidgets.h"
#include "ui/forms/frmMmc_View.h"

#include <QLabel>
#include <QLocale>
#include <QScreen>
#include <QStackedWidget>
#include <QToolButton>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr double reduction = 0.96;                // of a picture that fills the screen, to leave an edge
constexpr int margins = 4;                        // around the frames, on both sides
constexpr QSize largestPicture(1 << 16, 1 << 16); // pixels of a picture that is shown 1:1

/// A picture that is not much larger than `wanted`, so that the window scales it quickly.
media::LoadedPicture pictureWithin(const QString& path, QSize wanted, const std::stop_token& stop)
{
    media::LoadedPicture picture = media::loadPicture(path, wanted, stop);
    if (!picture.failure && picture.image.size().boundedTo(wanted) != picture.image.size())
        picture.image = picture.image.scaled(wanted, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return picture;
}

} // namespace

QSize frmMmc_View::roomForPicture() const
{
    const int around = 12 * margins;
    const QSize frame = frameGeometry().size() - size();
    const int other = sizeHint().height() - m_pages->sizeHint().height() + frame.height();
    return screen()->availableSize() - QSize(around, other + around);
}

bool frmMmc_View::presentPicture(bool original)
{
    const Work work(*this);
    const QSize room = roomForPicture();
    const QSize wanted = original ? largestPicture : (QSizeF(room) * devicePixelRatioF()).toSize();
    m_cmdBmp1zu1->setEnabled(false); // one reading at a time
    const auto [picture, stopped] = media::beside(
        m_program.context.clock, &m_closing,
        [path = m_path, wanted](const std::stop_token& stop) { return pictureWithin(path, wanted, stop); });
    m_cmdBmp1zu1->setEnabled(true);
    m_picture = picture.image;
    if (stopped || picture.failure)
        return false;
    const QSize natural = picture.original;
    // A picture that is too large for the memory is not shown 1:1 either.
    const QSizeF shown = original ? m_picture.size() : room;
    const double scale = std::min(shown.width() / natural.width(), shown.height() / natural.height());
    if (scale < 1) {
        ScaleForm4BMP(natural * (original ? scale : scale * reduction));
        m_sta->SetText(u"1:1 nicht möglich - verkleinerter Darstellung um Faktor "_s +
                       QLocale().toString(scale, 'f', 2));
    } else {
        ScaleForm4BMP(natural);
        m_sta->SetText(u"Anzeige in originaler Größe"_s);
    }
    return true;
}

/// Lays the frame and the form around a picture of that size, as far as the screen has room.
void frmMmc_View::ScaleForm4BMP(QSize picture)
{
    stretch(picture);
    const QSize other = size() - m_pages->size();
    const QSize wanted = picture + QSize(2, 2) + (isVisible() ? other : sizeHint() - m_pages->sizeHint());
    m_ownSize = wanted.boundedTo(screen()->availableSize() * reduction).expandedTo(minimumSize());
    if (!isMaximized())
        resize(m_ownSize);
}

void frmMmc_View::stretch(QSize size)
{
    const qreal ratio = devicePixelRatioF();
    QPixmap pixmap = QPixmap::fromImage(m_picture.scaled(
        (QSizeF(size) * ratio).toSize().expandedTo({1, 1}), Qt::IgnoreAspectRatio,
        m_picture.width() < size.width() ? Qt::FastTransformation : Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(ratio);
    m_imgBmp->setPixmap(pixmap);
    m_imgBmp->resize(size);
}

} // namespace kalmo::ui
