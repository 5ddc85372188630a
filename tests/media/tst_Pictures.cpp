// Pictures on their way to the handset, made and looked at by a library that is not ours.

#include "media/Beside.h"
#include "media/PictureConversion.h"
#include "media/PictureFile.h"
#include "media/UploadFiles.h"
#include "media/Workshop.h"
#include "support/RecordedProgress.h"
#include "support/SmallDisk.h"
#include "support/TestProgram.h"

using media::Fault;
using media::Fit;
using media::UploadKind;

namespace {

using Colours = QList<QColor>;

const Colours quarters{Qt::red, Qt::green, Qt::blue, Qt::white};

QByteArray otherLibrary(const QStringList& arguments)
{
    QProcess process;
    process.start(u"/usr/bin/python3"_s, QStringList{QFINDTESTDATA("pictures.py")} + arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        qWarning("python3-pil: %s", process.readAllStandardError().constData());
    return process.readAllStandardOutput();
}

/// Form, size and mode of a picture, and whether its quarters have these colours, nearly.
QString look(const QString& path, const Colours& colours)
{
    QByteArrayList lines = otherLibrary({u"look"_s, path}).split('\n');
    QString text = QString::fromLatin1(lines.takeFirst());
    for (const QColor& colour : colours) {
        const QByteArrayList numbers = lines.isEmpty() ? QByteArrayList() : lines.takeFirst().split(' ');
        const int parts[] = {colour.red(), colour.green(), colour.blue()};
        for (qsizetype index = 0; index < 3; ++index) {
            if (std::abs(numbers.value(index, "999").toInt() - parts[index]) > 12)
                return text + u" but "_s + QString::fromLatin1(numbers.join(' ')) + u" for "_s +
                       colour.name();
        }
    }
    return text;
}

} // namespace

class tst_Pictures : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_made;

    QString made(const QString& name) const { return m_made.filePath(name); }
    static media::PreparedFile prepare(Workshop& shop, const QString& source,
                                       const media::UploadOptions& options)
    {
        return media::prepareFile(shop.context, source, options, {});
    }

    /// The path of a file with the bytes that are sent, under the name in the phone.
    static QString sent(Workshop& shop, const media::PreparedFile& file)
    {
        return shop.makeFile(file.file.name, *file.file.bytes);
    }

private Q_SLOTS:
    void initTestCase()
    {
        otherLibrary({u"make"_s, m_made.path()});
        QVERIFY2(QFile::exists(made(u"old.tiff"_s)), "python3-pil is needed");
    }

    void eachFamilyGetsItsForm()
    {
        const Rows<int, UploadKind, QString, int> rows{
            {"5", 5, UploadKind::Pictures, u"plain.bmp BMP 128x160 RGB"_s, 24},
            {"5, clip", 5, UploadKind::ClipPictures, u"plain.bmp BMP 128x100 RGB"_s, 24},
            {"8", 8, UploadKind::Pictures, u"plain.jpg JPEG 240x320 RGB"_s, 0},
            {"12, clip", 12, UploadKind::ClipPictures, u"plain.jpg JPEG 240x160 RGB"_s, 0},
            {"13, clip", 13, UploadKind::ClipPictures, u"plain.jpg JPEG 240x172 RGB"_s, 0},
        };
        rows.each([&](const auto& phoneType, const auto& kind, const auto& form, const auto& bits) {
            Workshop shop;
            const auto file = prepare(shop, made(u"plain.jpg"_s), {.phoneType = phoneType, .kind = kind});
            QVERIFY(!file.failure && !file.remark);
            QCOMPARE(file.file.name + u' ' + look(sent(shop, file), quarters), form);
            if (bits > 0) { // uncompressed, and nothing behind the rows
                const QByteArray bytes = *file.file.bytes;
                const QSize size = media::pictureSize(phoneType, kind);
                QCOMPARE(bytes.size(), 54 + size.width() * size.height() * bits / 8);
                QCOMPARE(bytes.mid(28, 6), QByteArray(1, static_cast<char>(bits)) + QByteArray(5, '\0'));
            }
        });
    }

