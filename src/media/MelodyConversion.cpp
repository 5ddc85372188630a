#include "media/MelodyConversion.h"

#include "app/Files.h"
#include "app/StoragePaths.h"
#include "app/WorkFolder.h"
#include "media/Converters.h"
#include "media/SourceFile.h"
#include "media/UploadRules.h"

#include <QFileInfo>

namespace kalmo::media {

using namespace Qt::StringLiterals;

app::ProgramCall melodyCall(const app::Context& context, const QString& source, const QString& target)
{
    return {.file = converterPath(context, u"m9b"_s), .arguments = {u"t"_s, source, target}};
}

Converted convertMelody(app::Context& context, const QString& source, const toolkit::Progress& progress)
{
    QByteArray bytes;
    if (auto failure = checkSource(source))
        return {.failure = failure};
    if (QFileInfo(source).size() > largestMelody)
        return {.failure = Failure{Fault::LargeMelody, source}};
    app::ProgramCall call = melodyCall(context, u"i"_s, u"o"_s);
    const QString converter = call.file;
    if (!isThere(converter))
        return {.failure = Failure{Fault::NoConverter, source, converter}};
    const app::WorkFolder folder(context);
    if (!app::readWholeFile(source, bytes))
        return {.failure = Failure{Fault::NotReadable, source}};
    if (!folder.isValid() || !app::writeWholeFile(folder.filePath(u"i"_s), bytes))
        return {.failure = Failure{Fault::NotWritten, app::workPath(context.sy)}};

    progress.status(u"Konvertiere Datei..."_s);
    call.folder = folder.path();
    const app::RunResult run = app::RunAndWait(context, call, progress.cancel);
    progress.status({});
    if (auto failure = failureOf(run, {Fault::BadMelody, source, converter, folder.path()}))
        return {.failure = failure};
    if (!app::readWholeFile(folder.filePath(u"o"_s), bytes) || bytes.isEmpty())
        return {.failure = Failure{Fault::BadMelody, source, converter, u"the converter wrote nothing"_s}};
    return {.bytes = bytes};
}

} // namespace kalmo::media
