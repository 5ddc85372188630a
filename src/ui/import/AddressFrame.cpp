#include "ui/import/AddressFrame.h"

#include "transfer/import/NumberRewriting.h"
#include "ui/controls/LeaveCheck.h"
#include "ui/controls/Named.h"
#include "ui/controls/WideRows.h"
#include "ui/forms/EntryDialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QMenu>
#include <QSignalBlocker>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using transfer::Shape;

namespace {

// The third ones differ on purpose.
const QStringList firstCounts = {u"01"_s, u"03"_s, u"05"_s, u"10"_s, u"15"_s, u"16"_s};
const QStringList secondCounts = {u"01"_s, u"03"_s, u"04"_s, u"10"_s, u"15"_s, u"16"_s};

QComboBox* makeFieldBox(const QString& name, const QString& spoken, transfer::FieldKind kind, int position)
{
    auto* box = named(new QComboBox, name, spoken);
    for (const transfer::AddressField& field : transfer::choicesOf(kind))
        box->addItem(field.text.toString());
    box->setCurrentIndex(position);
    return box;
}

/// Cuts refused characters out of a field, and keeps the cursor after the cut.
void keepNameCharacters(QLineEdit& field)
{
    const QString text = field.text();
    const QString kept = transfer::FilterName(text);
    if (kept == text)
        return;
    const auto cursor = transfer::FilterName(text.first(field.cursorPosition())).size();
    field.setText(kept);
    field.setCursorPosition(static_cast<int>(cursor));
}

} // namespace

AddressFrame::AddressFrame(Shape shape, const transfer::AddressOptions& options, toolkit::Dialogs& dialogs,
                           QWidget* parent)
    : QGroupBox(u"Adressbuch"_s, parent), m_shape(shape), m_dialogs(dialogs),
      m_cmdWabOpen(named(new QPushButton(u"Adressbuch ö&ffnen"_s), u"cmdWabOpen"_s)),
      m_txtWabPath(named(new QLineEdit(u"Bitte Adressbuch auswählen..."_s), u"txtWabPath"_s, u"Adressbuch"_s))
{
    setObjectName(shape == Shape::Classic ? u"fraWab"_s : u"fraWabVcf"_s);
    auto* column = new QVBoxLayout(this);
    makeRoom(*column);
    column->addWidget(makeBookLine());
    column->addWidget(shape == Shape::Classic ? makeNumbers(options) : makeContactFields(options));
    column->addWidget(makeBirthdays(options));
}

QWidget* AddressFrame::makeBookLine()
{
    auto* menu = named(new QMenu(this), u"mnuWabOpen"_s, u"Adressbuch öffnen"_s);
    menu->addAction(u"&Datei (*.wab, *.vcf)"_s, this, [this] { Q_EMIT bookWanted(false); });
    menu->addAction(u"&Ordner mit *.vcf Dateien"_s, this, [this] { Q_EMIT bookWanted(true); });
    m_cmdWabOpen->setMenu(menu);
    m_cmdWabOpen->setAutoDefault(false);
    m_txtWabPath->setReadOnly(true);
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_cmdWabOpen);
    row->addWidget(m_txtWabPath, 1);
    return line;
}

QWidget* AddressFrame::makeNumbers(const transfer::AddressOptions& options)
{
    auto* box = new QWidget;
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    const QStringList heads = {u"Nummer"_s,  u"Zeichen"_s,  u"aus Feld"_s, u"Mitte"_s,
                               u"Zeichen"_s, u"aus Feld"_s, u"Ende"_s};
    for (int column = 0; column < heads.size(); ++column)
        grid->addWidget(new QLabel(heads[column]), 0, column);
    for (size_t kind = 0; kind < transfer::subNumberCount; ++kind)
        m_numbers.append(makeNumberLine(kind, options.numbers[kind], *grid));
    grid->setColumnStretch(2, 1);
    grid->setColumnStretch(5, 1);
    return box;
}

