#include "ui/panels/fraAd.h"

#include "app/SettingsKeys.h"
#include "ui/panels/SponsorPicture.h"

#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

struct Sponsor
{
    QStringView node; ///< node that shows this sponsor and no other
    QStringView name;
    QStringView file;
    QStringView link;
};

constexpr Sponsor sponsors[] = {
    {u"SPONSOR_ORV", u"Orvane", u"orvane.svg", u"https://orvane.example.org/"},
    {u"SPONSOR_NORVA", u"Norva", u"norva.svg", u"https://norva.example.org/"},
    {u"SPONSOR_DELMA", u"Delma", u"delma.svg", u"https://delma.example.org/"},
};
constexpr int last = static_cast<int>(std::size(sponsors)) - 1;

} // namespace

fraAd::fraAd(app::Settings& settings, app::Desktop& desktop, QWidget* parent)
    : PanelFrame(u"fraAd"_s, parent), m_settings(settings)
{
    setCaption(
        u"Kalmo ist Freeware - klicken Sie auf das Bild, um die Homepage unseres Sponsors zu besuchen"_s);
    for (const Sponsor& sponsor : sponsors) {
        auto* picture = new SponsorPicture(sponsor.file.toString(), this);
        picture->setObjectName(u"imgAd%1"_s.arg(imgAd.size()));
        picture->setAccessibleName(u"Homepage von "_s + sponsor.name.toString() + u" öffnen"_s);
        picture->setToolTip(sponsor.link.toString());
        picture->hide();
        connect(picture, &SponsorPicture::clicked, this,
                [&desktop, link = sponsor.link] { desktop.openUrl(QUrl(link.toString())); });
        content()->addWidget(picture, 1);
        imgAd.append(picture);
    }
}

int fraAd::nextInTurn()
{
    const int shown = app::getInt(m_settings, app::keys::LastShownSponsor);
    const int index = shown >= last ? 0 : shown < -1 ? last : shown + 1;
    app::put(m_settings, app::keys::LastShownSponsor, index);
    return index;
}

void fraAd::showNode(const QString& nodeKey)
{
    const auto fixed = std::ranges::find(sponsors, QStringView(nodeKey), &Sponsor::node);
    const int shown =
        fixed == std::end(sponsors) ? nextInTurn() : static_cast<int>(fixed - std::begin(sponsors));
    for (SponsorPicture* picture : std::as_const(imgAd))
        picture->hide();
    imgAd[shown]->show();
}

} // namespace kalmo::ui
