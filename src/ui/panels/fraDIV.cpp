#include "ui/panels/fraDIV.h"

#include "app/mdlKonverter.h"
#include "link/mdlStatus.h"
#include "link/PhoneModels.h"
#include "operations/PhoneSettings.h"
#include "toolkit/Progress.h"
#include "ui/controls/Named.h"
#include "ui/icons/Icons.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int pictureSize = 26;
const QString noValue = u"–"_s; // not asked yet

/// The picture for a range of values.
struct PictureStep
{
    int least;
    int most;
    int picture;
};

constexpr PictureStep signalSteps[] = {{1, 19, 1}, {20, 39, 2}, {40, 59, 3}, {60, 79, 4}, {80, 100, 5}};
constexpr PictureStep batterySteps[] = {{0, 20, 0}, {21, 40, 1}, {41, 60, 2}, {61, 80, 3}, {81, 100, 4}};

/// Number of the picture, -1 if the value has none.
template <typename Steps>
int pictureOf(const Steps& steps, int value)
{
    for (const PictureStep& step : steps) {
        if (value >= step.least && value <= step.most)
            return step.picture;
    }
    return -1;
}

QLabel* makeValue(const QString& name)
{
    auto* label = named(new QLabel(noValue), name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

QLineEdit* makeClockField(const QString& name, const QString& spoken)
{
    auto* field = named(new QLineEdit, name, spoken);
    field->setReadOnly(true);
    field->setMinimumWidth(field->fontMetrics().averageCharWidth() * 30);
    return field;
}

} // namespace

fraDIV::fraDIV(const WindowParts& parts, QWidget* parent) : PanelFrame(u"fraDIV"_s, parent), m_parts(parts)
{
    setCaption(u"Informationen"_s);
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    column->addWidget(makeDevicePart());
    column->addWidget(makeClockPart());
    column->addStretch(1);
    auto* scroll = named(new QScrollArea(this), u"fraDIV_scroll"_s, u"Informationen"_s);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(page);
    content()->addWidget(scroll, 1);
    setPicture(m_signal, u"signal0"_s);
    setPicture(m_battery, u"battery0"_s);
}

QWidget* fraDIV::makeDevicePart()
{
    auto* group = new QGroupBox(u"Telefon"_s, this);
    auto* form = m_device = new QFormLayout(group);
    form->setHorizontalSpacing(24);
    form->setVerticalSpacing(10);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->addRow(u"Hersteller:"_s, m_lblHersteller = makeValue(u"lblHersteller"_s));
    form->addRow(u"Typ:"_s, m_lblTyp = makeValue(u"lblTyp"_s));
    form->addRow(u"Version:"_s, m_lblVersion = makeValue(u"lblVersion"_s));
    form->addRow(u"Seriennummer:"_s, m_lblSerNr = makeValue(u"lblSerNr"_s));
    m_signal = makeGauge(u"lblRxQualPre"_s, u"Feldstärke:"_s, u"imgRx"_s, u"lblRxQual"_s);
    m_battery = makeGauge(u"lblAkkuPre"_s, u"Akku:"_s, u"imgBat"_s, u"lblAkku"_s);
    for (const Gauge& gauge : {m_signal, m_battery})
        form->addRow(gauge.caption, gauge.line);
    return group;
}

QWidget* fraDIV::makeClockPart()
{
    m_fraUhr = named(new QGroupBox(u"Uhr"_s, this), u"fraUhr"_s, u"Uhr"_s);
    auto* grid = new QGridLayout(m_fraUhr);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(10);
    auto* imgTime = named(new QLabel, u"imgTime"_s, u"Uhr"_s);
    imgTime->setPixmap(icon(u"clock"_s).pixmap(pictureSize));
    const QStringList captions = {u"PC:"_s, u"Telefon:"_s,
                                  u"Die Uhr des Telefons wird nach der Uhr des PCs gestellt."_s,
                                  u"Das Telefon zeigt keine Sekunden an."_s};
    QList<QLabel*> labels;
    for (int index = 0; index < captions.size(); ++index)
        labels.append(named(new QLabel(captions[index]), u"lblUhrPre%1"_s.arg(index)));
    m_txtTimePC = makeClockField(u"txtTimePC"_s, u"Uhrzeit des PCs"_s);
    m_txtTimePhone = makeClockField(u"txtTimePhone"_s, u"Uhrzeit des Telefons"_s);
    m_cmdUhrSync = named(new QPushButton(u"Uhr &stellen"_s), u"cmdUhrSync"_s, u"Uhr des Telefons stellen"_s);
    connect(m_cmdUhrSync, &QPushButton::clicked, this, &fraDIV::cmdUhrSync_Click);
    grid->addWidget(imgTime, 0, 0, 2, 1);
    grid->addWidget(labels[0], 0, 1);
    grid->addWidget(m_txtTimePC, 0, 2);
    grid->addWidget(labels[1], 1, 1);
    grid->addWidget(m_txtTimePhone, 1, 2);
    grid->addWidget(m_cmdUhrSync, 1, 3);
    grid->addWidget(labels[2], 2, 1, 1, 4);
    grid->addWidget(labels[3], 3, 1, 1, 4);
    grid->setColumnStretch(4, 1);
    m_clockHints = labels.sliced(2);
    return m_fraUhr;
}

fraDIV::Gauge fraDIV::makeGauge(const QString& captionName, const QString& caption,
                                const QString& pictureName, const QString& valueName)
{
    const Gauge gauge{named(new QLabel(caption), captionName), named(new QLabel, pictureName, caption),
                      makeValue(valueName), new QWidget};
    auto* layout = new QHBoxLayout(gauge.line);
    layout->setContentsMargins({});
    layout->setSpacing(10);
    layout->addWidget(gauge.picture);
    layout->addWidget(gauge.value, 1);
    return gauge;
}

void fraDIV::setPicture(const Gauge& gauge, const QString& name)
{
    gauge.picture->setPixmap(icon(name).pixmap(pictureSize));
    gauge.picture->setProperty("picture", name);
}

/// Without an answer there is no picture either: it would be taken for a value.
void fraDIV::showValue(const Gauge& gauge, bool isKnown, const QString& value)
{
    gauge.picture->setVisible(isKnown);
    gauge.value->setText(isKnown ? value : u"?"_s);
}

void fraDIV::run(Command command)
{
    if (command == Command::Refresh)
        DisplayRefresh();
}

void fraDIV::DisplayRefresh()
{
    const toolkit::BusyScope busy(&m_parts.busy);
    if (!askIdentity())
        return;
    const int phoneType = m_parts.program.context.sy.PhoneType;
    const bool hasGauges = link::hasGauges(phoneType);
    if (hasGauges) {
        showSignal();
        showBattery();
    }
    for (const Gauge& gauge : {m_signal, m_battery})
        m_device->setRowVisible(gauge.line, hasGauges);
    if (link::hasClock(phoneType))
        askClock();
    else
        showClockUnsupported();
    m_parts.progress.status(u"Bereit."_s);
}

void fraDIV::forget()
{
    for (QLabel* label : {m_lblHersteller, m_lblTyp, m_lblVersion, m_lblSerNr})
        label->setText(noValue);
    for (const Gauge& gauge : {m_signal, m_battery})
        showValue(gauge, false, {});
    m_txtTimePC->clear();
    m_txtTimePhone->clear();
}

/// Steps 1 to 4. If one fails the refresh ends.
bool fraDIV::askIdentity()
{
    struct Query
    {
        QStringView step;
        bool (*ask)(link::Line& line, QString& text);
        QLabel* label;
    };
    const Query queries[] = {
        {u"Abfrage Hersteller...", link::GetManufacturer, m_lblHersteller},
        {u"Abfrage Gerätename...", link::GetPhoneModelText, m_lblTyp},
        {u"Abfrage Version...", link::GetSoftwareVersion, m_lblVersion},
        {u"Abfrage Seriennummer...", link::GetSerialNumber, m_lblSerNr},
    };
    for (const Query& query : queries) {
        m_parts.progress.status(query.step.toString());
        QString text;
        if (!query.ask(m_parts.program.line, text))
            return false;
        query.label->setText(text);
    }
    return true;
}

void fraDIV::showSignal()
{
    m_parts.progress.status(u"Abfrage Feldstärke..."_s);
    const link::SignalQuality quality = link::GetSignalQuality(m_parts.program.line);
    if (const int picture = pictureOf(signalSteps, quality.gauge); picture >= 0)
        setPicture(m_signal, u"signal%1"_s.arg(picture));
    showValue(m_signal, !quality.text.isEmpty(), quality.text);
}

void fraDIV::showBattery()
{
    m_parts.progress.status(u"Abfrage Akku..."_s);
    int percent = 0;
    const bool isKnown = link::GetBattery(m_parts.program.line, percent);
    if (const int picture = pictureOf(batterySteps, percent); picture >= 0)
        setPicture(m_battery, u"battery%1"_s.arg(picture));
    showValue(m_battery, isKnown, u"%1%"_s.arg(percent));
}

void fraDIV::askClock()
{
    m_parts.progress.status(u"Abfrage Uhrzeit..."_s);
    QDateTime phone;
    const bool isKnown = link::GetPhoneTime(m_parts.program.line, phone);
    showClocks(isKnown, phone);
}

void fraDIV::showClocks(bool isKnown, const QDateTime& phone)
{
    m_txtTimePC->setText(isKnown ? app::FormatClock(m_parts.program.context.clock.Now()) : u"?"_s);
    m_txtTimePhone->setText(isKnown ? app::FormatClock(phone) : u"?"_s);
}

void fraDIV::showClockUnsupported()
{
    if (link::isClassic(m_parts.program.context.sy.PhoneType))
        m_fraUhr->setTitle(u"Uhr (Fernsteuerung nicht vom Tel. unterstützt)"_s);
    m_fraUhr->setEnabled(false);
    for (QLabel* hint : std::as_const(m_clockHints))
        hint->hide();
    m_txtTimePC->setText(app::FormatClock(m_parts.program.context.clock.Now()));
    m_txtTimePhone->setText(u"Vom Tel. nicht unterstützt"_s);
}

void fraDIV::cmdUhrSync_Click()
{
    const toolkit::BusyScope busy(&m_parts.busy);
    const auto result = operations::setClock(m_parts.program.line);
    showClocks(result.now.has_value(), result.now.value_or(QDateTime()));
    m_parts.progress.status(result.outcome.isDone() ? u"Die Uhr des Telefons ist gestellt."_s
                            : result.now ? u"Die Uhr des Telefons zeigt eine andere Zeit als der PC."_s
                                         : u"Bereit."_s);
}

} // namespace kalmo::ui
