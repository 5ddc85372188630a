#include "ui/forms/frmMmc_View.h"

#include "app/CodePage.h"
#include "app/Files.h"
#include "app/mdlKonverter.h"
#include "app/SafeLocalName.h"
#include "app/Version.h"
#include "media/SoundConversion.h"
#include "toolkit/BatchMeter.h"
#include "ui/adaptors/ProgressWidgets.h"
#include "ui/controls/Named.h"
#include "ui/controls/SoundButtons.h"
#include "ui/forms/EntryDialogs.h"
#include "ui/help/HelpWindow.h"
#include "ui/icons/Icons.h"
#include "ui/window/mdlFormResize.h"

#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMimeDatabase>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::Icon;

namespace {

constexpr int smallestHeight = 3420 / twipsPerPixel;
constexpr int smallestWidth = 4110 / twipsPerPixel;
constexpr int viewCharacters = 36; // for large letters
constexpr int linesHigh = 12;
constexpr QSize soundSizeInLetters(64, 50); // of the form, with room for advice on a failure

const QString lastSave = u"frmMmc_View"_s; // use of the folder that files are saved in

enum Page { PicturePage, SoundPage, TextPage, UnknownPage };

struct KindRow
{
    QStringView ending;
    Page page;
    bool isStretchedByHand; ///< a picture that follows the form's size
};

constexpr KindRow kinds[] = {
    {u".BMP", PicturePage, true},  {u".GIF", PicturePage, true}, {u".JPG", PicturePage, true},
    {u".PNG", PicturePage, false}, {u".WAV", SoundPage, false},  {u".MID", SoundPage, false},
    {u".MP3", SoundPage, false},   {u".TXT", TextPage, false},
};

const KindRow* kindOf(const QString& name)
{
    const QString ending = name.right(4).toUpper();
    const auto found = std::ranges::find(kinds, QStringView(ending), &KindRow::ending);
    return found == std::end(kinds) ? nullptr : &*found;
}

/// A text of a phone or of a PC.
QString decoded(const QByteArray& bytes)
{
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : app::fromCp1252(bytes);
}

/// The kind of a file that Kalmo does not show, with the length of a sound for handsets.
QString kindText(const QString& path)
{
    const QFileInfo info(path);
    const QString ending = info.suffix().toLower();
    if (ending == u"l22"_s || ending == u"722"_s) {
        const double seconds = static_cast<double>(info.size()) / media::codesPerSecond;
        return u"Klingelton für Telefone (G.722), %1 min"_s.arg(toolkit::timeText(seconds));
    }
    if (ending == u"vmo"_s)
        return u"Sprachaufnahme eines Telefons"_s;
    return QMimeDatabase().mimeTypeForFile(path).comment();
}

QToolButton* makeButton(const QString& name, const QString& drawing, const QString& toolTip)
{
    auto* button = named(new QToolButton, name, toolTip);
    button->setIcon(icon(drawing));
    button->setToolTip(toolTip);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

} // namespace

bool frmMmc_View::IsSupported(const QString& name)
{
    return kindOf(name) != nullptr;
}

frmMmc_View::frmMmc_View(Program& program, QWidget* parent)
    : QDialog(parent), m_program(program), m_txtFile(named(new QLineEdit, u"txtFile"_s, u"Datei"_s)),
      m_cmdBmp1zu1(makeButton(u"cmdBmp1zu1"_s, u"zoomin"_s, u"Bild in Originalgröße darstellen"_s)),
      m_cmdSave(makeButton(u"cmdSave"_s, u"save"_s, u"Datei auf Festplatte Speichern"_s)),
      m_pages(new QStackedWidget), m_imgArea(named(new QScrollArea, u"imgArea"_s, u"Bild"_s)),
      m_imgBmp(named(new QLabel, u"imgBmp"_s, u"Bild"_s)), m_sound(new SoundButtons(program.context)),
      m_txtText(named(new QPlainTextEdit, u"txtText"_s, u"Text"_s)),
      m_lblUnknown(named(new QLabel, u"lblUnknown"_s)), m_sta(named(new StatusLabel, u"sta"_s, u"Status"_s)),
      m_prg(named(new ProgressStrip, u"prg"_s)), m_tmrMidiPlayAutoStart(new QTimer(this))
{
    setObjectName(u"frmMmc_View"_s);
    setWindowTitle(u"Kalmo - Dateivorschau"_s);
    setWindowModality(Qt::WindowModal);
    m_txtFile->setReadOnly(true);
    m_txtText->setReadOnly(true);
    m_tmrMidiPlayAutoStart->setObjectName(u"tmrMidiPlayAutoStart"_s);
    m_tmrMidiPlayAutoStart->setSingleShot(true);
    connect(m_tmrMidiPlayAutoStart, &QTimer::timeout, m_sound, &SoundButtons::start);
    connect(m_cmdBmp1zu1, &QToolButton::clicked, this,
            [this] { Form_Present(m_path, m_txtFile->text(), true); });
    connect(m_cmdSave, &QToolButton::clicked, this, &frmMmc_View::save);
    auto* help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, [] { openHelp(); });
    layOut();
    RestoreFormLayout(*this, program.context.settings);
    m_ownSize = size();
}

