#pragma once

#include <QMimeData>
#include <QUrl>

#include <functional>
#include <optional>

namespace kalmo::ui {

/// Files of the phone on their way to another program. They are fetched when that program asks for them after
/// the drop. A program that asks while the mouse is still moving over it gets none.
class DraggedFiles : public QMimeData
{
    Q_OBJECT

public:
    /// Fetches the files and returns their local paths, empty after a failure.
    using Fetch = std::function<QStringList()>;
    explicit DraggedFiles(Fetch fetch) : m_fetch(std::move(fetch)) {}

    /// The user has dropped them where they are taken.
    void setDropped() { m_isDropped = true; }

    QStringList formats() const override;

protected:
    QVariant retrieveData(const QString& format, QMetaType type) const override;

private:
    Fetch m_fetch;
    bool m_isDropped = false;
    mutable std::optional<QVariantList> m_urls; // once they were fetched
};

} // namespace kalmo::ui
