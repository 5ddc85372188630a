#include "obex/FileTypes.h"

#include <array>

namespace kalmo::obex {

using namespace Qt::StringLiterals;

namespace {

struct Row
{
    QStringView ending;
    QStringView text;
    QStringView icon;
};

constexpr auto knownTypes = std::to_array<Row>({
    {u".SMI", u"SMS", u"sms"},
    {u".TXT", u"Text TXT", u"txt"},
    {u".MMF", u"Klingelton MMF", u"mmf"},
    {u".MID", u"Klingelton MID", u"mid"},
    {u".SRT", u"Klingelton SRT", u"mid"},
    {u".L22", u"Klingelton L22", u"mid"},
    {u".722", u"Klingelton 722", u"mid"},
    {u".WAV", u"Audio WAV", u"vmo"},
    {u".AMR", u"Audio AMR", u"vmo"},
    {u".JPG", u"Bild JPG", u"bmp"},
    {u".GIF", u"Bild GIF", u"bmp"},
    {u".BMP", u"Bild BMP", u"bmp"},
    {u".PNG", u"Bild PNG", u"bmp"},
    {u".VMO", u"Aufnahme VMO", u"vmo"},
    {u".TMO", u"SMS Textmodul TMO", u"tmo"},
    {u".3GP", u"Video 3GP", u"3gp"},
    {u".MP3", u"Audio MP3", u"mp3"},
    {u".AAC", u"Audio AAC", u"aac"},
    {u".M3U", u"Playlist M3U", u"m3u"},
});

} // namespace

FileTypeInfo fileTypeOf(const QString& name)
{
    const QString upper = name.toUpper();
    for (const Row& row : knownTypes) {
        if (upper.endsWith(row.ending))
            return {row.text.toString(), row.icon.toString()};
    }
    return {upper.size() < 3 ? u"Datei"_s : u"Datei "_s + upper.last(3), u"unknown"_s};
}

} // namespace kalmo::obex
