#include "ui/forms/frmVCFneu.h"

#include "app/Version.h"
#include "phonedata/EntryRules.h"
#include "phonedata/PhoneCharacters.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/LeaveCheck.h"
#include "ui/controls/Named.h"
#include "ui/controls/PhoneFields.h"
#include "ui/controls/ucCalendar.h"
#include "ui/controls/ucHeadline.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/forms/ContactMessages.h"
#include "ui/forms/EntryDialogs.h"
#include "ui/icons/Icons.h"

#include <QCheckBox>
#include <QComboBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using namespace phonedata;
using toolkit::Answer;

frmVCFneu::frmVCFneu(Program& program, std::shared_ptr<VcardStore> store, QWidget* parent)
    : QDialog(parent), m_program(program), m_store(std::move(store)),
      m_calGebu(named(new ucCalendar(program.context, this), u"calGebu"_s)),
      m_txtNachName(named(new QLineEdit, u"txtNachName"_s, u"Nachname"_s)),
      m_txtVorname(named(new QLineEdit, u"txtVorname"_s, u"Vorname"_s)),
      m_txtTelPrivat(named(new ContactNumberField, u"txtTelPrivat"_s, u"Telefon privat"_s)),
      m_txtTelHandy(named(new ContactNumberField, u"txtTelHandy"_s, u"Telefon Handy"_s)),
      m_txtTelGeschaeft(named(new ContactNumberField, u"txtTelGeschäft"_s, u"Telefon geschäftlich"_s)),
      m_txtEmail(named(new QLineEdit, u"txtEmail"_s, u"E-Mail"_s)),
      m_chkGebu(named(new QCheckBox(u"&Jahrestag verwenden"_s), u"chkGebu"_s)),
      m_txtGebu(named(new QLineEdit, u"txtGebu"_s, u"Datum des Jahrestags"_s)),
      m_cmdGebuEdit(named(new QToolButton, u"cmdGebuEdit"_s, u"Kalender anzeigen"_s)),
      m_cmbGebuTime(named(new QComboBox, u"cmbGebuTime"_s, u"Uhrzeit der Erinnerung"_s)),
      m_lblSpNr(named(new QLabel(this), u"lblSpNr"_s)), m_sta(named(new StatusLabel, u"sta"_s, u"Status"_s)),
      m_progBarStatus(named(new ProgressStrip, u"progBarStatus"_s, u"Fortschritt"_s)),
      m_cancel(named(new CancelCheck, u"cmdCancel"_s, u"Vorgang abbrechen"_s)),
      m_cmdSpeichern(named(new QPushButton(u"&Speichern"_s), u"cmdSpeichern"_s)),
      m_cmdAbbruch(named(new QPushButton(u"&Abbruch"_s), u"cmdAbbruch"_s))
{
    setObjectName(u"frmVCFneu"_s);
    setWindowTitle(app::productName() + u" - Telefonbuch"_s);
    m_lblSpNr->hide();
    auto* headline = new ucHeadline(
        u"tb"_s, u"Eintrag im Telefonbuch"_s,
        u"Speichern überträgt den Eintrag sofort ins Telefon. Er braucht mindestens eine Telefonnummer."_s);
    auto* layout = new QVBoxLayout(this);
    makeRoom(*layout);
    layout->addWidget(named(headline, u"ucHeadline"_s));
    QWidget* fields = makeFields();
    layout->addWidget(fields);
    layout->addStretch();
    QWidget* buttons = makeSaveAndCancel(*this, m_cmdSpeichern, m_cmdAbbruch);
    layout->addWidget(buttons);
    layout->addWidget(makeStatusBar());
    scrollAbove(*layout, layout->indexOf(buttons));
    m_busy = std::make_unique<WindowBusy>(QList<QWidget*>{fields, buttons});
    connect(m_chkGebu, &QCheckBox::toggled, this, &frmVCFneu::chkGebu_Click);
    connect(m_cmdSpeichern, &QPushButton::clicked, this, &frmVCFneu::cmdSpeichern_Click);
    for (QWidget* control : {static_cast<QWidget*>(m_lblDate), static_cast<QWidget*>(m_txtGebu),
                             static_cast<QWidget*>(m_cmdGebuEdit), static_cast<QWidget*>(m_cmbGebuTime),
                             static_cast<QWidget*>(m_lblcmbGebuTimePre)})
        control->setEnabled(false);
    new ChangeGuard(*this, *m_cmdSpeichern, program.context);
    m_txtNachName->setFocus();
}

frmVCFneu::~frmVCFneu() = default;

