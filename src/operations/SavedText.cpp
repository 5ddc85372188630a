#include "operations/SavedText.h"

#include "app/CodePage.h"
#include "app/Files.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;

namespace {

/// Returns true if bytes that should be of the code page are UTF-8: with umlauts in it, text of the one is
/// hardly ever valid text of the other.
bool looksLikeUtf8(const QByteArray& bytes)
{
    const bool plain = std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte >= 0; });
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return !plain && !decoder.hasError();
}

FileFault faultOfFile(const QString& path)
{
    if (!QFileInfo::exists(path))
        return FileFault::NoSuchFile;
    if (!app::FileExists(path))
        return FileFault::NoRegularFile;
    return QFileInfo(path).size() > largestSavedFile ? FileFault::TooLarge : FileFault::None;
}

int lineOf(const QByteArray& bytes, qsizetype offset)
{
    return static_cast<int>(bytes.first(std::clamp<qsizetype>(offset, 0, bytes.size())).count('\n')) + 1;
}

} // namespace

bool endsIn(const QString& path, QStringView ending)
{
    return path.endsWith(ending, Qt::CaseInsensitive);
}

bool readInputFile(const QString& path, QByteArray& bytes, SavedListFault& fault)
{
    fault = {.kind = faultOfFile(path)};
    if (fault.kind == FileFault::None && !app::readWholeFile(path, bytes))
        fault.kind = FileFault::NotReadable;
    return fault.kind == FileFault::None;
}

bool decodeInput(const QByteArray& bytes, QString& text, SavedListFault& fault)
{
    if (looksLikeUtf8(bytes)) {
        fault = {.kind = FileFault::Utf8Text};
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

bool parseJsonArray(const QByteArray& bytes, LoneObject loneObject, QJsonArray& array, SavedListFault& fault)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        fault = {.kind = FileFault::NoJson,
                 .place = SavedListFault::Place::Line,
                 .number = lineOf(bytes, error.offset),
                 .detail = error.errorString()};
        return false;
    }
    const bool isLoneObject = document.isObject() && loneObject == LoneObject::Taken;
    array = isLoneObject ? QJsonArray{document.object()} : document.array();
    if (isLoneObject || document.isArray())
        return true;
    fault = {.kind = FileFault::NoArray};
    return false;
}

} // namespace kalmo::operations
