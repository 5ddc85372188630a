#include "operations/FetchFiles.h"

#include "operations/ListingCache.h"

namespace kalmo::operations {

void findFiles(FileAccess& access, std::vector<FileToFetch>& files)
{
    ListingCache listings([&access](const obex::PhonePath& folder) {
        return access.goesOn() ? access.list(folder) : std::nullopt;
    });
    for (FileToFetch& file : files) {
        if (file.obstacle != FileObstacle::None)
            continue;
        const FolderListing* listing = listings.of(file.path.folder());
        const obex::tObxDirEntry* entry = listing ? findEntry(*listing, file.path.name()) : nullptr;
        if (!listing)
            file.obstacle = FileObstacle::FolderNotListed;
        else if (!entry)
            file.obstacle = FileObstacle::NotThere;
        else if (!entry->isFile())
            file.obstacle = FileObstacle::IsFolder;
        else
            file.entry = *entry;
    }
}

FetchedFile fetchFile(FileAccess& access, const FileToFetch& file)
{
    FetchedFile fetched;
    if (!access.enter(file.path.folder()) ||
        !access.client().GetFile(file.entry->name, fetched.bytes, access.progress())) {
        access.blame(fetched.outcome);
        return fetched;
    }
    fetched.isWhole = obex::isWhole(fetched.bytes.size(), file.entry->size);
    fetched.outcome.isConfirmed = true;
    if (fetched.isWhole)
        fetched.outcome.state = State::Done;
    else
        fetched.outcome.cause = Cause::Mismatch;
    return fetched;
}

} // namespace kalmo::operations
