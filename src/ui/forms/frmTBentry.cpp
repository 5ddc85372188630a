#include "ui/forms/frmTBentry.h"

#include "app/Version.h"
#include "link/PhoneModels.h"
#include "phonedata/EntryRules.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/LeaveCheck.h"
#include "ui/controls/Named.h"
#include "ui/controls/PhoneFields.h"
#include "ui/controls/ucCalendar.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/forms/EntryDialogs.h"
#include "ui/icons/Icons.h"

#include <QCheckBox>
#include <QComboBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using namespace phonedata;

namespace {

const QString vipMark = u"Ja"_s;

/// Shows a text that the combo may not contain, such as the melody of another handset.
void showText(QComboBox& combo, const QString& text)
{
    if (text.isEmpty())
        return;
    if (combo.findText(text) < 0)
        combo.addItem(text);
    combo.setCurrentText(text);
}

} // namespace

frmTBentry::frmTBentry(Program& program, toolkit::ListRows& lvwTB, QWidget* parent)
    : QDialog(parent), m_program(program), m_list(lvwTB), m_calDate(new ucCalendar(program.context, this)),
      m_txtName(new NameField), m_txtNr(new NumberField), m_chkUsebDate(new QCheckBox),
      m_txtbDate(new QLineEdit), m_cmdEditDate(new QToolButton), m_cmbTime(new QComboBox),
      m_cmbAlarm(new QComboBox), m_lblCalNotive(new QLabel), m_chkVip(new QCheckBox),
      m_cmbVipSnd(new QComboBox), m_lblcmbVipSndPre(nullptr), m_lblSprache(new QLabel(this)),
      m_cmdSpeicher(named(new QPushButton(u"&Speichern"_s), u"cmdSpeicher"_s)),
      m_cmdCancel(named(new QPushButton(u"&Abbruch"_s), u"cmdCancel"_s))
{
    setObjectName(u"frmTBentry"_s);
    setWindowTitle(app::productName() + u" - Telefonbuch"_s);
    named(m_calDate, u"calDate"_s);
    named(m_lblSprache, u"lblSprache"_s)->hide();
    auto* layout = new QVBoxLayout(this);
    makeRoom(*layout);
    layout->addWidget(makeNameAndNumber(m_txtName, m_txtNr));
    layout->addWidget(makeDatePart());
    layout->addWidget(makeVipPart());
    layout->addStretch();
    QWidget* buttons = makeSaveAndCancel(*this, m_cmdSpeicher, m_cmdCancel);
    layout->addWidget(buttons);
    scrollAbove(*layout, layout->indexOf(buttons));
    fillCombos();
    bindDateField(*m_calDate, *m_txtbDate, *m_cmdEditDate, m_cmdCancel);
    connect(m_chkUsebDate, &QCheckBox::toggled, this, &frmTBentry::chkUsebDate_Click);
    connect(m_chkVip, &QCheckBox::toggled, this, &frmTBentry::chkVip_Click);
    connect(m_cmdSpeicher, &QPushButton::clicked, this, &frmTBentry::cmdSpeicher_Click);
    for (QWidget* control : std::as_const(m_dateControls))
        control->setEnabled(false);
    chkVip_Click(false);
    new LeaveCheck(*m_cmbTime, m_cmdCancel, [this] { return refuseTime(); });
    new ChangeGuard(*this, *m_cmdSpeicher, program.context);
}

QWidget* frmTBentry::makeDatePart()
{
    named(m_chkUsebDate, u"chkUsebDate"_s)->setText(u"&Jahrestag verwenden"_s);
    named(m_txtbDate, u"txtbDate"_s, u"Datum"_s);
    named(m_cmdEditDate, u"cmdEditDate"_s, u"Kalender anzeigen"_s)->setToolTip(u"Kalender anzeigen"_s);
    m_cmdEditDate->setIcon(icon(u"calendar"_s));
    named(m_cmbTime, u"cmbTime"_s, u"Uhrzeit"_s)->setEditable(true);
    named(m_cmbAlarm, u"cmbAlarm"_s, u"Alarm"_s);
    named(m_lblCalNotive, u"lblCalNotive"_s)
        ->setText(u"Der Jahrestag wird im Telefon nur mit Monat und Tag gespeichert. Es ist daher egal, "
                  u"welches Jahr Sie eingeben."_s);
    m_lblCalNotive->setWordWrap(true);

    auto* frame = new QGroupBox(u"Jahrestag"_s);
    auto* form = new QFormLayout(frame);
    makeRoom(*form);
    form->addRow(m_chkUsebDate);
    auto* date = new QHBoxLayout;
    date->addWidget(m_txtbDate, 1);
    date->addWidget(m_cmdEditDate);
    auto* dateLabel = new QLabel(u"&Datum"_s);
    dateLabel->setBuddy(m_txtbDate);
    form->addRow(dateLabel, date);
    QLabel* timeLabel = addField(*form, u"Uhr&zeit"_s, m_cmbTime);
    QLabel* alarmLabel = addField(*form, u"A&larm"_s, m_cmbAlarm);
    form->addRow(m_lblCalNotive);
    m_dateControls = {m_txtbDate,     m_cmbTime, m_cmbAlarm, m_cmdEditDate,
                      m_lblCalNotive, dateLabel, timeLabel,  alarmLabel};
    return frame;
}

