#include "ui/forms/frmMmcOpenControls.h"

#include "app/mdlKonverter.h"
#include "media/SoundConversion.h"
#include "ui/controls/Named.h"
#include "ui/controls/SoundButtons.h"
#include "ui/controls/TrimChoice.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using media::Fault;
using media::Fit;
using media::UploadKind;

namespace {

constexpr int tallestPreview = 200;     // pixels; a taller picture is shown smaller
constexpr int longestTimer = 24 * 3600; // seconds; longer than any sound in a phone

const QString pictureDescription = u"Es werden Bilder in den Formaten *.BMP, *.GIF und *.JPG unterstützt. "
                                   u"Wählen Sie ein Bild aus: Hier sehen Sie "
                                   u"dann, wie es im Telefon erscheint."_s;
const QString soundDescription =
    u"Es werden Klänge in den Formaten *.WAV und *.MP3 umgewandelt; *.L22 und *.722 gehen unverändert ins Telefon."_s;
const QString melodyDescription = u"Es werden Klingeltöne im Format *.MID unterstützt, bis 32kB."_s;
const QString unfitDescription = u"Diese Datei passt nicht in den Ordner und wird nicht übertragen."_s;

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

} // namespace

frmMmcOpenControls::frmMmcOpenControls(Program& program, const UploadQuestion& question, QWidget* parent)
    : QWidget(parent), m_program(program), m_question(question), m_sizes(program.context, this),
      m_pages(new QStackedWidget), m_description(wrapped(u"fraPrevDesc"_s, descriptionOf(question.kind))),
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
      m_lblLength(wrapped(u"lblSndLength"_s)), m_trim(new TrimChoice(program.context)),
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
    connect(m_trim, &TrimChoice::changed, this, &frmMmcOpenControls::measure);
    connect(m_trim, &TrimChoice::changed, this, &frmMmcOpenControls::moveStopTimer);
    connect(m_trim, &TrimChoice::rejected, m_sound, &SoundButtons::stop);
    connect(&m_sizes, &UploadSizes::changed, this, &frmMmcOpenControls::showSizes);
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
    m_trim->setVisible(m_question.kind == UploadKind::Sounds);
    rows->addWidget(m_trim);
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
        connect(button, &QRadioButton::toggled, this, [this](bool isOn) {
            if (isOn)
                changeForm();
        });
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
    connect(m_cmbJPGCompression, &QComboBox::currentIndexChanged, this, &frmMmcOpenControls::changeForm);
    auto* quality = new QHBoxLayout;
    quality->addWidget(label);
    quality->addWidget(m_cmbJPGCompression);
    quality->addStretch();
    rows->addLayout(quality);
    label->setVisible(media::takesJpeg(m_question.phoneType));
    m_cmbJPGCompression->setVisible(media::takesJpeg(m_question.phoneType));
    return box;
}

void frmMmcOpenControls::showSelection(const QStringList& paths)
{
    m_loader.drop();
    m_picture = {};
    m_paths = paths;
    m_path = paths.size() == 1 ? paths.first() : QString();
    m_type = NoneOrSeveral;
    showRoom({}, {});
    if (m_path.isEmpty()) {
        showSeveral();
    } else if (!media::isFit(m_path, m_question.kind)) {
        m_sound->setFile({});
        showDescription(unfitDescription);
    } else if (media::isPicture(m_question.kind)) {
        showPicture(m_path);
    } else if (media::isFit(m_path, UploadKind::Melodies) || media::isConvertible(m_path)) {
        showSound(m_path);
    } else {
        m_sound->setFile({});
        showDescription(u"Die Datei wird unverändert übertragen."_s);
    }
    measure();
}

/// Shows the first of several pictures that fit; other files have only a size.
void frmMmcOpenControls::showSeveral()
{
    const qsizetype count = m_paths.size();
    m_sound->setFile({});
    const auto first = std::ranges::find_if(
        m_paths, [this](const QString& path) { return media::isFit(path, m_question.kind); });
    if (count > 1 && first == m_paths.end()) {
        showDescription(u"Diese Dateien passen nicht in den Ordner und werden nicht übertragen."_s);
        return;
    }
    if (count > 1 && media::isPicture(m_question.kind)) {
        showPicture(*first);
        m_type = NoneOrSeveral;
        m_fraBmpPrev->setTitle(u"Vorschau der ersten von %1 Dateien"_s.arg(count));
        return;
    }
    showDescription(count > 1
                        ? u"%1 Dateien sind ausgewählt. Jede wird umgewandelt und übertragen."_s.arg(count)
                        : descriptionOf(m_question.kind));
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
    m_fraBmpPrev->setTitle(m_shownSize == m_size ? u"Vorschau (Originalgröße)"_s
                                                 : u"Vorschau (verkleinert)"_s);
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
    if (m_type == Picture)
        m_program.context.dialogs.Show(media::messageFor(*picture.failure));
}

/// Another shape or quality was chosen.
void frmMmcOpenControls::changeForm()
{
    renderPicture();
    measure();
}

void frmMmcOpenControls::renderPicture()
{
    if (m_picture.isNull())
        return;
    const QByteArray bytes = media::pictureBytes(m_picture, media::pictureForm(options()));
    const QImage sent = QImage::fromData(bytes); // with the loss of the compression
    const qreal ratio = devicePixelRatioF();
    QPixmap pixmap =
        QPixmap::fromImage(sent.scaled(m_shownSize * ratio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(ratio);
    m_imgPrev->setPixmap(pixmap);
    if (m_type == Picture)
        showRoom({}, bytes.size());
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
    m_pages->setCurrentIndex(2);
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

media::UploadOptions frmMmcOpenControls::options() const
{
    return {.phoneType = m_question.phoneType,
            .kind = m_question.kind,
            .trimSeconds = m_trim->seconds(),
            .quality = quality(),
            .fit = fit()};
}

/// The sound stops where the one in the phone will end.
void frmMmcOpenControls::startStopTimer()
{
    m_played.start();
    if (!media::isConvertible(m_path) || m_trim->rejects())
        return;
    moveStopTimer();
}

/// Stops the sound that plays at the end of the present choice.
void frmMmcOpenControls::moveStopTimer()
{
    if (!m_sound->isPlaying() || !media::isConvertible(m_path))
        return;
    m_tmrStopWav->stop();
    const qint64 seconds = std::min(m_trim->seconds(), longestTimer);
    if (seconds <= 0)
        return;
    const qint64 left = seconds * 1000 - m_played.elapsed();
    if (left > 0)
        m_tmrStopWav->start(static_cast<int>(left));
    else
        m_sound->stop();
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
    if (m_question.kind == UploadKind::Sounds && m_trim->rejectsNumber())
        return {};
    return UploadChoice{paths, options()};
}

} // namespace kalmo::ui
