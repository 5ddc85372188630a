#include "ui/forms/frmMmcOpenControls.h"

#include "app/mdlKonverter.h"
#include "app/Programs.h"
#include "media/BitmapFile.h"
#include "media/SoundConversion.h"
#include "ui/controls/LeaveCheck.h"
#include "ui/controls/Named.h"
#include "ui/controls/SoundButtons.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using media::Fault;
using media::Fit;
using media::UploadKind;

namespace {

constexpr int tallestPreview = 200; // pixels; a taller picture is shown smaller

const QString pictureDescription = u"Es werden Bilder in den Formaten *.BMP, *.GIF und *.JPG unterstützt. "
                                   u"Wählen Sie ein Bild aus: Hier sehen Sie "
                                   u"dann, wie es im Telefon erscheint."_s;
const QString soundDescription =
    u"Es werden Klänge in den Formaten *.WAV und *.MP3 umgewandelt; *.L22 und *.722 gehen unverändert ins Telefon."_s;
const QString melodyDescription = u"Es werden Klingeltöne im Format *.MID unterstützt, bis 32kB."_s;

QString descriptionOf(UploadKind kind)
{
    if (media::isPicture(kind))
        return pictureDescription;
    return kind == UploadKind::Sounds ? soundDescription : melodyDescription;
}

QLabel* wrapped(const QString& name, const QString& text = {})
{
    auto* label = named(new QLabel(text), name);
    label->setWordWrap(true);
    return label;
}

/// "0:07", "12:34".
QString lengthText(double seconds)
{
    const int whole = static_cast<int>(seconds + 0.5);
    return u"%1:%2"_s.arg(whole / 60).arg(whole % 60, 2, 10, QChar(u'0'));
}

bool isConverted(const QString& path)
{
    return path.endsWith(u".wav"_s, Qt::CaseInsensitive) || path.endsWith(u".mp3"_s, Qt::CaseInsensitive);
}

} // namespace

frmMmcOpenControls::frmMmcOpenControls(Program& program, const UploadQuestion& question, QWidget* parent)
    : QWidget(parent), m_program(program), m_question(question), m_pages(new QStackedWidget),
      m_description(wrapped(u"fraPrevDesc"_s, descriptionOf(question.kind))),
      m_fraBmpPrev(named(new QGroupBox, u"fraBmpPrev"_s)),
      m_imgPrev(named(new QLabel, u"imgPrev"_s, u"Vorschau des Bildes"_s)), m_label1(wrapped(u"label1"_s)),
      m_cmbJPGCompression(named(new QComboBox(this), u"cmbJPGCompression"_s, u"JPG Bild Qualität"_s)),
      m_optStretch(named(new QRadioButton(u"St&recken"_s, this), u"optStretch"_s)),
      m_optCrop(named(new QRadioButton(u"Zu&schneiden"_s, this), u"optCrop"_s)),
      m_optInside(named(new QRadioButton(u"&Einpassen"_s, this), u"optInside"_s)),
      m_sound(new SoundButtons(program.context)),
      m_lblMidiToLarge(
          wrapped(u"lblMidiToLarge"_s,
                  u"Midis dürfen maximal 32kB groß sein. Die Gewählte Datei ist zu groß und kann nicht "
                  u"übertragen werden."_s)),
      m_lblLength(wrapped(u"lblSndLength"_s)),
      m_chkTrimWav(named(new QCheckBox(u"Besch&neiden auf erste"_s), u"chkTrimWav"_s)),
      m_cmbTrimWav(named(new QComboBox, u"cmbTrimWav"_s, u"Sekunden"_s)),
      m_lblResult(wrapped(u"lblResult"_s)), m_tmrStopWav(new QTimer(this))
{
    setObjectName(u"frmMmcOpenControls"_s);
    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(0, 6, 0, 0);
    columns->setSpacing(16);
    columns->addWidget(makePreviews(), 1);
    columns->addWidget(makeChoices(), 1);
    SetLogoSize(question.kind);
    m_tmrStopWav->setObjectName(u"tmrStopWav"_s);
    m_tmrStopWav->setSingleShot(true);
    connect(m_tmrStopWav, &QTimer::timeout, m_sound, &SoundButtons::stop);
    connect(m_sound, &SoundButtons::started, this, &frmMmcOpenControls::startStopTimer);
    connect(m_sound, &SoundButtons::stopped, m_tmrStopWav, &QTimer::stop);
    connect(&m_loader, &PictureLoader::loaded, this, &frmMmcOpenControls::takePicture);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    showSelection({});
}

