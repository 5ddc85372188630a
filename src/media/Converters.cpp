#include "media/Converters.h"

#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace kalmo::media {

using namespace Qt::StringLiterals;
using app::RunEnd;

namespace {

/// Returns true if a converter could not write: a disk, a quota or the largest file of a user is full.
bool saysNotWritten(const app::RunResult& run)
{
    // The first two are words of SoX, the last is that of our own converters.
    static const QStringList words{u"error writing"_s, u"No space left"_s, u"can't be written"_s};
    return std::ranges::any_of(words, [&run](const QString& word) { return run.error.contains(word); });
}

/// The reason in the first error that a converter printed, without the name of the program.
QString reasonIn(const app::RunResult& run)
{
    const QStringList lines = run.error.split(u'\n');
    const QStringList errors = lines.filter(u" FAIL "_s); // SoX prints warnings as well
    return (errors.isEmpty() ? lines : errors).first().section(u": "_s, -1);
}

} // namespace

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

std::optional<Failure> failureOf(const app::RunResult& run, const Conversion& conversion)
{
    const auto& [refused, file, program, folder] = conversion;
    if (saysNotWritten(run))
        return Failure{Fault::NotWritten, folder, program, reasonIn(run)};
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
        return Failure{refused, file, program, u"the converter crashed"_s};
    case RunEnd::Failed:
        break;
    }
    if (run.error.contains(u"no handler for"_s) && file.endsWith(u".mp3"_s, Qt::CaseInsensitive))
        return Failure{Fault::NoMp3, file, program};
    return Failure{refused, file, program, reasonIn(run)};
}

} // namespace kalmo::media
