#include "ui/forms/frmWelcome.h"

#include "link/BorrowedPort.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/LinkButton.h"
#include "ui/controls/Named.h"
#include "ui/controls/ucHeadline.h"
#include "ui/forms/EntryDialogs.h"
#include "ui/help/HelpWindow.h"
#include "ui/TakeBack.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QProgressBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using link::FoundAtPort;

namespace {

constexpr int widthInCharacters = 90;
constexpr int listLines = 7;
constexpr int numberRole = Qt::UserRole;

enum FoundColumn { PortColumn, DeviceColumn, PhoneColumn };

QLabel* wrappedLine(const QString& text)
{
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QString wordsFor(const FoundAtPort& found)
{
    switch (found.kind) {
    case FoundAtPort::Kind::Phone:
        return found.model;
    case FoundAtPort::Kind::Other:
        return found.model.isEmpty() ? u"ein anderes Gerät"_s
                                     : u"%1 (kein bekanntes Telefon)"_s.arg(found.model);
    case FoundAtPort::Kind::NotOpened:
        return u"nicht zu öffnen: %1"_s.arg(found.error.simplified());
    case FoundAtPort::Kind::Nothing:
        break;
    }
    return u"nichts gefunden"_s;
}

} // namespace

frmWelcome::frmWelcome(Program& program, QWidget* parent)
    : QDialog(parent), m_program(program),
      m_search(named(new QPushButton(u"Telefon &suchen"_s), u"cmdSearch"_s)),
      m_found(named(new QTreeWidget, u"lvwFound"_s, u"Gefundene Telefone"_s)),
      m_status(named(new QLabel, u"lblStatus"_s)),
      m_progress(named(new QProgressBar, u"prgSearch"_s, u"Fortschritt der Suche"_s)),
      m_connect(named(new QPushButton(u"&Verbinden"_s), u"cmdConnect"_s)),
      m_demo(named(new QPushButton(u"&Ohne Telefon ausprobieren"_s), u"cmdDemo"_s)),
      m_settings(named(new QPushButton(u"&Einstellungen"_s), u"cmdSettings"_s))
{
    setObjectName(u"frmWelcome"_s);
    setWindowTitle(u"Willkommen bei Kalmo"_s);
    setWindowModality(Qt::WindowModal);
    auto* layout = new QVBoxLayout(this);
    makeRoom(*layout);
    layout->addWidget(
        new ucHeadline(u"handy"_s, u"Willkommen bei Kalmo"_s,
                       u"Kalmo pflegt Telefonbuch, Bilder, Klänge und Einstellungen Ihres DECT-Telefons."_s));
    layout->addWidget(makeAdvice());
    layout->addWidget(makeSearch(), 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_demo);
    buttons->addWidget(m_settings);
    buttons->addStretch(1);
    buttons->addWidget(m_connect);
    layout->addLayout(buttons);
    scrollAbove(*layout, layout->indexOf(buttons));
    setMinimumWidth(fontMetrics().averageCharWidth() * widthInCharacters);
    m_search->setDefault(true);
    m_demo->setToolTip(
        u"Öffnet Kalmo mit einem nachgebildeten Telefon. Ihr eigenes Telefon bleibt unberührt."_s);
    m_settings->setToolTip(u"Den Anschluss selbst wählen"_s);
    connect(m_search, &QPushButton::clicked, this, &frmWelcome::searchAllPorts);
    connect(m_found, &QTreeWidget::itemSelectionChanged, this, &frmWelcome::offerConnecting);
    connect(m_found, &QTreeWidget::itemActivated, this, &frmWelcome::connectToChosen);
    connect(m_connect, &QPushButton::clicked, this, &frmWelcome::connectToChosen);
    connect(m_demo, &QPushButton::clicked, this, &frmWelcome::demoWanted);
    connect(m_settings, &QPushButton::clicked, this, &QDialog::reject);
    offerConnecting();
}

QWidget* frmWelcome::makeAdvice()
{
    auto* frame = new QGroupBox(u"Wie ist Ihr Telefon angeschlossen?"_s);
    auto* rows = new QVBoxLayout(frame);
    makeRoom(*rows);
    rows->addWidget(
        wrappedLine(u"Mit einem Datenkabel: Stecken Sie es in den PC und in das Telefon. Schalten Sie am "
                    u"Telefon Bluetooth aus, sonst wird es am Kabel nicht gefunden."_s));
    rows->addWidget(
        wrappedLine(u"Über Bluetooth: Koppeln Sie das Telefon mit dem PC und richten Sie einen seriellen "
                    u"Anschluss dafür ein."_s));
    auto* help = named(new LinkButton(u"&Bluetooth Hinweis"_s, frame), u"cmdBluetooth"_s);
    connect(help, &QPushButton::clicked, this, [] { openHelp(helpTopicBluetooth); });
    rows->addWidget(help);
    return frame;
}

QWidget* frmWelcome::makeSearch()
{
    auto* frame = new QGroupBox(u"Telefone an diesem PC"_s);
    auto* rows = new QVBoxLayout(frame);
    makeRoom(*rows);
    m_found->setHeaderLabels({u"Anschluss"_s, u"Gerät"_s, u"Gefunden"_s});
    m_found->setRootIsDecorated(false);
    m_found->setMinimumHeight(fontMetrics().height() * listLines);
    m_found->setColumnWidth(PortColumn, fontMetrics().averageCharWidth() * 14);
    m_found->setColumnWidth(DeviceColumn, fontMetrics().averageCharWidth() * 34);
    m_progress->setTextVisible(false);
    m_progress->setFixedHeight(fontMetrics().height() * 3 / 4);
    m_progress->hide();
    m_status->setWordWrap(true);
    m_status->setText(
        u"Die Suche probiert alle Anschlüsse der Reihe nach. Je Anschluss dauert das bis zu einer "
        u"halben Minute."_s);
    auto* line = new QHBoxLayout;
    line->addWidget(m_status, 1);
    line->addWidget(m_search, 0, Qt::AlignTop);
    rows->addLayout(line);
    rows->addWidget(m_progress);
    rows->addWidget(m_found, 1);
    return frame;
}

void frmWelcome::searchAllPorts()
{
    if (m_isSearching) {
        m_isAborted = true;
        m_search->setEnabled(false);
        tell(u"Die Suche wird beendet ..."_s);
        return;
    }
    Q_EMIT searchBegins();
    m_found->clear();
    m_isSearching = true;
    m_isAborted = false;
    m_search->setText(u"Suche &abbrechen"_s);
    m_progress->show();
    for (QWidget* control : {m_demo, m_settings})
        control->setEnabled(false);
    const QList<int> numbers = m_program.ports.numbers();
    for (const int number : numbers) {
        if (!m_isAborted)
            searchPort(number);
    }
    m_isSearching = false;
    m_progress->hide();
    m_search->setText(u"Telefon &suchen"_s);
    for (QWidget* control : {m_search, m_demo, m_settings})
        control->setEnabled(true);
    tell(numbers.isEmpty() ? u"Dieser PC hat keinen seriellen Anschluss. Stecken Sie das Datenkabel ein "
                             u"und suchen Sie noch einmal."_s
                           : endOfSearch());
    offerConnecting();
}

void frmWelcome::searchPort(int number)
{
    if (number == m_unclosedPort) {
        const link::BorrowedPort port(m_program.line, number);
        takeUnclosedBack(m_program, *this);
    }
    if (!m_isAborted)
        showFound(link::scanPort(m_program.line, *this, m_program.desktop, number));
}

QString frmWelcome::endOfSearch() const
{
    int phones = 0;
    for (int row = 0; row < m_found->topLevelItemCount(); ++row)
        phones += m_found->topLevelItem(row)->data(PortColumn, numberRole).isValid();
    const QString found = phones == 0   ? u"kein Telefon gefunden."_s
                          : phones == 1 ? u"1 Telefon gefunden."_s
                                        : u"%1 Telefone gefunden."_s.arg(phones);
    return (m_isAborted ? u"Die Suche wurde abgebrochen: "_s : u"Die Suche ist beendet: "_s) + found;
}

/// A screen reader reads it out.
void frmWelcome::tell(const QString& text)
{
    m_status->setText(text);
    QAccessibleEvent changed(m_status, QAccessible::Alert);
    QAccessible::updateAccessibility(&changed);
}

void frmWelcome::showFound(const FoundAtPort& found)
{
    const link::SerialDevice device = m_program.ports.present(found.number);
    auto* item = new QTreeWidgetItem(
        m_found, {u"COM%1"_s.arg(found.number),
                  device.description.isEmpty() ? device.path : device.description, wordsFor(found)});
    item->setToolTip(DeviceColumn, device.path);
    item->setToolTip(PhoneColumn, wordsFor(found));
    if (found.kind != FoundAtPort::Kind::Phone)
        return;
    item->setData(PortColumn, numberRole, found.number);
    if (m_found->selectedItems().isEmpty())
        m_found->setCurrentItem(item);
}

void frmWelcome::offerConnecting()
{
    const QList<QTreeWidgetItem*> chosen = m_found->selectedItems();
    const bool isPhone = !chosen.isEmpty() && chosen.first()->data(PortColumn, numberRole).isValid();
    m_connect->setEnabled(isPhone && !m_isSearching);
    if (m_connect->isEnabled())
        m_connect->setDefault(true);
}

void frmWelcome::connectToChosen()
{
    if (m_connect->isEnabled())
        Q_EMIT portChosen(m_found->selectedItems().first()->data(PortColumn, numberRole).toInt());
}

void frmWelcome::setStatus(const QString& text)
{
    m_status->setText(text);
}

void frmWelcome::setProgress(int value, int maximum)
{
    m_progress->setRange(0, maximum);
    m_progress->setValue(value);
}

/// Enter in the list connects to its phone, and does not search again.
void frmWelcome::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter || !m_found->hasFocus())
        QDialog::keyPressEvent(event);
}

/// The search stops first: it runs on this dialog's stack.
void frmWelcome::reject()
{
    if (m_isSearching)
        searchAllPorts();
    else
        QDialog::reject();
}

} // namespace kalmo::ui