frmMmcOpenControls::~frmMmcOpenControls() = default;

void frmMmcOpenControls::SetLogoSize(UploadKind kind)
{
    m_size = media::pictureSize(m_question.phoneType, kind);
    m_shownSize = m_size.height() > tallestPreview
                      ? m_size.scaled(m_size.width(), tallestPreview, Qt::KeepAspectRatio)
                      : m_size;
    m_imgPrev->setFixedSize(m_shownSize);
    m_fraBmpPrev->setTitle(m_shownSize == m_size ? u"Vorschau (Originalgröße)"_s
                                                 : u"Vorschau (verkleinert)"_s);
    m_label1->setText(
        u"Bilder werden grundsätzlich auf %1x%2 Pixel entsprechend den Fähigkeiten des Telefons "
        u"angepasst."_s.arg(QString::number(m_size.width()), QString::number(m_size.height())));
}

QWidget* frmMmcOpenControls::makePreviews()
{
    m_description->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* frame = new QVBoxLayout(m_fraBmpPrev);
    frame->addWidget(m_imgPrev, 0, Qt::AlignCenter);
    m_imgPrev->setAlignment(Qt::AlignCenter);

    auto* sounds = named(new QGroupBox(u"Vorschau"_s), u"fraMidPrev"_s);
    auto* rows = new QVBoxLayout(sounds);
    rows->addWidget(m_lblLength);
    rows->addWidget(m_lblMidiToLarge);
    rows->addWidget(m_sound);
    rows->addStretch();
    for (QWidget* page : std::initializer_list<QWidget*>{m_description, m_fraBmpPrev, sounds})
        m_pages->addWidget(page);
    return m_pages;
}

QWidget* frmMmcOpenControls::makeChoices()
{
    auto* column = new QWidget;
    auto* rows = new QVBoxLayout(column);
    rows->setContentsMargins({});
    if (media::isPicture(m_question.kind)) {
        rows->addWidget(m_label1);
        rows->addWidget(makeFit());
    } else {
        m_label1->setParent(this);
        m_label1->hide();
        for (QWidget* control :
             {static_cast<QWidget*>(m_cmbJPGCompression), static_cast<QWidget*>(m_optStretch),
              static_cast<QWidget*>(m_optCrop), static_cast<QWidget*>(m_optInside)})
            control->hide();
    }
    QWidget* trim = makeTrim();
    trim->setVisible(m_question.kind == UploadKind::Sounds);
    rows->addWidget(trim);
    rows->addWidget(m_lblResult);
    rows->addStretch();
    return column;
}

QWidget* frmMmcOpenControls::makeFit()
{
    auto* box = new QWidget;
    auto* rows = new QVBoxLayout(box);
    rows->setContentsMargins({});
    auto* shapes = new QHBoxLayout;
    for (QRadioButton* button : {m_optStretch, m_optCrop, m_optInside}) {
        shapes->addWidget(button);
        connect(button, &QRadioButton::toggled, this, &frmMmcOpenControls::renderPicture);
    }
    shapes->addStretch();
    m_optStretch->setChecked(true);
    m_optStretch->setToolTip(u"Das ganze Bild, notfalls verzerrt"_s);
    m_optCrop->setToolTip(u"Ohne Verzerrung; was übersteht, fällt weg"_s);
    m_optInside->setToolTip(u"Ohne Verzerrung; der Rest bleibt weiß"_s);
    rows->addLayout(shapes);

    auto* label = named(new QLabel(u"JPG Bild &Qualität"_s), u"lblcmbJPGCompression"_s);
    label->setBuddy(m_cmbJPGCompression);
    m_cmbJPGCompression->addItems({u"60%"_s, u"80%"_s, u"100%"_s});
    m_cmbJPGCompression->setCurrentIndex(1);
    connect(m_cmbJPGCompression, &QComboBox::currentIndexChanged, this, &frmMmcOpenControls::renderPicture);
    auto* quality = new QHBoxLayout;
    quality->addWidget(label);
    quality->addWidget(m_cmbJPGCompression);
    quality->addStretch();
    rows->addLayout(quality);
    label->setVisible(media::takesJpeg(m_question.phoneType));
    m_cmbJPGCompression->setVisible(media::takesJpeg(m_question.phoneType));
    return box;
}

