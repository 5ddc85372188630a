#include "ui/panels/DraggedFiles.h"

namespace kalmo::ui {

namespace {
const QString listOfUrls = QStringLiteral("text/uri-list");
} // namespace

QStringList DraggedFiles::formats() const
{
    return {listOfUrls};
}

QVariant DraggedFiles::retrieveData(const QString& format, QMetaType) const
{
    if (format != listOfUrls)
        return {};
    if (!m_urls) {
        if (!m_isDropped)
            return {};
        m_urls.emplace(); // a program may ask again while the files are on their way
        for (const QString& path : m_fetch())
            m_urls->append(QUrl::fromLocalFile(path));
    }
    return *m_urls;
}

} // namespace kalmo::ui
