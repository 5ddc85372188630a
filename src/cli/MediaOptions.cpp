#include "cli/MediaOptions.h"

#include "media/UploadRules.h"

namespace kalmo::cli {

std::optional<MediaOptions> mediaOptions(Job& job)
{
    MediaOptions options{.quality = media::defaultQuality};
    const Invocation& invocation = job.invocation;
    bool isNumber = true;
    if (invocation.has(u"--trim"_s))
        options.trimSeconds = invocation.value(u"--trim"_s).toInt(&isNumber);
    if (!isNumber || options.trimSeconds < 0) {
        job.out.error(u"--trim takes whole seconds, or 0 for the whole sound."_s);
        return {};
    }
    if (invocation.has(u"--quality"_s))
        options.quality = invocation.value(u"--quality"_s).toInt();
    return options;
}

ExitStatus statusOf(const media::Failure& failure)
{
    if (failure.fault == media::Fault::Cancelled)
        return ExitRefused;
    return media::isBadInput(failure.fault) ? ExitWrongUse : ExitFailed;
}

QString textOf(const media::Failure& failure)
{
    return media::messageFor(failure).english;
}

} // namespace kalmo::cli