QWidget* frmMmcOpenControls::makeTrim()
{
    auto* box = named(new QWidget, u"fraWav"_s);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins({});
    auto* lblTrimWav = named(new QLabel(u"Sekunden"_s), u"lblTrimWav"_s);
    m_cmbTrimWav->setEditable(true);
    m_cmbTrimWav->setInsertPolicy(QComboBox::NoInsert);
    m_cmbTrimWav->addItems({u"05"_s, u"10"_s, u"15"_s, u"20"_s, u"25"_s, u"30"_s});
    m_cmbTrimWav->setCurrentText(u"15"_s);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_chkTrimWav, m_cmbTrimWav, lblTrimWav})
        row->addWidget(widget);
    row->addStretch();
    const auto enable = [this, lblTrimWav](bool isOn) {
        m_cmbTrimWav->setEnabled(isOn);
        lblTrimWav->setEnabled(isOn);
        showSoundResult();
    };
    enable(false);
    connect(m_chkTrimWav, &QCheckBox::toggled, this, enable);
    connect(m_cmbTrimWav, &QComboBox::currentTextChanged, this, &frmMmcOpenControls::showSoundResult);
    new LeaveCheck(*m_cmbTrimWav, nullptr, [this] { return m_chkTrimWav->isChecked() && rejectTrim(); });
    return box;
}

void frmMmcOpenControls::showSelection(const QStringList& paths)
{
    m_loader.drop();
    m_picture = {};
    m_path = paths.size() == 1 ? paths.first() : QString();
    m_type = NoneOrSeveral;
    showResult({});
    if (m_path.isEmpty()) {
        m_sound->setFile({});
        showDescription(
            paths.size() > 1
                ? u"%1 Dateien sind ausgewählt. Jede wird umgewandelt und übertragen."_s.arg(paths.size())
                : descriptionOf(m_question.kind));
    } else if (media::isFit(m_path, UploadKind::Pictures)) {
        showPicture(m_path);
    } else if (media::isFit(m_path, UploadKind::Melodies) || isConverted(m_path)) {
        showSound(m_path);
    } else {
        m_sound->setFile({});
        showDescription(u"Die Datei wird unverändert übertragen."_s);
        showResult(QFileInfo(m_path).size());
    }
}

void frmMmcOpenControls::showDescription(const QString& text)
{
    m_description->setText(text);
    m_pages->setCurrentIndex(0);
}

void frmMmcOpenControls::showPicture(const QString& path)
{
    m_sound->setFile({});
    m_type = Picture;
    m_imgPrev->setPixmap({});
    m_imgPrev->setText(u"Bitte warten..."_s);
    m_pages->setCurrentIndex(1);
    m_loader.load(path, m_size);
}

void frmMmcOpenControls::takePicture(const media::LoadedPicture& picture)
{
    m_picture = picture.image;
    if (!picture.failure) {
        renderPicture();
        return;
    }
    m_imgPrev->setText(u"Kein Bild"_s);
    toolkit::Message message = media::messageFor(*picture.failure);
    m_program.context.dialogs.Show(message);
}

