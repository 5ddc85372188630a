#include "ui/forms/frmEinstellungen.h"

#include "app/mdlTexts.h"
#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "link/PortOpening.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/LinkButton.h"
#include "ui/controls/RuledCaption.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/forms/StorageChoice.h"
#include "ui/help/HelpWindow.h"
#include "ui/icons/Icons.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <array>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using app::keys::ComPortNew;

namespace {

const QString usbInfo =
    u"Kalmo unterstützt USB Datenkabel, wenn diese vom Hersteller einen Treiber mitbringen, der einen "
    u"seriellen COM Port simuliert (genannt \"virtueller COM Port\").\n\n"
    u"Der virtuelle COM Port verhält sich Programmen wie Kalmo gegenüber so, wie ein normaler COM Port, "
    u"sodass das Programm \"denkt\", es hätte es mit einem tatsächlich vorhandenem COM Port zu tun.\n\n"
    u"Wenn Ihr Telefon über ein Standard Mini-USB oder Micro-USB Kabel (wie man sie für Kamers und Handys "
    u"verwendet) verbunden ist, wurde der passende Treiber bereits durch Kalmo insalliert.\n\n"
    u"Bei anderen Kabeln sollte in der Anleitung zum Kabel die Installationsprozedur beschrieben sein. "
    u"Wählen Sie anschließend in Kalmo die Nummer des COM Ports, der von dem Treiber zur Verfügung gestellt "
    u"wird (erfahrungsgemäß 4, 5 oder höher).\n\n"
    u"Klicken Sie auf \"Mögliche Ports & Bezeichnung ermitteln\" um die Auswahl einzuschränken.\n\n"
    u"Achtung: Es kann immer nur EIN Programm auf den virtuellen COM Port zugreifen! Andere Programme sind "
    u"ggf. vorher zu beenden."_s;

QLabel* makeHint(const QString& name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->hide();
    return label;
}

template <typename Button>
Button* makeButton(const QString& name, const QString& text, const QString& tip, QWidget* parent)
{
    auto* button = new Button(text, parent);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

/// The keys that the form writes.
constexpr std::array<app::TextKey, 6> ownKeys = {{
    app::keys::Version,
    {ComPortNew.section, ComPortNew.key},
    {app::keys::AutoBackup.section, app::keys::AutoBackup.key},
    {app::keys::SwWarning.section, app::keys::SwWarning.key},
    {app::keys::ShowSuccessPopup.section, app::keys::ShowSuccessPopup.key},
    {app::keys::UseUtf8Contacts.section, app::keys::UseUtf8Contacts.key},
}};

void readCheck(const app::Settings& settings, const app::NumberKey& key, QCheckBox* box)
{
    box->setChecked(app::isOn(settings, key));
}

} // namespace

frmEinstellungen::frmEinstellungen(Program& program, QWidget* parent) : QDialog(parent), m_program(program)
{
    setObjectName(u"frmEinstellungen"_s);
    setWindowTitle(app::ResText(app::TextSettingsCaption));
    setWindowIcon(programIcon());
    const int line = fontMetrics().height();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(line * 3 / 2, line * 3 / 2, line * 3 / 2, line);
    rows->setSpacing(line / 2);
    rows->addStrut(line * 31);
    addPortRows(*rows);
    addStorageRows(*rows);
    addMessageRows(*rows);
    rows->addStretch(1);
    addButtons(*rows);
    fillPorts(link::PortListFor::Start);
    auto* guard = new ChangeGuard(*this, *cmdAbbruch, program.context); // without a way back nothing is lost
    guard->watch([this] { return m_storage; });
}

void frmEinstellungen::addPortRows(QVBoxLayout& rows)
{
    rows.addWidget(new RuledCaption(u"ucHeadline1"_s, u"Anschluss"_s, this));
    cmbCom = new QComboBox(this);
    cmbCom->setObjectName(u"cmbCom"_s);
    cmbCom->setAccessibleName(u"Anschluss des Telefons"_s);
    cmbCom->setToolTip(u"COM Port, an dem das Telefon angeschlossen ist"_s);
    cmbCom->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* label = new QLabel(u"An&schluss des Telefons:"_s, this);
    label->setBuddy(cmbCom);
    auto* port = new QHBoxLayout;
    port->addWidget(label);
    port->addWidget(cmbCom, 1);
    rows.addLayout(port);
    lblPortHinweis = makeHint(u"lblPortHinweis"_s, this);
    rows.addWidget(lblPortHinweis);

    auto* welcome = makeButton<LinkButton>(
        u"lblWelcome"_s, u"&Telefon suchen oder ohne Telefon ausprobieren"_s,
        u"Alle Anschlüsse durchsuchen, oder Kalmo mit einem nachgebildeten Telefon öffnen"_s, this);
    auto* check = makeButton<LinkButton>(u"lblCheckCOMs"_s, u"&Mögliche Ports && Bezeichnung ermitteln"_s,
                                         u"Die Liste der Anschlüsse neu bilden"_s, this);
    auto* usb = makeButton<LinkButton>(u"lblUSBInfo"_s, u"Hinweise zu &USB Datenkabeln"_s,
                                       u"Was ein virtueller COM Port ist"_s, this);
    auto* bluetooth = makeButton<LinkButton>(u"label1"_s, u"&Bluetooth Hinweis"_s,
                                             u"Das Telefon über Bluetooth verbinden"_s, this);
    connect(welcome, &QPushButton::clicked, this, &frmEinstellungen::welcomeWanted);
    connect(check, &QPushButton::clicked, this, &frmEinstellungen::RebuildCmbCom);
    connect(usb, &QPushButton::clicked, this, &frmEinstellungen::showUsbInfo);
    connect(bluetooth, &QPushButton::clicked, this, [] { openHelp(helpTopicBluetooth); });
    rows.addWidget(welcome);
    rows.addWidget(check);
    rows.addWidget(usb);
    rows.addWidget(bluetooth);
}

void frmEinstellungen::addStorageRows(QVBoxLayout& rows)
{
    rows.addSpacing(fontMetrics().height() / 2);
    rows.addWidget(new RuledCaption(u"ucHeadline2"_s, u"Datensicherung"_s, this));
    chkAutoBackup = addCheck(rows, u"chkAutoBackup"_s,
                             u"Listen &automatisch sichern, bevor sie ins Telefon geschrieben werden"_s,
                             u"Legt vor jedem Schreiben eine Sicherung im Ordner \"Backup\" an"_s);
    lblSpeicherpfad = new QLabel(this);
    lblSpeicherpfad->setObjectName(u"lblSpeicherpfad"_s);
    lblSpeicherpfad->setTextFormat(Qt::PlainText);
    lblSpeicherpfad->setWordWrap(true);
    lblSpeicherpfad->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    cmdSpeicherpfad =
        makeButton<QPushButton>(u"cmdSpeicherpfad"_s, u"Ä&ndern ..."_s,
                                u"Einstellungen und Sicherungen in einem anderen Ordner ablegen"_s, this);
    auto* open = makeButton<QPushButton>(u"cmdSpeicherOeffnen"_s, u"Ö&ffnen"_s,
                                         u"Den Ordner mit Einstellungen und Sicherungen öffnen"_s, this);
    connect(cmdSpeicherpfad, &QPushButton::clicked, this, &frmEinstellungen::chooseStorage);
    connect(open, &QPushButton::clicked, this, [this] { m_program.desktop.open(m_storage); });
    auto* storage = new QHBoxLayout;
    storage->addWidget(new QLabel(u"Speicherpfad:"_s, this));
    storage->addWidget(lblSpeicherpfad, 1);
    storage->addWidget(cmdSpeicherpfad);
    storage->addWidget(open);
    rows.addLayout(storage);
    lblSpeicherHinweis = makeHint(u"lblSpeicherHinweis"_s, this);
    rows.addWidget(lblSpeicherHinweis);
}

void frmEinstellungen::addMessageRows(QVBoxLayout& rows)
{
    rows.addSpacing(fontMetrics().height() / 2);
    rows.addWidget(new RuledCaption(u"ucHeadline3"_s, u"Hinweise und Telefonbuch"_s, this));
    chkSwWarnung =
        addCheck(rows, u"chkSwWarnung"_s, u"&Warnen, wenn eine geänderte Liste noch nicht geschrieben ist"_s,
                 u"Fragt beim Wechsel der Funktion; beim Beenden wird immer gefragt"_s);
    chkShowSuccessPopup =
        addCheck(rows, u"chkShowSuccessPopup"_s, u"&Erfolgreiche Vorgänge mit einer Meldung bestätigen"_s,
                 u"Zeigt zum Beispiel \"Eintrag gespeichert.\" an"_s);
    chkUTF8contcats =
        addCheck(rows, u"chkUTF8contcats"_s, u"Namen im vCard-Telefonbuch als UTF-&8 schreiben"_s,
                 u"Für Telefone, die Umlaute sonst falsch anzeigen; neuere Modelle brauchen es nicht"_s);
}

QCheckBox* frmEinstellungen::addCheck(QVBoxLayout& rows, const QString& name, const QString& text,
                                      const QString& tip)
{
    auto* box = new QCheckBox(text, this);
    box->setObjectName(name);
    box->setToolTip(tip);
    box->setAccessibleDescription(tip);
    rows.addWidget(box);
    return box;
}

void frmEinstellungen::addButtons(QVBoxLayout& rows)
{
    rows.addSpacing(fontMetrics().height() / 2);
    auto* help = makeButton<QPushButton>(u"cmdHilfe"_s, u"&Hilfe"_s, u"Programmhilfe anzeigen"_s, this);
    help->setShortcut(QKeySequence::HelpContents);
    cmdOK = makeButton<QPushButton>(u"cmdOK"_s, app::ResText(app::TextSave),
                                    u"Einstellungen speichern und das Telefon suchen"_s, this);
    cmdOK->setDefault(true);
    cmdAbbruch = makeButton<QPushButton>(u"cmdAbbruch"_s, app::ResText(app::TextCancel),
                                         u"Änderungen verwerfen (Esc)"_s, this);
    connect(help, &QPushButton::clicked, this, [] { openHelp(helpTopicPort); });
    connect(cmdOK, &QPushButton::clicked, this, &frmEinstellungen::save);
    connect(cmdAbbruch, &QPushButton::clicked, this, &frmEinstellungen::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdAbbruch);
    rows.addLayout(buttons);
    scrollAbove(rows, rows.indexOf(buttons));
}

void frmEinstellungen::fillPorts(link::PortListFor purpose)
{
    cmbCom->clear();
    cmbCom->addItems(
        link::listPorts(m_program.context, m_program.line.port(), m_program.ports, m_descriptions, purpose));
    describePorts();
}

void frmEinstellungen::describePorts()
{
    for (int index = 0; index < cmbCom->count(); ++index) {
        QString maker;
        QString hardwareId;
        const int number = link::portItemNumber(cmbCom->itemText(index));
        m_descriptions.GetComDescription(number, maker, hardwareId);
        QStringList facts{m_program.ports.present(number).path, maker, hardwareId};
        facts.removeAll(QString());
        cmbCom->setItemData(index, facts.join(u'\n'), Qt::ToolTipRole);
    }
}

void frmEinstellungen::selectPort(int number)
{
    const QString text = link::portItemText(number, m_descriptions.GetComDescription(number));
    int index = cmbCom->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0) {
        cmbCom->addItem(text);
        index = cmbCom->count() - 1;
    }
    cmbCom->setCurrentIndex(index);
}