frmMmc_View::~frmMmc_View() = default;

void frmMmc_View::layOut()
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(12, 12, 12, 6);
    rows->addWidget(makeHead());
    m_pages->addWidget(makePicture());
    m_pages->addWidget(makeSound());
    auto* fraText = named(new QFrame, u"fraText"_s);
    auto* text = new QVBoxLayout(fraText);
    text->setContentsMargins({});
    text->addWidget(m_txtText);
    m_pages->addWidget(fraText);
    m_lblUnknown->setWordWrap(true);
    m_lblUnknown->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_pages->addWidget(m_lblUnknown);
    rows->addWidget(m_pages, 1);
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_sta, 1);
    foot->addWidget(m_prg);
    rows->addLayout(foot);
    m_prg->hide();
    const QSize letters(fontMetrics().averageCharWidth() * viewCharacters,
                        fontMetrics().height() * linesHigh);
    setMinimumSize(letters.expandedTo({smallestWidth, smallestHeight}));
    m_cmdSave->setFocus();
}

QWidget* frmMmc_View::makeHead()
{
    auto* head = new QWidget;
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins({});
    row->addWidget(m_txtFile, 1);
    row->addWidget(m_cmdBmp1zu1);
    row->addWidget(m_cmdSave);
    return head;
}

QFrame* frmMmc_View::makePicture()
{
    auto* fraBmp = named(new QFrame, u"fraBmp"_s);
    auto* layout = new QVBoxLayout(fraBmp);
    layout->setContentsMargins({});
    m_imgArea->setFrameShape(QFrame::NoFrame);
    m_imgArea->setAlignment(Qt::AlignCenter);
    m_imgArea->setWidget(m_imgBmp);
    m_imgBmp->setScaledContents(true);
    layout->addWidget(m_imgArea);
    return fraBmp;
}

QWidget* frmMmc_View::makeSound()
{
    auto* fraAudio = named(new QGroupBox(u"Wiedergabe über Soundkarte"_s), u"fraAudio"_s);
    auto* hint = named(
        new QLabel(u"Hinweis: Das Gigaset verwendet ein spezielles Midi Format. Nicht alle Dateien lassen "
                   u"sich auf dem PC abspielen."_s),
        u"lblOnfraAudio"_s);
    hint->setWordWrap(true);
    auto* rows = new QVBoxLayout(fraAudio);
    rows->addWidget(m_sound);
    rows->addStretch();
    rows->addWidget(hint);
    return fraAudio;
}

bool frmMmc_View::Form_Present(const QString& path, const QString& displayName, bool original)
{
    m_path = path;
    m_closing.isClosed = false;
    m_txtFile->setText(displayName);
    const KindRow* kind = kindOf(path);
    bool isShown = kind != nullptr;
    if (isShown) {
        m_pages->setCurrentIndex(kind->page);
        m_cmdBmp1zu1->setVisible(kind->page == PicturePage);
    }
    if (isShown && kind->page == PicturePage) {
        isShown = presentPicture(original);
    } else if (isShown && kind->page == SoundPage) {
        presentSound();
    } else if (isShown) {
        presentText();
    }
    if (!isShown && !m_closing.isClosed) {
        m_program.context.dialogs.Show(
            {.text = u"Beim Anzeigen der Datei "_s + path +
                     u" ist ein Fehler aufgetreten. Bitte wiederholen Sie die letzte "
                     u"Aktion."_s,
             .icon = Icon::Critical});
    }
    return isShown;
}

