#pragma once

#include "app/Platform.h"

#include <QUrl>

namespace kalmo::tests {

/// A desktop without any program, but with a browser.
class FakeDesktop : public app::Desktop
{
public:
    QString opened; ///< the last address

    bool hasAssociation(const QString&) const override { return false; }
    bool open(const QString&) override { return false; }
    bool openWith(const QString&, const QString&) override { return false; }
    bool openUrl(const QUrl& url) override
    {
        opened = url.toString(QUrl::FullyEncoded);
        return true;
    }
};

} // namespace kalmo::tests