QWidget* frmVCFneu::makeFields()
{
    auto* frame = named(new QGroupBox(u"Anschrift"_s), u"fraVCFAnschrift"_s);
    auto* form = new QFormLayout(frame);
    makeRoom(*form);
    addText(*form, u"&Nachname"_s, m_txtNachName, longestName);
    addText(*form, u"&Vorname"_s, m_txtVorname, longestName);
    addNumber(*form, u"Tel. &privat"_s, m_txtTelPrivat);
    addNumber(*form, u"Tel. &Handy"_s, m_txtTelHandy);
    addNumber(*form, u"Tel. &geschäftlich"_s, m_txtTelGeschaeft);
    addText(*form, u"&Email"_s, m_txtEmail, longestEmail);
    addBirthday(*form);
    return frame;
}

void frmVCFneu::addText(QFormLayout& form, const QString& label, QLineEdit* field, int longest)
{
    field->setMaxLength(longest);
    addField(form, label, field);
}

void frmVCFneu::addNumber(QFormLayout& form, const QString& label, QLineEdit* field)
{
    addField(form, label, field);
    new LeaveCheck(*field, m_cmdAbbruch, [this, field] { return rejectNumber(*field); });
}

void frmVCFneu::addBirthday(QFormLayout& form)
{
    m_cmdGebuEdit->setIcon(icon(u"calendar"_s));
    m_cmdGebuEdit->setToolTip(u"Kalender anzeigen"_s);
    m_cmbGebuTime->setEditable(true);
    m_cmbGebuTime->addItems(reminderTimes());
    m_cmbGebuTime->clearEditText();
    auto* date = new QHBoxLayout;
    date->addWidget(m_txtGebu, 1);
    date->addWidget(m_cmdGebuEdit);
    m_lblDate = new QLabel(u"&Datum"_s);
    m_lblDate->setBuddy(m_txtGebu);
    form.addRow(m_chkGebu);
    form.addRow(m_lblDate, date);
    m_lblcmbGebuTimePre = named(addField(form, u"Uhr&zeit"_s, m_cmbGebuTime), u"lblcmbGebuTimePre"_s);
    bindDateField(*m_calGebu, *m_txtGebu, *m_cmdGebuEdit, m_cmdAbbruch);
    new LeaveCheck(*m_cmbGebuTime, m_cmdAbbruch, [this] { return rejectTime(); });
}

QWidget* frmVCFneu::makeStatusBar()
{
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins({});
    layout->addWidget(m_sta, 1);
    layout->addWidget(m_progBarStatus);
    layout->addWidget(m_cancel);
    m_cancel->hide();
    m_cancel->answerIn(*m_sta);
    return bar;
}

void frmVCFneu::loadRow(int row)
{
    const tVcfEntry shown = vcfEntryFrom(m_store->list()->row(row));
    m_edited.shown = shown;
    showWhole(*m_txtNachName, shown.lastName);
    showWhole(*m_txtVorname, shown.firstName);
    showWhole(*m_txtTelPrivat, shown.home);
    showWhole(*m_txtTelHandy, shown.mobile);
    showWhole(*m_txtTelGeschaeft, shown.work);
    showWhole(*m_txtEmail, shown.email);
    m_txtEmail->setCursorPosition(0);
    m_lblSpNr->setText(shown.luid);
    if (!m_store->list()->text(row, VcfBirthday).isEmpty())
        loadBirthday(shown.birthday);
}

void frmVCFneu::loadBirthday(const QString& birthday)
{
    m_chkGebu->setChecked(true); // shows today
    const qsizetype end = birthday.indexOf(u'T');
    const QString day = birthday.first(end < 0 ? birthday.size() : end);
    const QDate date = QDate::fromString(day, u"yyyy-M-d"_s);
    if (date.isValid()) {
        m_calGebu->setValue(date);
        m_calGebu->Value2TxtBox(*m_txtGebu);
    } else {
        m_txtGebu->setText(day); // the user has to correct it
    }
    m_cmbGebuTime->setCurrentText(end < 0 ? QString() : birthday.mid(end + 1));
}

void frmVCFneu::reject()
{
    if (m_busy->isBusy()) {
        m_cancel->setChecked(true);
        return;
    }
    Q_EMIT listChanged(false);
    QDialog::reject();
}

void frmVCFneu::chkGebu_Click(bool checked)
{
    m_lblDate->setEnabled(checked);
    m_txtGebu->setEnabled(checked);
    m_cmdGebuEdit->setEnabled(checked);
    m_cmbGebuTime->setEnabled(checked);
    m_lblcmbGebuTimePre->setEnabled(checked);
    if (!checked)
        return;
    m_calGebu->Today();
    m_calGebu->Value2TxtBox(*m_txtGebu);
    m_cmbGebuTime->setCurrentText(m_program.context.clock.Now().toString(u"hh:mm"_s));
}