void frmEinstellungen::ReadSettingsToForm()
{
    const app::Settings& settings = m_program.context.settings;
    m_descriptions.RefreshComDesc(link::deviceEntries(m_program.ports));
    selectPort(app::getInt(settings, ComPortNew));
    readCheck(settings, app::keys::AutoBackup, chkAutoBackup);
    readCheck(settings, app::keys::SwWarning, chkSwWarnung);
    readCheck(settings, app::keys::ShowSuccessPopup, chkShowSuccessPopup);
    readCheck(settings, app::keys::UseUtf8Contacts, chkUTF8contcats);
    showStorage(m_program.context.sy.Paths.Storage);
    showPortOfThisRun();
}

void frmEinstellungen::showPortOfThisRun()
{
    const int number = m_program.context.sy.ComNoForThisRun;
    lblPortHinweis->setVisible(number > 0);
    if (m_isDemo) {
        lblPortHinweis->setText(u"Sie nutzen das nachgebildete Telefon. \"Speichern\" beendet es und sucht "
                                u"Ihr Telefon am gewählten Anschluss."_s);
        return;
    }
    lblPortHinweis->setText(
        u"Für diesen Lauf gilt der Anschluss der Befehlszeile (COM %1, %2). Wählen Sie einen anderen, um ihn abzulösen."_s
            .arg(QString::number(number), m_program.ports.devicePath(number)));
}

