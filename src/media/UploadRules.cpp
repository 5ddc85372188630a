#include "media/UploadRules.h"

#include "link/PhoneModels.h"

#include <QFileInfo>

#include <algorithm>

namespace kalmo::media {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestName = 16; // characters ahead of the extension
constexpr int longestMelodyName = 12;

struct KindRow
{
    UploadKind kind;
    QStringView folder;
    QStringView description; // of the file dialog
    std::vector<QStringView> endings;
};

const std::vector<KindRow>& kinds()
{
    static const std::vector<KindRow> table{
        {UploadKind::ClipPictures,
         u"Mobile:\\Clip Pictures",
         u"Bilder (*.bmp;*.gif;*.jpg)",
         {u"bmp", u"gif", u"jpg", u"jpeg", u"png"}},
        {UploadKind::Pictures,
         u"Mobile:\\Pictures",
         u"Bilder (*.bmp;*.gif;*.jpg)",
         {u"bmp", u"gif", u"jpg", u"jpeg", u"png"}},
        {UploadKind::Sounds,
         u"Mobile:\\Sounds",
         u"Audio (*.wav;*.mp3;*.L22;*.722)",
         {u"wav", u"mp3", u"l22", u"722"}},
        {UploadKind::Melodies, u"Mobile:\\Sounds", u"Klingeltöne (*.mid)", {u"mid"}},
    };
    return table;
}

const KindRow* rowOf(UploadKind kind)
{
    const auto found = std::ranges::find(kinds(), kind, &KindRow::kind);
    return found == kinds().end() ? nullptr : &*found;
}

struct SizeRow
{
    int phoneType;
    QSize picture;
    QSize clip;
};

constexpr SizeRow sizes[] = {
    {8, {240, 320}, {40, 40}},   {9, {128, 160}, {128, 86}},   {10, {128, 160}, {128, 86}},
    {11, {128, 160}, {128, 86}}, {12, {240, 320}, {240, 160}}, {13, {240, 320}, {240, 172}},
};
constexpr SizeRow otherSizes{0, {128, 160}, {128, 100}};

UploadKind soundsOf(int phoneType)
{
    return link::takesSounds(phoneType) ? UploadKind::Sounds : UploadKind::Melodies;
}

} // namespace

UploadKind uploadKind(const QString& folder, int phoneType)
{
    for (const KindRow& row : kinds()) {
        if (folder.compare(row.folder, Qt::CaseInsensitive) == 0)
            return isPicture(row.kind) ? row.kind : soundsOf(phoneType);
    }
    return UploadKind::None;
}

UploadKind kindOfFile(const QString& path, int phoneType)
{
    for (const UploadKind kind : {UploadKind::Pictures, soundsOf(phoneType)}) {
        if (isFit(path, kind))
            return kind;
    }
    return UploadKind::None;
}

QString folderFor(UploadKind kind)
{
    const KindRow* row = rowOf(kind);
    return row ? row->folder.toString() : QString();
}

std::vector<toolkit::FileType> fileTypes(UploadKind kind)
{
    const KindRow* row = rowOf(kind);
    if (!row)
        return {};
    const QString description = row->description.toString();
    const QString patterns = description.section(u'(', 1).chopped(1);
    std::vector<toolkit::FileType> types{{description, patterns.split(u';')}};
    if (isPicture(kind))
        types.push_back({u"Weitere Bilder (*.png *.jpeg)"_s, {u"*.png"_s, u"*.jpeg"_s}});
    return types;
}

bool isFit(const QString& path, UploadKind kind)
{
    const KindRow* row = rowOf(kind);
    return row && std::ranges::count(row->endings, QFileInfo(path).suffix().toLower()) > 0;
}

QSize pictureSize(int phoneType, UploadKind kind)
{
    const auto found = std::ranges::find(sizes, phoneType, &SizeRow::phoneType);
    const SizeRow& row = found == std::end(sizes) ? otherSizes : *found;
    return kind == UploadKind::ClipPictures ? row.clip : row.picture;
}

bool takesJpeg(int phoneType)
{
    return link::takesSounds(phoneType);
}

int bitmapDepth(int phoneType)
{
    return takesJpeg(phoneType) ? 32 : 24;
}

QString convertedName(const QString& source, const QString& extension)
{
    const int longest = extension == u"mid"_s ? longestMelodyName : longestName;
    QString name = QFileInfo(source).completeBaseName().left(longest);
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1); // half a letter
    return name + u'.' + extension;
}

} // namespace kalmo::media
