#include "media/Converted.h"

#include "app/Files.h"

namespace kalmo::media {

std::optional<Failure> saveConverted(const Converted& converted, const QString& target)
{
    QString reason;
    if (converted.failure)
        return converted.failure;
    if (!app::writeWholeFile(target, converted.bytes, &reason))
        return Failure{Fault::NotWritten, target, {}, reason};
    return {};
}

} // namespace kalmo::media