void frmVCFneu::cmdSpeichern_Click()
{
    if (m_busy->isBusy() || rejectAnyNumber() ||
        (entry().hasNumber() && (rejectBirthday() || !askAboutLosses())))
        return;
    const CommandResult result = send();
    if (result == CommandResult::Cancelled)
        m_sta->SetText(u"Abgebrochen. Im Telefon wurde nichts geändert."_s);
    if (result == CommandResult::Refused || result == CommandResult::Cancelled) {
        m_txtTelPrivat->setFocus();
        return;
    }
    Q_EMIT listChanged(result == CommandResult::Done);
    if (result == CommandResult::Done)
        accept();
}

CommandResult frmVCFneu::send()
{
    const toolkit::BusyScope busy(m_busy.get());
    m_cancel->reset();
    m_cancel->show();
    m_lastSave = saveContact(*m_store, entry(), m_edited, {m_sta, m_progBarStatus, m_cancel});
    m_lblSpNr->setText(m_edited.shown ? m_edited.shown->luid : QString());
    m_cancel->hide();
    m_sta->release();
    return *m_lastSave;
}

bool frmVCFneu::rejectNumber(QLineEdit& field)
{
    const QString compact = field.text().remove(u' ');
    const QString accepted = acceptedContactNumber(compact);
    field.setText(accepted);
    if (accepted == compact)
        return false;
    tell(
        u"Die eingegebene Telefonnummer enthielt unzulässige Zeichen und wurde gekürzt. Bitte überprüfen Sie "
        u"Ihre Eingabe."_s);
    return true;
}

bool frmVCFneu::rejectTime()
{
    if (isTimeOfDay(m_cmbGebuTime->currentText()))
        return false;
    tell(u"Bitte geben Sie eine gültige Startzeit im Format hh:mm ein. (z.B. 12:30)"_s);
    return true;
}

/// Checks the numbers as leaving their fields does: Enter within a field leaves none. Returns true if one is
/// wrong, which then has the focus.
bool frmVCFneu::rejectAnyNumber()
{
    for (QLineEdit* number : {m_txtTelPrivat, m_txtTelHandy, m_txtTelGeschaeft}) {
        if (!rejectNumber(*number))
            continue;
        number->setFocus();
        return true;
    }
    return false;
}

/// Does the same for the date and its time.
bool frmVCFneu::rejectBirthday()
{
    if (!m_chkGebu->isChecked() || m_txtGebu->text().isEmpty())
        return false;
    QWidget* wrong = m_calGebu->Validate2TxtBox(*m_txtGebu) ? static_cast<QWidget*>(m_txtGebu)
                     : rejectTime()                         ? m_cmbGebuTime
                                                            : nullptr;
    if (wrong)
        wrong->setFocus();
    return wrong != nullptr;
}

/// Asks about texts that do not come through the contact's card. Returns true if it is to be saved.
bool frmVCFneu::askAboutLosses()
{
    const ContactReading* reading = m_store->lastReading();
    const tVcfEntry made = entry();
    const ContactCard* held = reading && !made.luid.isEmpty() ? reading->cards.find(made.luid) : nullptr;
    const QString losses = lossText(operations::lossesWhenSent(made, held));
    if (losses.isEmpty())
        return true;
    const Answer answer = m_program.context.dialogs.Show(
        {.text = losses + u"\n\nSoll der Eintrag trotzdem gespeichert werden?"_s,
         .title = windowTitle(),
         .buttons = toolkit::Buttons::YesNo,
         .icon = toolkit::Icon::Question,
         .defaultButton = Answer::No});
    if (answer != Answer::Yes)
        m_txtNachName->setFocus();
    return answer == Answer::Yes;
}

tVcfEntry frmVCFneu::entry() const
{
    tVcfEntry made{.email = m_txtEmail->text(),
                   .lastName = m_txtNachName->text(),
                   .work = m_txtTelGeschaeft->text(),
                   .mobile = m_txtTelHandy->text(),
                   .home = m_txtTelPrivat->text(),
                   .firstName = m_txtVorname->text(),
                   .luid = m_lblSpNr->text()};
    if (m_chkGebu->isChecked() && !m_txtGebu->text().isEmpty())
        made.birthday = writtenBirthday(m_calGebu->value(), m_cmbGebuTime->currentText());
    return made;
}

void frmVCFneu::tell(const QString& text) const
{
    m_program.context.dialogs.Show({.text = text, .icon = toolkit::Icon::Information});
}

} // namespace kalmo::ui
