#include "ui/controls/TrimChoice.h"

#include "app/mdlKonverter.h"
#include "media/UploadRules.h"
#include "ui/controls/LeaveCheck.h"
#include "ui/controls/Named.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

TrimChoice::TrimChoice(app::Context& context, QWidget* parent)
    : QWidget(parent), m_context(context),
      m_chkTrimWav(named(new QCheckBox(u"Besch&neiden auf erste"_s), u"chkTrimWav"_s)),
      m_cmbTrimWav(named(new QComboBox, u"cmbTrimWav"_s, u"Sekunden"_s))
{
    setObjectName(u"fraWav"_s);
    auto* row = new QHBoxLayout(this);
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
        Q_EMIT changed();
    };
    enable(false);
    connect(m_chkTrimWav, &QCheckBox::toggled, this, enable);
    connect(m_cmbTrimWav, &QComboBox::currentTextChanged, this, &TrimChoice::changed);
    new LeaveCheck(*m_cmbTrimWav, nullptr, [this] { return rejects(); });
}

bool TrimChoice::isUsed() const
{
    return m_chkTrimWav->isChecked();
}

int TrimChoice::seconds() const
{
    if (!isUsed())
        return 0;
    const QString text = m_cmbTrimWav->currentText();
    return app::IsNumeric(text) ? std::max(0, app::ValInt(text)) : media::defaultTrim;
}

bool TrimChoice::rejects()
{
    bool isWhole = false;
    if (!isUsed() || (m_cmbTrimWav->currentText().trimmed().toInt(&isWhole) > 0 && isWhole))
        return false;
    Q_EMIT rejected();
    m_context.dialogs.Show({.text = u"Bitte geben Sie die Sekunden als ganze Zahl größer Null ein."_s,
                            .icon = toolkit::Icon::Information});
    return true;
}

bool TrimChoice::rejectsNumber()
{
    return app::IsNumeric(m_cmbTrimWav->currentText()) && rejects();
}

} // namespace kalmo::ui
