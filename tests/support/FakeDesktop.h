#pragma once

#include "app/Platform.h"

#include <QFileInfo>
#include <QUrl>

namespace kalmo::tests {

/// A desktop with a browser, and with programs for some endings of files only.
class FakeDesktop : public app::Desktop
{
public:
    QStringList endings;
    QStringList opened; ///< files and addresses

    bool hasAssociation(const QString& path) const override
    {
        return QFileInfo::exists(path) && endings.contains(QFileInfo(path).suffix());
    }
    bool open(const QString& path) override
    {
        opened.append(path);
        return true;
    }
    bool openWith(const QString& program, const QString& path) override
    {
        return open(program + QLatin1Char(' ') + path);
    }
    bool openUrl(const QUrl& url) override { return open(url.toString(QUrl::FullyEncoded)); }
};

} // namespace kalmo::tests
