#include "ui/import/NumberFrame.h"

#include "ui/controls/LeaveCheck.h"
#include "ui/controls/Named.h"
#include "ui/controls/WideRows.h"
#include "ui/controls/WrappedCheck.h"
#include "ui/forms/EntryDialogs.h"

#include <QCheckBox>
#include <QComboBox>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using transfer::Shape;

namespace {

constexpr int charactersInLine = 120; // all of the longest text

} // namespace

NumberFrame::NumberFrame(Shape shape, const transfer::NumberRules& rules, toolkit::Dialogs& dialogs,
                         QWidget* parent)
    : QGroupBox(u"Rufnummern"_s, parent), m_shape(shape), m_dialogs(dialogs),
      m_chk49_00(named(
          new WrappedCheck(u"&Internationale Vorwahl (+ oder 00) bei inländischen Nummern gigasetgerecht "
                           u"umwandeln (empfohlen)"_s,
                           charactersInLine),
          u"chk49_00"_s)),
      m_txtCountry(named(new QLineEdit(rules.country), u"txtCountry"_s, u"Eigene Landesvorwahl"_s)),
      m_chkAmt(named(new QCheckBox(u"Amts&holung - Diese Ziffern voranstellen"_s), u"chkAmt"_s)),
      m_txtAmt(named(new QLineEdit(rules.outsideDigits), u"txtAmt"_s, u"Ziffern für die Amtsholung"_s)),
      m_chkAmtNurWenn(named(new QCheckBox(u"nur &wenn Nummer min."_s), u"chkAmtNurWenn"_s)),
      m_cmbAmtMinLen(named(new QComboBox, u"cmbAmtMinLen"_s, u"Mindestlänge der Nummer"_s))
{
    setObjectName(u"fraNumbers"_s);
    m_chk49_00->setChecked(rules.convertCountry);
    m_chkAmt->setChecked(rules.outsideLine);
    auto* column = new QVBoxLayout(this);
    makeRoom(*column);
    column->addWidget(makeCountryLine());
    column->addWidget(makeOutsideLine());
    enableOutside();
}

QWidget* NumberFrame::makeCountryLine()
{
    m_txtCountry->setMaxLength(transfer::longestCountry);
    m_txtCountry->setMaximumWidth(fontMetrics().averageCharWidth() * 10);
    auto* label = named(new QLabel(u"Eigene Landes&vorwahl"_s), u"lblCountry"_s);
    label->setBuddy(m_txtCountry);
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_chk49_00, 1, Qt::AlignVCenter);
    row->addWidget(label);
    row->addWidget(m_txtCountry);
    line->setVisible(m_shape == Shape::Classic);
    connect(m_chk49_00, &QCheckBox::toggled, this, &NumberFrame::changed);
    connect(m_txtCountry, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (transfer::isCountryCode(text))
            Q_EMIT changed();
    });
    return line;
}

QWidget* NumberFrame::makeOutsideLine()
{
    m_txtAmt->setMaxLength(transfer::longestOutsideLine);
    m_txtAmt->setMaximumWidth(fontMetrics().averageCharWidth() * 8);
    m_cmbAmtMinLen->setEditable(true);
    for (int length = 2; length <= 9; ++length)
        m_cmbAmtMinLen->addItem(QString::number(length));
    m_cmbAmtMinLen->setCurrentText(transfer::NumberRules().minimumLength);
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    auto* digits = new QHBoxLayout;
    digits->addWidget(m_chkAmt);
    digits->addWidget(m_txtAmt);
    digits->addSpacing(fontMetrics().averageCharWidth() * 3);
    digits->addStretch();
    auto* length = new QHBoxLayout;
    length->addWidget(m_chkAmtNurWenn);
    length->addWidget(m_cmbAmtMinLen);
    length->addWidget(new QLabel(u"Ziffern lang."_s));
    length->addStretch();
    row->addLayout(digits);
    row->addLayout(length, 1);
    stackIfTooWide(*row);
    connect(m_chkAmt, &QCheckBox::toggled, this, &NumberFrame::enableOutside);
    connect(m_chkAmtNurWenn, &QCheckBox::toggled, this, &NumberFrame::enableOutside);
    for (const QCheckBox* box : {m_chkAmt, m_chkAmtNurWenn})
        connect(box, &QCheckBox::toggled, this, &NumberFrame::changed);
    connect(m_cmbAmtMinLen, &QComboBox::currentTextChanged, this, &NumberFrame::changed);
    connect(m_txtAmt, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (transfer::isOutsideLine(text))
            Q_EMIT changed();
    });
    return line;
}

void NumberFrame::enableOutside()
{
    const bool isOn = m_chkAmt->isChecked();
    m_txtAmt->setEnabled(isOn);
    m_chkAmtNurWenn->setEnabled(isOn);
    if (!isOn)
        m_chkAmtNurWenn->setChecked(false);
    m_cmbAmtMinLen->setEnabled(m_chkAmtNurWenn->isChecked());
}

void NumberFrame::guardAgainst(const QWidget* exit)
{
    new LeaveCheck(*m_txtCountry, exit, [this] { return rejectsCountry(); });
    new LeaveCheck(*m_txtAmt, exit, [this] { return rejectsOutside(); });
}

bool NumberFrame::rejectsFields()
{
    return rejectsCountry() || rejectsOutside();
}

bool NumberFrame::rejectsCountry()
{
    if (m_shape == Shape::Vcard || transfer::isCountryCode(m_txtCountry->text()))
        return false;
    m_dialogs.Show(
        {.text = u"Bitte geben Sie die eigene Ladesvorwahl mit einem + beginnend ein. Für Deutschland +49"_s,
         .icon = toolkit::Icon::Exclamation});
    m_txtCountry->setFocus();
    return true;
}

bool NumberFrame::rejectsOutside()
{
    if (!m_chkAmt->isChecked() || transfer::isOutsideLine(m_txtAmt->text()))
        return false;
    m_dialogs.Show({.text = u"Bitte geben Sie für die Amtsholung einen Wert von 0 bis 999 ein."_s,
                    .icon = toolkit::Icon::Exclamation});
    m_txtAmt->setFocus();
    return true;
}

void NumberFrame::take(transfer::NumberRules& rules) const
{
    rules.convertCountry = m_chk49_00->isChecked();
    rules.country = m_txtCountry->text();
    rules.outsideLine = m_chkAmt->isChecked();
    rules.outsideDigits = m_txtAmt->text();
    rules.longNumbersOnly = m_chkAmtNurWenn->isChecked();
    rules.minimumLength = m_cmbAmtMinLen->currentText();
}

} // namespace kalmo::ui
