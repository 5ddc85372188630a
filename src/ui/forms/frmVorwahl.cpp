#include "ui/forms/frmVorwahl.h"

#include "app/Version.h"
#include "operations/PhoneSettings.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/LeaveCheck.h"
#include "ui/controls/Named.h"
#include "ui/controls/ucHeadline.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/forms/EntryDialogs.h"
#include "ui/forms/FormerStateWords.h"

#include <QCheckBox>
#include <QGridLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

const QString introduction =
    u"Ihr Gigaset verfügt über die Funktion, Landes- und Ortsvorwahlen einzustellen.\n\n"
    u"Das Telefon verwendet diese Einstellungen um telefonintern Nummer in ein vorgegebenes Format zu "
    u"überführen. Das Telefon unterzieht unter anderem jede Telefonnummer, die an Kalmo gesendet wird dieser "
    u"Formatierung.\n\n"
    u"Sind die Einstellungen falsch, erscheinen Nummern in Kalmo mit falsch beginnenden Vorwahlen. Es ist "
    u"daher ABSOLUT NOTWENDIG, die richtigen Einstellungen vor zu nehmen. Alternativ können Sie die "
    u"Vorwahlen abschalten."_s;

const std::array<QString, 4> captions = {
    u"Feld A: Internationale \"Rauswahl\", mit der Telefonnummern ins Ausland beginnen. Für Deutschland "
    u"immer 00. Das + ist nicht möglich."_s,
    u"Feld B: Internationale Landesvorwahl ohne Rauswahl. Für Deutschland immer 49 für Österreich 43 und für "
    u"die Schweiz 41 etc."_s,
    u"Feld C: Nationale \"Rauswahl\", mit der man aus seiner Stadt in andere Städte innerhalb des eigenen "
    u"Landes rauswählt. In Deutschland immer 0"_s,
    u"Feld D: Vorwahl der Stadt, in der man lebt aber ohne die nationale Rauswahl. Also die Ortsvorwahl ohne "
    u"die Null am Anfang. (Beispiel Berlin 030 > Feld D = 30)"_s};

const QString examples = u"Beispiel Bielefeld, Vorwahl 0521.  A=00 B=49 C=0 D=521\n"
                         u"Beispiel Berlin, Vorwahl 030.  A=00 B=49 C=0 D=30"_s;

constexpr int codeCharacters = 12; // that a field shows
constexpr int captionCharacters = 74;
constexpr int introductionCharacters = 92;

/// A text of that width or more, with the height that it needs then.
QLabel* wrapped(const QString& text, int characters)
{
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * characters);
    label->setMinimumHeight(label->heightForWidth(label->minimumWidth()));
    return label;
}

} // namespace

frmVorwahl::frmVorwahl(Program& program, QWidget* parent)
    : QDialog(parent), m_program(program),
      m_chkUseVw(named(new QCheckBox(u"&Vorwahlen verwenden"_s), u"chkUseVw"_s)),
      m_cmdSpeicher(named(new QPushButton(u"&Speichern"_s), u"cmdSpeicher"_s)),
      m_cmdCancel(named(new QPushButton(u"Abb&ruch"_s), u"cmdCancel"_s)),
      m_sta(named(new StatusLabel, u"sta"_s, u"Status"_s)), m_frame1(makeFields())
{
    setObjectName(u"frmVorwahl"_s);
    setWindowTitle(app::productName() + u" - Vorwahlnummern"_s);
    auto* headline = named(new ucHeadline(u"Vw"_s, u"Vorwahlnummern"_s), u"ucHeadline1"_s);
    QLabel* lblIntro = named(wrapped(introduction, introductionCharacters), u"lblIntro"_s);
    QWidget* buttons = makeSaveAndCancel(*this, m_cmdSpeicher, m_cmdCancel);
    auto* layout = new QVBoxLayout(this);
    makeRoom(*layout);
    layout->addWidget(headline);
    layout->addWidget(lblIntro);
    layout->addWidget(m_chkUseVw);
    layout->addWidget(m_frame1);
    layout->addStretch();
    layout->addWidget(buttons);
    layout->addWidget(m_sta);
    scrollAbove(*layout, layout->indexOf(buttons));
    m_busy = std::make_unique<WindowBusy>(QList<QWidget*>{m_chkUseVw, m_frame1, buttons});
    m_sta->SetText(u"Bereit."_s);
    connect(m_chkUseVw, &QCheckBox::toggled, this, &frmVorwahl::chkUseVw_Click);
    connect(m_cmdSpeicher, &QPushButton::clicked, this, &frmVorwahl::cmdSpeicher_Click);
    chkUseVw_Click(false);
    new ChangeGuard(*this, *m_cmdSpeicher, program.context);
}

frmVorwahl::~frmVorwahl() = default;