void frmEinstellungen::present(Occasion occasion)
{
    m_isDemo = occasion.isDemo;
    ReadSettingsToForm();
    cmdAbbruch->setEnabled(occasion.hasWayBack);
    show();
    raise();
    activateWindow();
    cmbCom->setFocus();
}

void frmEinstellungen::usePort(int number)
{
    selectPort(number);
    saveWithPort(number);
}

void frmEinstellungen::RebuildCmbCom()
{
    const int chosen = link::portItemNumber(cmbCom->currentText());
    fillPorts(link::PortListFor::Rebuild);
    selectPort(chosen);
    m_program.context.dialogs.Show({.text = u"Liste neu gebildet, bitte wählen Sie den Anschluß aus."_s,
                                    .icon = toolkit::Icon::Information});
}

void frmEinstellungen::showUsbInfo()
{
    m_program.context.dialogs.Show({.text = usbInfo, .icon = toolkit::Icon::Information});
}

void frmEinstellungen::chooseStorage()
{
    const QString chosen = m_program.context.dialogs.PickFolder(u"Wählen Sie einen Ordner aus"_s, m_storage);
    if (!chosen.isEmpty())
        showStorage(chosen);
}

void frmEinstellungen::showStorage(const QString& folder)
{
    const app::Sy& sy = m_program.context.sy;
    m_storage = folder;
    lblSpeicherpfad->setText(folder);
    cmdSpeicherpfad->setEnabled(sy.StorageForThisRun.isEmpty());
    lblSpeicherHinweis->setVisible(folder != sy.Paths.Storage);
    lblSpeicherHinweis->setText(
        u"Gilt nach dem Speichern. Die bisherigen Sicherungen bleiben in \"%1\"."_s.arg(sy.Paths.Storage));
}