void frmMmcOpenControls::renderPicture()
{
    if (m_picture.isNull())
        return;
    const QImage image = media::fitted(m_picture, m_size, fit());
    const bool asJpeg = media::takesJpeg(m_question.phoneType);
    const QByteArray bytes = asJpeg ? media::jpegBytes(image, quality())
                                    : media::bitmapFile(image, media::bitmapDepth(m_question.phoneType));
    // The preview shows the loss of the compression, too.
    const QImage sent = asJpeg ? QImage::fromData(bytes) : image;
    const qreal ratio = devicePixelRatioF();
    QPixmap pixmap =
        QPixmap::fromImage(sent.scaled(m_shownSize * ratio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(ratio);
    m_imgPrev->setPixmap(pixmap);
    showResult(bytes.size());
}

void frmMmcOpenControls::showSound(const QString& path)
{
    const bool isMelody = media::isFit(path, UploadKind::Melodies);
    const bool isTooLarge = isMelody && QFileInfo(path).size() > media::largestMelody;
    m_type = isMelody ? Midi : NoneOrSeveral;
    m_sound->setFile(path);
    m_sound->setVisible(!isTooLarge);
    m_lblMidiToLarge->setVisible(isTooLarge);
    m_lblLength->setVisible(!isMelody);
    m_lblLength->setText(u"Länge wird ermittelt..."_s);
    m_seconds = 0;
    m_pages->setCurrentIndex(2);
    if (isMelody)
        showResult(isTooLarge ? std::nullopt : std::optional(QFileInfo(path).size()));
    else
        askLength(path);
}

void frmMmcOpenControls::askLength(const QString& path)
{
    const app::ProgramCall call = media::lengthCall(m_program.context, path);
    m_length = std::make_unique<QProcess>();
    m_length->setStandardInputFile(QProcess::nullDevice());
    app::confine(*m_length, call);
    connect(m_length.get(), &QProcess::finished, this, [this] {
        m_seconds = m_length->readAllStandardOutput().trimmed().toDouble();
        m_lblLength->setText(m_seconds > 0 ? u"Länge: %1 min"_s.arg(lengthText(m_seconds))
                                           : u"Die Länge ist nicht bekannt."_s);
        showSoundResult();
    });
    connect(m_length.get(), &QProcess::errorOccurred, this,
            [this] { m_lblLength->setText(u"Die Länge ist nicht bekannt."_s); });
    m_length->start(call.file, call.arguments);
}

void frmMmcOpenControls::showSoundResult()
{
    if (!isConverted(m_path) || m_seconds <= 0)
        return;
    const int trim = trimSeconds();
    const double kept = trim > 0 ? std::min<double>(trim, m_seconds) : m_seconds;
    showResult(static_cast<qint64>(kept * media::codesPerSecond));
}

void frmMmcOpenControls::showResult(std::optional<qint64> bytes)
{
    QStringList lines;
    if (bytes) {
        lines.append(
            u"Größe im Telefon: %1 (%2 Bytes)"_s.arg(app::FormatSizeKB(*bytes), QLocale().toString(*bytes)));
        if (m_question.freeBytes && *bytes <= *m_question.freeBytes)
            lines.append(u"Danach sind im Telefon noch %1 frei."_s.arg(
                app::FormatSizeKB(*m_question.freeBytes - *bytes)));
        else if (m_question.freeBytes)
            lines.append(
                u"Im Telefon sind nur noch %1 frei."_s.arg(app::FormatSizeKB(*m_question.freeBytes)));
    }
    m_lblResult->setText(lines.join(u'\n'));
}

Fit frmMmcOpenControls::fit() const
{
    if (m_optCrop->isChecked())
        return Fit::Crop;
    return m_optInside->isChecked() ? Fit::Inside : Fit::Stretch;
}

int frmMmcOpenControls::quality() const
{
    return m_cmbJPGCompression->count() > 0 ? app::ValInt(m_cmbJPGCompression->currentText().remove(u'%'))
                                            : media::defaultQuality;
}

/// 0 for the whole sound.
int frmMmcOpenControls::trimSeconds() const
{
    if (!m_chkTrimWav->isChecked())
        return 0;
    const QString text = m_cmbTrimWav->currentText();
    return app::IsNumeric(text) ? std::max(0, app::ValInt(text)) : media::defaultTrim;
}

bool frmMmcOpenControls::isTrimValid() const
{
    bool isWhole = false;
    return m_cmbTrimWav->currentText().trimmed().toInt(&isWhole) > 0 && isWhole;
}

/// True, and says so, for a length that makes no sense.
bool frmMmcOpenControls::rejectTrim()
{
    if (isTrimValid())
        return false;
    m_sound->stop();
    m_program.context.dialogs.Show({.text = u"Bitte geben Sie die Sekunden als ganze Zahl größer Null ein."_s,
                                    .icon = toolkit::Icon::Information});
    return true;
}

/// The sound stops where the one in the phone will end.
void frmMmcOpenControls::startStopTimer()
{
    if (!isConverted(m_path) || !m_chkTrimWav->isChecked() || rejectTrim())
        return;
    m_tmrStopWav->start(trimSeconds() * 1000);
}

void frmMmcOpenControls::cmdSndStop_Click()
{
    m_sound->stop();
}

std::optional<UploadChoice> frmMmcOpenControls::GetSelFiles(const QStringList& paths)
{
    const bool areThere =
        std::all_of(paths.begin(), paths.end(), [](const QString& path) { return QFileInfo(path).isFile(); });
    if (!areThere) {
        m_program.context.dialogs.Show(
            {.text = u"Datei wurde nicht im zugehörigen Ordner ausgewählt - Auswahl ungültig."_s,
             .icon = toolkit::Icon::Information});
        return {};
    }
    return UploadChoice{paths,
                        {.phoneType = m_question.phoneType,
                         .kind = m_question.kind,
                         .trimSeconds = trimSeconds(),
                         .quality = quality(),
                         .fit = fit()}};
}

} // namespace kalmo::ui