AddressFrame::NumberLine AddressFrame::makeNumberLine(size_t kind, const transfer::SubNumberOptions& options,
                                                      QGridLayout& grid)
{
    const transfer::SubNumberKind& row = transfer::subNumberKinds()[kind];
    const QString digit = QString::number(kind);
    const QString of = row.caption.toString().simplified() + u": "_s;
    auto* process = named(new QCheckBox(row.caption.toString()), u"chkProcessNr"_s + digit);
    process->setToolTip(row.toolTip.toString());
    process->setChecked(options.process);
    const NumberLine line{process,
                          named(makeCount(u"cmbCount1"_s + digit, firstCounts, options.count1),
                                u"cmbCount1"_s + digit, of + u"Zeichen aus dem ersten Feld"_s),
                          makeFieldBox(u"cmbField1"_s + digit, of + u"erstes Feld"_s,
                                       transfer::FieldKind::Name, options.field1),
                          makeText(u"txtMiddle"_s + digit, options.middle, of + u"Text in der Mitte"_s),
                          named(makeCount(u"cmbCount2"_s + digit, secondCounts, options.count2),
                                u"cmbCount2"_s + digit, of + u"Zeichen aus dem zweiten Feld"_s),
                          makeFieldBox(u"cmbField2"_s + digit, of + u"zweites Feld"_s,
                                       transfer::FieldKind::Name, options.field2),
                          makeText(u"txtEnd"_s + digit, options.end, of + u"Text am Ende"_s)};
    const QList<QWidget*> others = {line.cmbCount1, line.cmbField1, line.txtMiddle,
                                    line.cmbCount2, line.cmbField2, line.txtEnd};
    const int place = static_cast<int>(kind) + 1;
    grid.addWidget(process, place, 0);
    for (int column = 0; column < others.size(); ++column) {
        grid.addWidget(others[column], place, column + 1);
        others[column]->setEnabled(options.process);
        connect(process, &QCheckBox::toggled, others[column], &QWidget::setEnabled);
    }
    connect(process, &QCheckBox::toggled, this, &AddressFrame::changed);
    for (const QComboBox* field : {line.cmbField1, line.cmbField2})
        connect(field, &QComboBox::currentIndexChanged, this, &AddressFrame::changed);
    return line;
}

QComboBox* AddressFrame::makeCount(const QString& name, const QStringList& counts, const QString& shown)
{
    auto* box = named(new QComboBox, name);
    box->setEditable(true);
    box->addItems(counts);
    box->setCurrentText(shown);
    box->setMinimumContentsLength(3);
    connect(box, &QComboBox::currentTextChanged, this, [this](const QString& text) {
        if (transfer::isCharacterCount(text))
            Q_EMIT changed();
    });
    return box;
}

QLineEdit* AddressFrame::makeText(const QString& name, const QString& text, const QString& spoken)
{
    auto* field = named(new QLineEdit(text), name, spoken);
    field->setMaxLength(transfer::longestComposedText);
    field->setMaximumWidth(fontMetrics().averageCharWidth() * 14);
    connect(field, &QLineEdit::textChanged, this, [this, field] {
        {
            const QSignalBlocker quiet(field);
            keepNameCharacters(*field);
        }
        Q_EMIT changed();
    });
    return field;
}

QWidget* AddressFrame::makeContactFields(const transfer::AddressOptions& options)
{
    auto* box = new QWidget;
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    const auto fields = transfer::fieldsOf(Shape::Vcard);
    QStringList titles;
    for (size_t field = 0; field < options.fields.size(); ++field) {
        const QString title = fields[field].title.toString();
        titles.append(title);
        auto* choice = makeFieldBox(u"cmbWabVCF"_s + QString::number(field), title, fields[field].kind,
                                    options.fields[field]);
        connect(choice, &QComboBox::currentIndexChanged, this, &AddressFrame::changed);
        m_fields.append(choice);
    }
    placeBelowTitles(*grid, m_fields, titles);
    return box;
}