QWidget* frmTBentry::makeVipPart()
{
    named(m_chkVip, u"chkVip"_s)->setText(u"&VIP"_s);
    named(m_cmbVipSnd, u"cmbVipSnd"_s, u"Klingelton"_s);
    auto* frame = new QGroupBox(u"Wichtiger Anrufer"_s);
    auto* form = new QFormLayout(frame);
    makeRoom(*form);
    form->addRow(m_chkVip);
    m_lblcmbVipSndPre = named(addField(*form, u"&Klingelton"_s, m_cmbVipSnd), u"lblcmbVipSndPre"_s);
    return frame;
}

void frmTBentry::fillCombos()
{
    const int phoneType = m_program.context.sy.PhoneType;
    m_cmbTime->addItems(reminderTimes());
    if (!link::isClassic(phoneType))
        return;
    QStringList sounds = builtInMelodies() + QStringList{u"Optisch"_s};
    if (!link::marksVip(phoneType)) {
        m_cmbVipSnd->addItem(u"Nicht vom Gigaset micro unterstützt"_s);
        m_chkVip->setEnabled(false);
    } else {
        for (int row = 1; row <= m_program.memory.sounds.upperBound(); ++row) {
            if (const QString name = m_program.memory.sounds.row(row).name; !name.isEmpty())
                sounds.append(name);
        }
        m_cmbVipSnd->addItems(sounds);
    }
    m_cmbAlarm->addItems(sounds);
}

void frmTBentry::Form_Present(int row)
{
    m_row = row;
    if (row < 0)
        return;
    m_list.setCurrent(row);
    const ClassicEntry entry = classicEntryFrom(m_list.row(row));
    showWhole(*m_txtName, entry.name);
    showWhole(*m_txtNr, entry.number);
    m_lblSprache->setText(entry.languageTag);
    if (!entry.date.isEmpty()) {
        const QDate date = anniversaryDate(entry.date, m_program.context.clock.Now().date());
        if (date.isValid()) {
            m_calDate->setValue(date);
            m_calDate->Value2TxtBox(*m_txtbDate);
        } else {
            m_txtbDate->setText(entry.date); // the user has to correct it
        }
        m_cmbTime->setCurrentText(anniversaryTime(entry.date));
        showText(*m_cmbAlarm, entry.dateSound);
    }
    m_chkUsebDate->setChecked(!entry.date.isEmpty());
    if (m_chkVip->isEnabled()) {
        showText(*m_cmbVipSnd, entry.vipSound);
        m_chkVip->setChecked(entry.vip == vipMark);
    }
}

void frmTBentry::chkUsebDate_Click(bool checked)
{
    for (QWidget* control : std::as_const(m_dateControls))
        control->setEnabled(checked);
    if (!checked || !m_txtbDate->text().isEmpty())
        return;
    m_calDate->Today();
    m_calDate->Value2TxtBox(*m_txtbDate);
}

void frmTBentry::chkVip_Click(bool checked)
{
    m_cmbVipSnd->setEnabled(checked);
    m_lblcmbVipSndPre->setEnabled(checked);
}

void frmTBentry::cmdSpeicher_Click()
{
    if (m_txtName->text().isEmpty() || m_txtNr->text().isEmpty()) {
        tell(nameAndNumberMissing.toString(), m_txtName->text().isEmpty() ? *m_txtName : *m_txtNr);
        return;
    }
    // Checked before the list changes: a wrong time must not cost the old row.
    if (m_chkUsebDate->isChecked() && (refuseTime() || !isDateGiven()))
        return;
    if (m_row >= 0)
        m_list.removeAt(m_row);
    m_list.setCurrent(m_list.add(toRow(entry())));
    m_program.memory.TbDirty = true;
    Q_EMIT listChanged();
    accept();
}

/// Reports a wrong time. Returns true if the field has to keep the focus.
bool frmTBentry::refuseTime()
{
    if (isTimeOfDay(m_cmbTime->currentText()))
        return false;
    tell(u"Bitte geben Sie eine gültige Uhrzeit ein! (z.B. 12:30)"_s, *m_cmbTime);
    return true;
}

bool frmTBentry::isDateGiven()
{
    if (m_txtbDate->text().isEmpty()) {
        tell(u"Bitte geben Sie ein gültiges Datum ein! (z.B. 13.11.)"_s, *m_txtbDate);
        return false;
    }
    if (m_calDate->Validate2TxtBox(*m_txtbDate)) {
        m_txtbDate->setFocus();
        return false;
    }
    return true;
}

ClassicEntry frmTBentry::entry() const
{
    ClassicEntry made{.name = m_txtName->text(), .number = m_txtNr->text()};
    if (m_chkUsebDate->isChecked()) {
        made.date = anniversaryText(m_calDate->value(), m_cmbTime->currentText());
        made.dateSound = m_cmbAlarm->currentText();
    }
    if (m_chkVip->isChecked()) {
        made.vip = vipMark;
        made.vipSound = m_cmbVipSnd->currentText();
    }
    made.languageTag = m_lblSprache->text();
    return made;
}

void frmTBentry::tell(const QString& text, QWidget& field)
{
    m_program.context.dialogs.Show({.text = text, .icon = toolkit::Icon::Information});
    field.setFocus();
}

} // namespace kalmo::ui