    void eachKindOfPicture()
    {
        const Colours grey{QColor(76, 76, 76), QColor(150, 150, 150), QColor(29, 29, 29), Qt::white};
        const Rows<QString, Colours> rows{
            {"bitmap", u"plain.bmp"_s, quarters},
            {"PNG", u"plain.png"_s, quarters},
            {"photo", u"photo.jpg"_s, quarters},
            {"48 megapixels", u"photo.png"_s, quarters},
            {"a few pixels", u"small.png"_s, {}},
            {"grey", u"grey.jpg"_s, grey},
            {"for print", u"print.jpg"_s, {}},
            {"256 colours", u"colours.png"_s, {}},
            {"first frame", u"film.gif"_s, {}},
            {"upright", u"turned.jpg"_s, quarters},
            {"transparent is white", u"clear.png"_s, {Qt::red, Qt::white, Qt::white, Qt::white}},
        };
        rows.each([&](const auto& name, const auto& colours) {
            Workshop shop;
            const auto file =
                prepare(shop, made(name), {.phoneType = 9, .kind = UploadKind::Pictures, .quality = 100});
            QVERIFY2(!file.failure, qPrintable(file.failure ? file.failure->detail : QString()));
            QCOMPARE(look(sent(shop, file), colours), u"JPEG 128x160 RGB"_s);
        });
        Workshop shop; // the second frame is black
        const auto film = prepare(shop, made(u"film.gif"_s), {.phoneType = 9, .kind = UploadKind::Pictures});
        QVERIFY(QImage::fromData(*film.file.bytes).pixelColor(100, 130).lightness() > 200);
    }

    /// 1000 x 500, red and green above, blue and white below, to 128 x 160.
    void shapes()
    {
        const media::LoadedPicture picture = media::loadPicture(made(u"plain.png"_s), {128, 160});
        QCOMPARE(picture.original, QSize(1000, 500));
        const Rows<Fit, QList<QColor>> rows{
            // left above, middle above, right above, left below, in the middle of the left edge
            {"stretched", Fit::Stretch, {Qt::red, Qt::red, Qt::green, Qt::blue, Qt::red}},
            {"cropped", Fit::Crop, {Qt::red, Qt::red, Qt::green, Qt::blue, Qt::red}},
            {"inside", Fit::Inside, {Qt::white, Qt::white, Qt::white, Qt::white, Qt::red}},
        };
        rows.each([&](const auto& fit, const auto& colours) {
            const QImage image = media::fitted(picture.image, {128, 160}, fit);
            QCOMPARE(image.size(), QSize(128, 160));
            const QPoint points[] = {{2, 2}, {60, 2}, {125, 2}, {2, 157}, {2, 77}};
            for (qsizetype index = 0; index < colours.size(); ++index)
                QCOMPARE(image.pixelColor(points[index]), colours[index]);
        });
        for (const Fit fit : {Fit::Stretch, Fit::Crop, Fit::Inside}) {
            QImage line(10000, 1, QImage::Format_RGB32);
            line.fill(Qt::red);
            QCOMPARE(media::fitted(line, {40, 40}, fit).size(), QSize(40, 40));
            QCOMPARE(media::fitted(line.transformed(QTransform().rotate(90)), {40, 40}, fit).size(),
                     QSize(40, 40));
        }
    }

