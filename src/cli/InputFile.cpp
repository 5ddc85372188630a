#include "cli/InputFile.h"

#include "app/CodePage.h"
#include "app/Files.h"

#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>

namespace kalmo::cli {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestFile = 16 * 1024 * 1024;

/// Whether bytes that should be of the code page are UTF-8: with umlauts in it, text of the one is hardly
/// ever valid text of the other.
bool looksLikeUtf8(const QByteArray& bytes)
{
    const bool plain = std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte >= 0; });
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return !plain && !decoder.hasError();
}

} // namespace

bool endsIn(const QString& path, QStringView ending)
{
    return path.endsWith(ending, Qt::CaseInsensitive);
}

bool readInputFile(const QString& path, QByteArray& bytes, QString& error)
{
    if (!QFileInfo::exists(path))
        error = u"there is no such file"_s;
    else if (!app::FileExists(path))
        error = u"it is no regular file"_s;
    else if (QFileInfo(path).size() > largestFile)
        error = u"it is larger than 16 MB"_s;
    else if (app::readWholeFile(path, bytes))
        return true;
    else
        error = u"it can't be read"_s;
    return false;
}

bool decodeInput(const QByteArray& bytes, QString& text, QString& error)
{
    if (looksLikeUtf8(bytes)) {
        error = u"the text is UTF-8, but such files are Windows-1252; use a .json file"_s;
        return false;
    }
    text = app::fromCp1252(bytes);
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    return true;
}

bool splitQuoted(const QString& line, QStringList& fields)
{
    if (line.size() < 2 || !line.startsWith(u'"') || !line.endsWith(u'"'))
        return false;
    fields = line.sliced(1, line.size() - 2).split(u"\",\""_s);
    return true;
}

int lineOf(const QByteArray& bytes, qsizetype offset)
{
    return static_cast<int>(bytes.first(std::clamp<qsizetype>(offset, 0, bytes.size())).count('\n')) + 1;
}

} // namespace kalmo::cli
