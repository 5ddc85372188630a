// Rules for uploads: target folder, name and size.

#include "media/UploadRules.h"
#include "support/TestProgram.h"

using namespace kalmo::media;

Q_DECLARE_METATYPE(kalmo::media::UploadKind)

class tst_Rules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foldersDecide()
    {
        const Rows<QString, int, UploadKind, QString> rows{
            {"pictures", u"Mobile:\\Pictures"_s, 9, UploadKind::Pictures, u"Bilder (*.bmp;*.gif;*.jpg)"_s},
            {"whatever the case", u"MOBILE:\\clip pictures"_s, 5, UploadKind::ClipPictures,
             u"Bilder (*.bmp;*.gif;*.jpg)"_s},
            {"sounds of late handsets", u"Mobile:\\Sounds"_s, 8, UploadKind::Sounds,
             u"Audio (*.wav;*.mp3;*.L22;*.722)"_s},
            {"sounds of early ones", u"mobile:\\sounds"_s, 6, UploadKind::Melodies, u"Klingeltöne (*.mid)"_s},
            {"the root", u"Mobile:\\"_s, 8, UploadKind::None, {}},
            {"another one", u"Mobile:\\Videos"_s, 8, UploadKind::None, {}},
        };
        rows.each([&](const auto& folder, const auto& phoneType, const auto& kind, const auto& filter) {
            QCOMPARE(uploadKind(folder, phoneType), kind);
            const auto types = fileTypes(kind);
            QCOMPARE(types.empty() ? QString() : types[0].description, filter);
        });
    }

    void endingsDecide()
    {
        const Rows<QString, QList<int>> rows{
            // each of Pictures, ClipPictures, Sounds, Melodies
            {"bmp", u"a.BMP"_s, {1, 1, 0, 0}},         {"jpeg", u"b.c.jpeg"_s, {1, 1, 0, 0}},
            {"png", u"a.png"_s, {1, 1, 0, 0}},         {"wav", u"a.wav"_s, {0, 0, 1, 0}},
            {"L22", u"a.L22"_s, {0, 0, 1, 0}},         {"722", u"a.722"_s, {0, 0, 1, 0}},
            {"mid", u"a.Mid"_s, {0, 0, 0, 1}},         {"none", u"mp3"_s, {0, 0, 0, 0}},
            {"program", u"a.jpg.exe"_s, {0, 0, 0, 0}},
        };
        rows.each([&](const auto& path, const auto& fits) {
            const QList<int> found{isFit(path, UploadKind::Pictures), isFit(path, UploadKind::ClipPictures),
                                   isFit(path, UploadKind::Sounds), isFit(path, UploadKind::Melodies)};
            QCOMPARE(found, fits);
        });
    }

    void namesAreCut()
    {
        const Rows<QString, QString, QString> rows{
            {"a melody of twenty", u"/a/abcdefghijklmnopqrst.mid"_s, u"mid"_s, u"abcdefghijkl.mid"_s},
            {"a sound of twenty", u"/a/abcdefghijklmnopqrst.mp3"_s, u"722"_s, u"abcdefghijklmnop.722"_s},
            {"more than one dot", u"/a/b.c.d.png"_s, u"jpg"_s, u"b.c.d.jpg"_s},
            {"commas stay until it is sent", u"/a/a,b;c.bmp"_s, u"bmp"_s, u"a,b;c.bmp"_s},
            {"half a letter at the cut", u"/a/abcdefghijk😀x.mid"_s, u"mid"_s, u"abcdefghijk.mid"_s},
        };
        rows.each([&](const auto& source, const auto& extension, const auto& name) {
            QCOMPARE(convertedName(source, extension), name);
        });
    }
};

KALMO_TEST(tst_Rules)
#include "tst_Rules.moc"
