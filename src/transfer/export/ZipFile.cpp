#include "transfer/export/ZipFile.h"

#include <zip.h>

#include <memory>

namespace kalmo::transfer {

namespace {

struct SourceFree
{
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
struct ArchiveDiscard
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct PartClose
{
    void operator()(zip_file_t* part) const { zip_fclose(part); }
};
using Source = std::unique_ptr<zip_source_t, SourceFree>;
using Archive = std::unique_ptr<zip_t, ArchiveDiscard>;
using OpenPart = std::unique_ptr<zip_file_t, PartClose>;

/// An archive over a buffer, which stays the caller's.
Archive openArchive(zip_source_t* buffer, int flags)
{
    zip_source_keep(buffer); // an archive takes one reference with it
    Archive archive(zip_open_from_source(buffer, flags, nullptr));
    if (!archive)
        zip_source_free(buffer);
    return archive;
}

bool addPart(zip_t* archive, const ZipPart& part)
{
    zip_source_t* source =
        zip_source_buffer(archive, part.bytes.constData(), static_cast<zip_uint64_t>(part.bytes.size()), 0);
    if (source && zip_file_add(archive, part.name.constData(), source, ZIP_FL_ENC_UTF_8) >= 0)
        return true;
    zip_source_free(source);
    return false;
}

std::optional<QByteArray> contentOf(zip_source_t* source)
{
    zip_stat_t state;
    zip_stat_init(&state);
    if (zip_source_stat(source, &state) != 0 || (state.valid & ZIP_STAT_SIZE) == 0 ||
        zip_source_open(source) != 0)
        return {};
    QByteArray bytes(static_cast<qsizetype>(state.size), Qt::Uninitialized);
    const zip_int64_t count = zip_source_read(source, bytes.data(), state.size);
    zip_source_close(source);
    return count == bytes.size() ? std::optional(bytes) : std::nullopt;
}

} // namespace

std::optional<QByteArray> zipBytes(const std::vector<ZipPart>& parts)
{
    const Source buffer(zip_source_buffer_create(nullptr, 0, 0, nullptr));
    if (!buffer)
        return {};
    Archive archive = openArchive(buffer.get(), ZIP_CREATE | ZIP_TRUNCATE);
    if (!archive)
        return {};
    for (const ZipPart& part : parts) {
        if (!addPart(archive.get(), part))
            return {};
    }
    if (zip_close(archive.get()) != 0)
        return {};
    (void)archive.release(); // closing has freed it
    return contentOf(buffer.get());
}

std::optional<QByteArray> zipPart(const QByteArray& archive, const QByteArray& name)
{
    const Source buffer(
        zip_source_buffer_create(archive.constData(), static_cast<zip_uint64_t>(archive.size()), 0, nullptr));
    if (!buffer)
        return {};
    const Archive opened = openArchive(buffer.get(), ZIP_RDONLY);
    zip_stat_t state;
    zip_stat_init(&state);
    if (!opened || zip_stat(opened.get(), name.constData(), 0, &state) != 0 ||
        (state.valid & ZIP_STAT_SIZE) == 0)
        return {};
    const OpenPart part(zip_fopen(opened.get(), name.constData(), 0));
    if (!part)
        return {};
    QByteArray bytes(static_cast<qsizetype>(state.size), Qt::Uninitialized);
    const zip_int64_t count = zip_fread(part.get(), bytes.data(), state.size);
    return count == bytes.size() ? std::optional(bytes) : std::nullopt;
}

} // namespace kalmo::transfer
