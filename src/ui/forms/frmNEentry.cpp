#include "ui/forms/frmNEentry.h"

#include "app/Version.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/Named.h"
#include "ui/controls/PhoneFields.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/forms/EntryDialogs.h"

#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

frmNEentry::frmNEentry(Program& program, toolkit::ListRows& lvwNE, QWidget* parent)
    : QDialog(parent), m_program(program), m_list(lvwNE), m_txtName(new NameField), m_txtNr(new NumberField),
      m_cmdSpeicher(named(new QPushButton(u"&Speichern"_s), u"cmdSpeicher"_s)),
      m_cmdCancel(named(new QPushButton(u"&Abbruch"_s), u"cmdCancel"_s))
{
    setObjectName(u"frmNEentry"_s);
    setWindowTitle(app::productName() + u" - Provider"_s);
    auto* layout = new QVBoxLayout(this);
    makeRoom(*layout);
    layout->addWidget(makeNameAndNumber(m_txtName, m_txtNr));
    layout->addStretch();
    QWidget* buttons = makeSaveAndCancel(*this, m_cmdSpeicher, m_cmdCancel);
    layout->addWidget(buttons);
    scrollAbove(*layout, layout->indexOf(buttons));
    connect(m_cmdSpeicher, &QPushButton::clicked, this, &frmNEentry::cmdSpeicher_Click);
    new ChangeGuard(*this, *m_cmdSpeicher, program.context);
}

void frmNEentry::Form_Present(int row)
{
    m_row = row;
    if (row < 0)
        return;
    m_list.setCurrent(row);
    const phonedata::ProviderEntry entry = phonedata::providerEntryFrom(m_list.row(row));
    showWhole(*m_txtName, entry.name);
    showWhole(*m_txtNr, entry.number);
}

void frmNEentry::cmdSpeicher_Click()
{
    if (m_txtName->text().isEmpty() || m_txtNr->text().isEmpty()) {
        m_program.context.dialogs.Show(
            {.text = nameAndNumberMissing.toString(), .icon = toolkit::Icon::Information});
        (m_txtName->text().isEmpty() ? m_txtName : m_txtNr)->setFocus();
        return;
    }
    if (m_row >= 0)
        m_list.removeAt(m_row);
    m_list.setCurrent(
        m_list.add(phonedata::toRow(phonedata::ProviderEntry{m_txtName->text(), m_txtNr->text()})));
    m_program.memory.NeDirty = true;
    Q_EMIT listChanged();
    accept();
}

} // namespace kalmo::ui