void frmEinstellungen::writeSettings()
{
    app::Settings& settings = m_program.context.settings;
    app::put(settings, app::keys::Version, app::programVersion());
    app::put(settings, ComPortNew, link::portItemNumber(cmbCom->currentText()));
    app::put(settings, app::keys::AutoBackup, chkAutoBackup->isChecked());
    app::put(settings, app::keys::SwWarning, chkSwWarnung->isChecked());
    app::put(settings, app::keys::ShowSuccessPopup, chkShowSuccessPopup->isChecked());
    app::put(settings, app::keys::UseUtf8Contacts, chkUTF8contcats->isChecked());
}

/// Writes the settings and changes the storage. Where that fails, the settings are as before.
bool frmEinstellungen::store()
{
    app::Context& context = m_program.context;
    QStringList before;
    for (const app::TextKey& key : ownKeys)
        before.append(app::get(context.settings, key));
    writeSettings();
    if (m_storage == context.sy.Paths.Storage || changeStorage(context, m_storage))
        return true;
    for (size_t index = 0; index < ownKeys.size(); ++index)
        app::put(context.settings, ownKeys[index], before[static_cast<qsizetype>(index)]);
    return false;
}

/// Who leaves the port of the settings as it is keeps the port of this run, too.
void frmEinstellungen::save()
{
    const app::Context& context = m_program.context;
    const int chosen = link::portItemNumber(cmbCom->currentText());
    saveWithPort(chosen == app::getInt(context.settings, ComPortNew) ? link::portNumber(context) : chosen);
}

/// `port` is in use after that.
void frmEinstellungen::saveWithPort(int port)
{
    if (m_isSaving) // closing the data channel takes a while
        return;
    const QScopedValueRollback saving(m_isSaving, true);
    app::Context& context = m_program.context;
    const bool otherPort = port != link::portNumber(context) || context.sy.PhoneType == 0;
    if (m_storage != context.sy.Paths.Storage && !canBeStorage(context, m_storage))
        return;
    if ((m_mayLeave && !m_mayLeave(otherPort)) || !store())
        return;
    if (port != link::portNumber(context))
        context.sy.ComNoForThisRun = 0;
    m_program.line.ClosePort();
    hide();
    Q_EMIT saved(otherPort);
}

void frmEinstellungen::reject()
{
    if (!cmdAbbruch->isEnabled() || m_isSaving)
        return;
    ReadSettingsToForm();
    hide();
    Q_EMIT cancelled();
}

void frmEinstellungen::closeEvent(QCloseEvent* event)
{
    event->ignore(); // the listener hides the form, ends the program, or asks first
    if (cmdAbbruch->isEnabled() || m_isSaving)
        reject();
    else
        Q_EMIT closedByUser();
}

} // namespace kalmo::ui