QWidget* AddressFrame::makeBirthdays(const transfer::AddressOptions& options)
{
    const bool isClassic = m_shape == Shape::Classic;
    m_chkBirthdays = named(new QCheckBox(u"&Geburtstage übernehmen"_s),
                           isClassic ? u"chkBirthdays"_s : u"chkWabVcfUseGebu"_s);
    m_chkBirthdays->setChecked(isClassic ? options.birthdays : options.vcardBirthdays);
    m_cmbTime = named(new QComboBox, isClassic ? u"cmbWabTimeGebu"_s : u"cmbGebuTimeDefaultWaB"_s,
                      u"Uhrzeit der Erinnerung"_s);
    m_cmbTime->addItems(transfer::halfHours());
    m_cmbTime->setCurrentText(isClassic ? options.birthdayTime : options.vcardBirthdayTime);
    auto* label = new QLabel(u"Erinnerung &um"_s);
    label->setBuddy(m_cmbTime);
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_chkBirthdays);
    row->addSpacing(fontMetrics().averageCharWidth() * 3);
    row->addWidget(label);
    row->addWidget(m_cmbTime);
    row->addStretch();
    for (QWidget* other : QList<QWidget*>{label, m_cmbTime}) {
        other->setEnabled(m_chkBirthdays->isChecked());
        connect(m_chkBirthdays, &QCheckBox::toggled, other, &QWidget::setEnabled);
    }
    connect(m_chkBirthdays, &QCheckBox::toggled, this, &AddressFrame::changed);
    connect(m_cmbTime, &QComboBox::currentIndexChanged, this, &AddressFrame::changed);
    return line;
}

void AddressFrame::showPath(const QString& path)
{
    m_txtWabPath->setText(path);
    m_txtWabPath->setToolTip(path);
}

void AddressFrame::guardAgainst(const QWidget* exit)
{
    for (const NumberLine& line : std::as_const(m_numbers)) {
        new LeaveCheck(*line.cmbCount1, exit,
                       [this, box = line.cmbCount1] { return rejectsCount(*box, u"ersten"_s); });
        new LeaveCheck(*line.cmbCount2, exit,
                       [this, box = line.cmbCount2] { return rejectsCount(*box, u"zweiten"_s); });
    }
}

bool AddressFrame::rejectsFields()
{
    const auto rejects = [this](QComboBox& box, const QString& which) {
        if (!box.isEnabled() || !rejectsCount(box, which))
            return false;
        box.setFocus();
        return true;
    };
    return std::any_of(m_numbers.cbegin(), m_numbers.cend(), [&rejects](const NumberLine& line) {
        return rejects(*line.cmbCount1, u"ersten"_s) || rejects(*line.cmbCount2, u"zweiten"_s);
    });
}

bool AddressFrame::rejectsCount(QComboBox& box, const QString& which)
{
    if (transfer::isCharacterCount(box.currentText()))
        return false;
    m_dialogs.Show(
        {.text = u"Bitte geben Sie einen gültigen Zahlenwert für die Länge der Zeichen aus dem %1 Feld ein."_s
                     .arg(which),
         .icon = toolkit::Icon::Exclamation});
    return true;
}

void AddressFrame::take(transfer::AddressOptions& options) const
{
    for (size_t kind = 0; kind < static_cast<size_t>(m_numbers.size()); ++kind) {
        const NumberLine& line = m_numbers[static_cast<qsizetype>(kind)];
        options.numbers[kind] = {.process = line.chkProcessNr->isChecked(),
                                 .field1 = line.cmbField1->currentIndex(),
                                 .field2 = line.cmbField2->currentIndex(),
                                 .count1 = line.cmbCount1->currentText(),
                                 .count2 = line.cmbCount2->currentText(),
                                 .middle = line.txtMiddle->text(),
                                 .end = line.txtEnd->text()};
    }
    for (size_t field = 0; field < static_cast<size_t>(m_fields.size()); ++field)
        options.fields[field] = m_fields[static_cast<qsizetype>(field)]->currentIndex();
    if (m_shape == Shape::Classic) {
        options.birthdays = m_chkBirthdays->isChecked();
        options.birthdayTime = m_cmbTime->currentText();
    } else {
        options.vcardBirthdays = m_chkBirthdays->isChecked();
        options.vcardBirthdayTime = m_cmbTime->currentText();
    }
}

} // namespace kalmo::ui
