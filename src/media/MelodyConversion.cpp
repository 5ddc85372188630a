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

std::optional<Failure> convertMelody(app::Context& context, const QString& source, const QString& target,
                                     const toolkit::Progress& progress)
{
    QByteArray bytes;
    if (auto failure = checkSource(source))
        return failure;
    if (QFileInfo(source).size() > largestMelody)
        return Failure{Fault::LargeMelody, source};
    app::ProgramCall call = melodyCall(context, u"i"_s, u"o"_s);
    const QString converter = call.file;
    if (!isThere(converter))
        return Failure{Fault::NoConverter, source, converter};
    const app::WorkFolder folder(context);
    if (!app::readWholeFile(source, bytes))
        return Failure{Fault::NotReadable, source};
    if (!folder.isValid() || !app::writeWholeFile(folder.filePath(u"i"_s), bytes))
        return Failure{Fault::NotWritten, app::workPath(context.sy)};

    progress.status(u"Konvertiere Datei..."_s);
    call.folder = folder.path();
    const app::RunResult run = app::RunAndWait(context, call, progress.cancel);
    progress.status({});
    if (auto failure = failureOf(run, {Fault::BadMelody, source, converter, folder.path()}))
        return failure;
    if (!app::readWholeFile(folder.filePath(u"o"_s), bytes) || bytes.isEmpty())
        return Failure{Fault::BadMelody, source, converter, u"the converter wrote nothing"_s};
    QString reason;
    if (!app::writeWholeFile(target, bytes, &reason))
        return Failure{Fault::NotWritten, target, {}, reason};
    return {};
}

} // namespace kalmo::media
