#include "media/MelodyConversion.h"

#include "app/Files.h"
#include "media/Converters.h"
#include "media/UploadRules.h"

#include <QFileInfo>

namespace kalmo::media {

using namespace Qt::StringLiterals;

std::optional<Failure> convertMelody(app::Context& context, const QString& source, const QString& target,
                                     const toolkit::Progress& progress)
{
    QByteArray bytes;
    if (!app::FileExists(source))
        return Failure{Fault::NoSource, source};
    if (QFileInfo(source).size() > largestMelody)
        return Failure{Fault::LargeMelody, source};
    const QString converter = converterPath(context, u"m9b"_s);
    if (!isThere(converter))
        return Failure{Fault::NoConverter, source, converter};
    const app::WorkFolder folder(context);
    if (!app::readWholeFile(source, bytes))
        return Failure{Fault::BadMelody, source, converter, u"it can't be read"_s};
    if (!folder.isValid() || !app::writeWholeFile(folder.filePath(u"i"_s), bytes))
        return Failure{Fault::NotWritten, context.sy.Paths.Storage + u"/config/temp"_s};

    progress.status(u"Konvertiere Datei..."_s);
    const app::RunResult run = app::RunAndWait(
        context, {.file = converter, .arguments = {u"t"_s, u"i"_s, u"o"_s}, .folder = folder.path()},
        progress.cancel);
    progress.status({});
    if (auto failure = failureOf(run, Fault::BadMelody, source, converter))
        return failure;
    if (!app::readWholeFile(folder.filePath(u"o"_s), bytes) || bytes.isEmpty())
        return Failure{Fault::BadMelody, source, converter, u"the converter wrote nothing"_s};
    QString reason;
    if (!app::writeWholeFile(target, bytes, &reason))
        return Failure{Fault::NotWritten, target, {}, reason};
    return {};
}

} // namespace kalmo::media