void frmMmc_View::presentUnknown(const QString& path, const QString& displayName)
{
    m_path = path;
    m_txtFile->setText(displayName);
    const qint64 size = QFileInfo(path).size();
    m_lblUnknown->setText(u"Art: %1\nGröße: %2 (%3 Bytes)\n\nKalmo kann den Inhalt nicht zeigen. Sie können "
                          u"die Datei oben mit \"Speichern\" auf dem PC ablegen."_s.arg(
                              kindText(path), app::FormatSizeKB(size), QLocale().toString(size)));
    m_pages->setCurrentIndex(UnknownPage);
    m_cmdBmp1zu1->hide();
    m_sta->SetText({});
}

void frmMmc_View::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    const KindRow* kind = kindOf(m_path);
    if (!m_isOnScreen || !event->oldSize().isValid() || size() == m_ownSize || m_picture.isNull() || !kind ||
        !kind->isStretchedByHand)
        return;
    m_ownSize = {};
    stretch(m_imgArea->viewport()->size());
    m_sta->SetText(u"Größe manuell verändert."_s);
}

void frmMmc_View::paintEvent(QPaintEvent* event)
{
    m_isOnScreen = true;
    QDialog::paintEvent(event);
}

void frmMmc_View::presentSound()
{
    m_sta->SetText(u"Bitte warten..."_s);
    m_sound->setFile(m_path);
    m_sta->SetText({});
    const int letter = fontMetrics().averageCharWidth();
    m_ownSize = size().expandedTo(soundSizeInLetters * letter).expandedTo(sizeHint());
    resize(m_ownSize);
    m_tmrMidiPlayAutoStart->start(0);
}

void frmMmc_View::presentText()
{
    QByteArray bytes;
    app::readWholeFile(m_path, bytes); // a file that has gone is an empty one
    m_txtText->setPlainText(decoded(bytes));
}

void frmMmc_View::save()
{
    const Work work(*this); // the test of the folder waits
    app::Context& context = m_program.context;
    const QString target = context.dialogs.SaveFile({.title = u"Kalmo - Datei auf Festplatte speichern"_s,
                                                     .folder = app::GetLastInitDir(context, lastSave),
                                                     .name = app::safeLocalName(m_txtFile->text()),
                                                     .types = {savedType()},
                                                     .confirmOverwrite = true});
    if (target.isEmpty())
        return;
    app::SetLastInitDir(context, lastSave, target);
    QByteArray bytes;
    if (!app::WriteTest(context, QFileInfo(target).path()))
        return;
    if (!app::readWholeFile(m_path, bytes)) {
        context.dialogs.Show({.text = u"Fehler beim Lesen der Datei "_s + m_path, .icon = Icon::Exclamation});
        return;
    }
    const app::ReplaceResult result = app::replaceFile(context, target, bytes);
    if (result == app::ReplaceResult::Written)
        context.dialogs.Show(
            {.text = u"Datei unter %1 gespeichert."_s.arg(target), .icon = Icon::Information});
    else if (result == app::ReplaceResult::NotWritten)
        context.dialogs.Show(
            {.text = u"Fehler beim Schreiben der Datei "_s + target, .icon = Icon::Exclamation});
}

/// The type of file that the save dialog offers. Recordings have a name of their own, as no program knows
/// them.
toolkit::FileType frmMmc_View::savedType() const
{
    const QString pattern = u"*."_s + QFileInfo(m_path).suffix();
    const bool isRecording = pattern.compare(u"*.vmo"_s, Qt::CaseInsensitive) == 0;
    return {(isRecording ? u"Sprachaufnahme (%1)"_s : u"Quelldateityp (%1)"_s).arg(pattern), {pattern}};
}

void frmMmc_View::done(int result)
{
    SaveFormLayout(*this, m_program.context.settings);
    m_closing.isClosed = true;
    m_sound->stop();
    if (m_works == 0)
        QDialog::done(result);
}

} // namespace kalmo::ui