    void qualityCounts()
    {
        Workshop shop;
        QList<qint64> sizes;
        for (const int quality : {60, 80, 100}) {
            const auto file = prepare(shop, made(u"photo.jpg"_s),
                                      {.phoneType = 12, .kind = UploadKind::Pictures, .quality = quality});
            sizes.append(file.file.bytes->size());
        }
        QVERIFY(0 < sizes[0] && sizes[0] < sizes[1] && sizes[1] < sizes[2]);
        const Rows<int, int> rows{{"too low", -5, 10}, {"too high", 101, 100}, {"between", 60, 60}};
        QVERIFY(media::SaveBitmapToBmp(QImage(made(u"plain.png"_s)), shop.path(u"a.bmp"_s), 32) > 0);
        rows.each([&](const auto& given, const auto& clamped) {
            int quality = given;
            QVERIFY(!media::ConvertBmpToJpg(shop.path(u"a.bmp"_s), shop.path(u"a.jpg"_s), quality));
            QCOMPARE(quality, clamped);
        });
    }

    void badPictures()
    {
        const QByteArray bomb =
            QByteArray::fromHex("89504E470D0A1A0A0000000D49484452 00010000 00010000 08 02 000000") +
            QByteArray(2000, '\x55');
        const QByteArray vast =
            QByteArray::fromHex("424D 00000000 00000000 36000000 28000000 E02E0000 10270000 0100 1800") +
            QByteArray(2000, '\0');
        const Rows<QString, QByteArray, Fault> rows{
            {"nothing", u"a.jpg"_s, "", Fault::BadPicture},
            {"a head alone", u"a.gif"_s, "GIF89a", Fault::BadPicture},
            {"half a photo", u"a.jpg"_s, Workshop::contentOf(made(u"half-photo.jpg"_s)), Fault::BadPicture},
            {"a part of the first frame", u"a.gif"_s, Workshop::contentOf(made(u"half-film.gif"_s)),
             Fault::BadPicture},
            {"another format", u"a.jpg"_s, Workshop::contentOf(made(u"old.tiff"_s)), Fault::OtherFormat},
            {"four thousand megapixels", u"a.png"_s, bomb, Fault::BadPicture},
            {"120 megapixels", u"a.bmp"_s, vast, Fault::LargePicture},
            {"another kind", u"a.txt"_s, "hello", Fault::NotFit},
            {"no name", u",;.png"_s, Workshop::contentOf(made(u"small.png"_s)), Fault::NoName},
        };
        rows.each([&](const auto& name, const auto& bytes, const auto& fault) {
            Workshop shop;
            const auto file =
                prepare(shop, shop.makeFile(name, bytes), {.phoneType = 9, .kind = UploadKind::Pictures});
            QVERIFY(file.failure);
            QCOMPARE(file.failure->fault, fault);
        });
        Workshop shop;
        const media::UploadOptions options{.phoneType = 9, .kind = UploadKind::Pictures};
        QCOMPARE(prepare(shop, shop.path(u"none.jpg"_s), options).failure->fault, Fault::NoSource);
        for (const auto& [kind, name] :
             Rows<UploadKind, QString>{{"picture", UploadKind::Pictures, u"mem.jpg"_s},
                                       {"codes", UploadKind::Sounds, u"mem.L22"_s},
                                       {"sound", UploadKind::Sounds, u"mem.wav"_s},
                                       {"melody", UploadKind::Melodies, u"mem.mid"_s}}) {
            QVERIFY(QFile::link(u"/proc/self/mem"_s, shop.path(name))); // its first byte can't be read
            QCOMPARE(prepare(shop, shop.path(name), {.phoneType = 9, .kind = kind}).failure->fault,
                     Fault::NotReadable);
        }
        QCOMPARE(media::saveConverted({.bytes = "x"}, u"/proc/none"_s)->fault, Fault::NotWritten);
        QCOMPARE(media::SaveBitmapToBmp(QImage(2, 2, QImage::Format_RGB32), u"/proc/none/a.bmp"_s, 24), -1);
        QCOMPARE(media::SaveBitmapToBmp(QImage(2, 2, QImage::Format_RGB32), shop.path(u"a.bmp"_s), 8), -2);
    }

