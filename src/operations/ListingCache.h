#pragma once

#include "operations/FileAccess.h"

#include <functional>
#include <map>

namespace kalmo::operations {

/// The listings of folders. The phone is asked once for each.
class ListingCache
{
public:
    /// Nothing where the phone gives no listing, which counts for the folder's next request too.
    using Ask = std::function<std::optional<FolderListing>(const obex::PhonePath& folder)>;

    explicit ListingCache(Ask ask) : m_ask(std::move(ask)) {}

    /// Null where the phone gave none. Valid as long as the cache.
    const FolderListing* of(const obex::PhonePath& folder)
    {
        const QString key = folder.shown();
        auto known = m_listings.find(key);
        if (known == m_listings.end())
            known = m_listings.emplace(key, m_ask(folder)).first;
        return known->second ? &*known->second : nullptr;
    }

private:
    Ask m_ask;
    std::map<QString, std::optional<FolderListing>> m_listings;
};

} // namespace kalmo::operations