QGroupBox* frmVorwahl::makeFields()
{
    auto* frame = named(new QGroupBox(u"Vorwahlen"_s), u"Frame1"_s);
    auto* grid = new QGridLayout(frame);
    makeRoom(*grid);
    grid->setColumnStretch(0, 1);
    for (int index = 0; index < std::ssize(m_txtVw); ++index) {
        const QString letter = QString(QChar(u'A' + index));
        auto* field = named(new QLineEdit, u"txtVw%1"_s.arg(index), u"Feld "_s + letter);
        const QString mnemonic = u"Feld &"_s + QString(captions[index]).sliced(5);
        QLabel* label = wrapped(mnemonic, captionCharacters);
        label->setBuddy(field);
        field->setFixedWidth(field->fontMetrics().averageCharWidth() * codeCharacters);
        new LeaveCheck(*field, m_cmdCancel, [this, field] { return rejectCode(*field); });
        grid->addWidget(label, index, 0);
        grid->addWidget(field, index, 1);
        m_txtVw[index] = field;
        m_label1.append(label);
    }
    m_label1.append(new QLabel(examples));
    grid->addWidget(m_label1.last(), grid->rowCount(), 0, 1, 2);
    for (int index = 0; index < m_label1.size(); ++index)
        m_label1[index]->setObjectName(u"label1%1"_s.arg(index));
    return frame;
}

void frmVorwahl::Form_Present(const QString& answer)
{
    if (const auto codes = phonedata::parseAreaCodes(answer)) {
        for (size_t index = 0; index < codes->size(); ++index)
            m_txtVw[index]->setText((*codes)[index]);
    }
    m_chkUseVw->setChecked(phonedata::usesAreaCodes(answer));
}

void frmVorwahl::reject()
{
    if (!m_busy->isBusy())
        QDialog::reject();
}

void frmVorwahl::chkUseVw_Click(bool checked)
{
    m_frame1->setEnabled(checked);
}

void frmVorwahl::cmdSpeicher_Click()
{
    if (m_busy->isBusy())
        return;
    phonedata::AreaCodes codes;
    std::ranges::transform(m_txtVw, codes.begin(), &QLineEdit::text);
    if (m_chkUseVw->isChecked() && phonedata::hasBlankCode(codes)) {
        m_program.context.dialogs.Show(
            {.text = u"Mindestens eines der Eingabefelder A-D ist leer. Diese Eingabe macht keinen "
                     u"Sinn. Bitte prüfen Sie Ihre Eingabe oder schalten Sie die Verwendung von "
                     u"Vorwalen aus."_s,
             .icon = toolkit::Icon::Exclamation});
        return;
    }
    const auto isRejected = [this](const QLineEdit* field) { return rejectCode(*field); };
    const auto rejected = m_chkUseVw->isChecked() ? std::ranges::find_if(m_txtVw, isRejected) : m_txtVw.end();
    if (rejected != m_txtVw.end())
        (*rejected)->setFocus();
    else if (sendCodes(codes))
        accept();
}

bool frmVorwahl::sendCodes(const phonedata::AreaCodes& codes)
{
    const toolkit::BusyScope busy(m_busy.get());
    m_sta->SetText(u"Setze Vorwahl Einstellungen..."_s);
    const operations::Outcome outcome = operations::setAreaCodes(m_program.line, codes).outcome;
    if (outcome.isRecordOpen)
        m_program.context.dialogs.Show({.text = openRecordInWords(), .icon = toolkit::Icon::Exclamation});
    m_sta->SetText(outcome.isDone() ? u"Bereit."_s : u"Vorwahl nicht gesetzt."_s);
    if (!outcome.isDone())
        tellFailure(outcome);
    return outcome.isDone();
}

void frmVorwahl::tellFailure(const operations::Outcome& outcome)
{
    QString text =
        u"Die Vorwahleinstellungen konnten nicht gesetzt werden. Bitte prüfen Sie Ihre Eingaben."_s;
    toolkit::About about = toolkit::About::Other;
    if (outcome.cause == operations::Cause::NotSaved)
        text = u"Die bisherigen Vorwahlen konnten nicht gesichert werden: %1\n\nIm Telefon wurde nichts "
               u"geändert."_s.arg(reasonInWords(outcome.saveFault));
    else if (outcome.sent == 0)
        text = u"Die bisherigen Vorwahlen konnten nicht gelesen werden. Im Telefon wurde nichts geändert."_s;
    else if (outcome.cause == operations::Cause::Mismatch)
        text = u"Das Telefon hat die Vorwahlen bestätigt, zeigt beim Zurücklesen aber andere."_s;
    else if (outcome.confirmed > 0)
        text = u"Das Telefon hat die Vorwahlen bestätigt, sie konnten aber nicht zurückgelesen werden."_s;
    else if (outcome.state == operations::State::Unknown)
        text += u"\n\nDas Telefon hat nicht geantwortet. Welche Vorwahlen jetzt gelten, ist nicht bekannt."_s;
    else
        about = toolkit::About::Request;
    m_program.context.dialogs.Show({.text = text, .icon = toolkit::Icon::Information, .about = about});
}

bool frmVorwahl::rejectCode(const QLineEdit& field) const
{
    if (phonedata::isAreaCode(field.text()))
        return false;
    m_program.context.dialogs.Show(
        {.text = u"Bitte geben Sie nur Ziffern ein."_s, .icon = toolkit::Icon::Information});
    return true;
}

} // namespace kalmo::ui