    /// The user and the limit of time stop a picture, and leave a file as it was.
    void stops()
    {
        Workshop shop;
        SwitchedCancel cancel;
        const media::PictureForm form{.size = {240, 320}};
        cancel.checked = true;
        auto picture = media::convertPicture(shop.context, made(u"plain.jpg"_s), form, &cancel);
        QVERIFY(picture.bytes.isEmpty() && picture.failure->fault == Fault::Cancelled);
        shop.clock.after(0.01, [&shop] { shop.clock.DoEvents(media::longestWork + 1); });
        picture = media::convertPicture(shop.context, made(u"photo.png"_s), form);
        QVERIFY(picture.bytes.isEmpty() && picture.failure->fault == Fault::TooLong);
        const QString target = shop.makeFile(u"out.jpg"_s, "mine");
        QCOMPARE(media::saveConverted(picture, target)->fault, Fault::TooLong);
        QCOMPARE(shop.contentOf(target), "mine");

        std::stop_source stop;
        stop.request_stop();
        for (const QString& name : {u"plain.bmp"_s, u"plain.jpg"_s, u"photo.png"_s, u"film.gif"_s})
            QVERIFY(media::loadPicture(made(name), {128, 160}, stop.get_token()).image.isNull());
    }

    /// However much is wanted of a picture, it has a bound in memory.
    void largePictures()
    {
        const media::LoadedPicture picture = media::loadPicture(made(u"photo.png"_s), {1 << 16, 1 << 16});
        QCOMPARE(picture.original, QSize(8000, 6000));
        QVERIFY(picture.image.width() > 5000 && picture.image.sizeInBytes() < 101'000'000);
    }

    /// A file that can't be written whole leaves the old one as it was.
    void fullDisk()
    {
        Workshop shop;
        const QString target = shop.makeFile(u"out.bmp"_s, "mine");
        std::optional<media::Failure> failure;
        {
            const SmallDisk disk(4096);
            failure = media::saveConverted(media::convertPicture(shop.context, made(u"plain.jpg"_s),
                                                                 {.size = {240, 320}, .asJpeg = false}),
                                           target);
        }
        QVERIFY(failure && failure->fault == Fault::NotWritten);
        QCOMPARE(shop.contentOf(target), "mine");
        QCOMPARE(QDir(shop.folder.path()).entryList({u"out*"_s}), QStringList(u"out.bmp"_s));
    }

    void conversionsOfFilesFail()
    {
        Workshop shop;
        int quality = 80;
        const auto none = media::ConvertBmpToJpg(shop.path(u"none.bmp"_s), shop.path(u"a.jpg"_s), quality);
        QCOMPARE(media::messageFor(*none).text, u"Die Quelldatei "_s + shop.path(u"none.bmp"_s) +
                                                    u" existiert nicht. JPG Umwandlung nicht möglich."_s);
        shop.makeFile(u"a.bmp"_s, "BM");
        const auto bad = media::ConvertBmpToJpg(shop.path(u"a.bmp"_s), shop.path(u"a.jpg"_s), quality);
        QCOMPARE(media::messageFor(*bad).text, u"JPG Umwandlung gescheitert (.)."_s);
    }

    /// Any byte of a picture may be wrong: it is a picture all the same, or none.
    void damagedPictures()
    {
        QLoggingCategory::setFilterRules(u"qt.gui.imageio*=false"_s);
        for (const QString& name : {u"small.png"_s, u"film.gif"_s, u"turned.jpg"_s, u"plain.bmp"_s}) {
            const QByteArray good = Workshop::contentOf(made(name))
                                        .first(std::min<qsizetype>(5000, QFileInfo(made(name)).size()));
            Workshop shop;
            for (qsizetype index = 0; index < good.size(); index += 1 + good.size() / 150) {
                QByteArray bad = good;
                bad[index] = static_cast<char>(~bad[index]);
                const media::LoadedPicture picture = media::loadPicture(
                    shop.makeFile(name, index % 2 == 0 ? bad : bad.first(index)), {128, 160});
                QCOMPARE(picture.image.isNull(), picture.failure.has_value());
            }
        }
    }
};

KALMO_TEST(tst_Pictures)
#include "tst_Pictures.moc"
