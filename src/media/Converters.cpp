#include "media/Converters.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace kalmo::media {

using namespace Qt::StringLiterals;
using app::RunEnd;

QString converterPath(const app::Context& context, const QString& name)
{
    const QString beside = context.sy.Paths.Exe + u"/Plugins/"_s + name;
    const QString found = isThere(beside) || name != u"sox"_s ? beside : QStandardPaths::findExecutable(name);
    return found.isEmpty() ? beside : found;
}

bool isThere(const QString& program)
{
    const QFileInfo info(program);
    return info.isFile() && info.isExecutable();
}

std::optional<Failure> failureOf(const app::RunResult& run, Fault fault, const QString& file,
                                 const QString& program)
{
    // The first line says it; the program's own name ahead of it says nothing here.
    const QString detail = run.error.section(u'\n', 0, 0).section(u": "_s, -1);
    switch (run.end) {
    case RunEnd::Done:
        return {};
    case RunEnd::NotStarted:
        return Failure{Fault::NoConverter, file, program, run.error};
    case RunEnd::TooLong:
        return Failure{Fault::TooLong, file, program};
    case RunEnd::Cancelled:
        return Failure{Fault::Cancelled, file, program};
    case RunEnd::Crashed:
        return Failure{fault, file, program, u"the converter crashed"_s};
    case RunEnd::Failed:
        break;
    }
    if (run.error.contains(u"no handler for"_s) && file.endsWith(u".mp3"_s, Qt::CaseInsensitive))
        return Failure{Fault::NoConverter, file, u"libsox-fmt-mp3"_s};
    return Failure{fault, file, program, detail};
}

} // namespace kalmo::media
