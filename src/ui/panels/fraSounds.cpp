#include "ui/panels/fraSounds.h"

#include "link/PhoneModels.h"
#include "operations/PhoneSettings.h"
#include "toolkit/Progress.h"
#include "ui/controls/ChoiceBox.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/Named.h"
#include "ui/forms/FormerStateWords.h"
#include "ui/icons/Icons.h"
#include "ui/lists/RowsView.h"
#include "ui/lists/SearchLine.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::SoundEvent;

namespace {

/// Names of the two combos of each event, in the order in which the events are read.
constexpr std::array<std::array<QStringView, 2>, phonedata::soundEventCount> comboNames = {{
    {u"cmbWrexID", u"cmbWrexVol"},
    {u"cmbWrinID", u"cmbWrinVol"},
    {u"cmbWrapID", u"cmbWrapVol"},
    {u"cmbWralID", u"cmbWralVol"},
}};

const QStringList volumes = {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"ansteigend"_s};

constexpr double pauseAhead = 1;
constexpr double pauseBetween = 0.5;

/// Without a text for a setting that the phone refused or did not answer, which has been reported.
toolkit::Message ringtoneFailure(const operations::Outcome& outcome)
{
    using operations::Cause;
    const QString unchanged = u"\n\nIm Telefon wurde nichts geändert."_s;
    const auto message = [](const QString& text, toolkit::About about = toolkit::About::Other) {
        return toolkit::Message{.text = text, .icon = toolkit::Icon::Exclamation, .about = about};
    };
    if (outcome.cause == Cause::NotSaved)
        return message(u"Die bisherige Einstellung konnte nicht gesichert werden: %1"_s.arg(
                           reasonInWords(outcome.saveFault)) +
                       unchanged);
    if (outcome.cause == Cause::NotPossible)
        return message(u"Das Telefon hat keine Melodie dieses Namens."_s + unchanged);
    if (outcome.sent == 0)
        return message(u"Die bisherige Einstellung konnte nicht gelesen werden."_s + unchanged,
                       toolkit::About::Request);
    if (outcome.cause == Cause::Mismatch)
        return message(u"Das Telefon hat die Einstellung anders übernommen, als Sie sie gewählt haben."_s);
    if (outcome.confirmed > 0)
        return message(
            u"Das Telefon hat die Einstellung bestätigt, sie konnte aber nicht zurückgelesen werden."_s);
    return {};
}

} // namespace

fraSounds::fraSounds(const WindowParts& parts, QWidget* parent)
    : PanelFrame(u"fraSounds"_s, parent), m_parts(parts), m_sounds(phonedata::makeSoundRows())
{
    setCaption(u"Klingeltöne"_s);
    auto* group = new QGroupBox(u"Zugewiesene Klingeltöne"_s, this);
    auto* grid = new QGridLayout(group);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(10);
    for (int event = 0; event < phonedata::soundEventCount; ++event)
        addEvent(*grid, static_cast<SoundEvent>(event));
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(3, 1);
    auto* heading = new QLabel(u"&Verfügbare individuelle Töne"_s, this);
    m_view = new RowsView(this);
    auto* search = new SearchLine(*m_view, this);
    m_view->setRows(*m_sounds);
    m_view->setAccessibleName(u"Verfügbare individuelle Töne"_s);
    m_view->setIconSource([](const toolkit::ListRow& row) { return icon(row.icon); });
    m_view->setColumnCharacters({32, 12});
    showState(ListState::NotRead);
    heading->setBuddy(m_view);
    content()->addWidget(group);
    content()->addWidget(heading);
    content()->addWidget(search);
    content()->addWidget(m_view, 1);
    scrollAbove(*content(), content()->count());
    setTabOrder(search->findChild<QLineEdit*>(), m_view);
}

fraSounds::~fraSounds() = default;

void fraSounds::addEvent(QGridLayout& grid, SoundEvent event)
{
    const int row = static_cast<int>(event);
    const QString caption = phonedata::captionOf(event);
    Event& widgets = m_events[row];
    widgets.tone = named(new ChoiceBox, comboNames[row][0].toString(), caption);
    widgets.volume = named(new ChoiceBox, comboNames[row][1].toString(), caption + u", Lautstärke"_s);
    widgets.volume->addItems(volumes);
    widgets.volume->setCurrentIndex(-1);
    grid.addWidget(named(new QLabel(caption), u"lblCmbSndPre%1"_s.arg(row)), row, 0);
    grid.addWidget(widgets.tone, row, 1);
    grid.addWidget(new QLabel(u"Lautstärke"_s), row, 2);
    grid.addWidget(widgets.volume, row, 3);
    // `activated` is emitted for the user's choice alone: filling and setting the combos sends nothing.
    for (QComboBox* combo : {widgets.tone, widgets.volume})
        connect(combo, &QComboBox::activated, this, [this, event] { choose(event); });
}

phonedata::RingtoneJob fraSounds::job() const
{
    return {m_parts.program.line, m_parts.program.memory, &m_parts.busy, m_parts.progress.panel};
}

void fraSounds::run(Command command)
{
    if (command == Command::Refresh && link::hasRingtoneSettings(m_parts.program.context.sy.PhoneType))
        load();
}

void fraSounds::load()
{
    link::Line& line = m_parts.program.line;
    const toolkit::BusyScope busy(&m_parts.busy);
    showState(ListState::Reading);
    line.pause(pauseAhead);
    showState(phonedata::ReadSoundList(job(), *m_sounds) ? ListState::Read : ListState::Failed);
    fillTones(); // the built-in ones at least: the settings can refer to them without the list
    line.pause(pauseBetween);
    readSettings();
}

void fraSounds::showState(ListState state)
{
    m_view->setPlaceholder(state == ListState::Read ? u"Im Telefon sind keine eigenen Melodien gespeichert."_s
                                                    : placeholderFor(state));
}

void fraSounds::fillTones()
{
    QStringList names = phonedata::builtInMelodies();
    const phonedata::SoundList& sounds = m_parts.program.memory.sounds;
    for (int index = 1; index <= sounds.upperBound(); ++index)
        names.append(sounds.row(index).name);
    for (const Event& event : m_events) {
        event.tone->clear();
        event.tone->addItems(names);
        event.tone->setCurrentIndex(-1);
    }
}

phonedata::SettingRead fraSounds::shower()
{
    return [this](SoundEvent event, const phonedata::SoundSetting& setting, const QString& toneName) {
        Event& widgets = m_events[static_cast<size_t>(event)];
        widgets.volume->setCurrentIndex(setting.volume - 1);
        widgets.tone->setCurrentText(toneName);
        widgets.toneInPhone = widgets.tone->currentText();
    };
}

void fraSounds::readSettings()
{
    phonedata::ReadSoundSettings(job(), shower());
}

void fraSounds::choose(SoundEvent event)
{
    const Event& widgets = m_events[static_cast<size_t>(event)];
    const QString tone = widgets.tone->currentText();
    const int volume = widgets.volume->currentIndex() + 1;
    if (tone.isEmpty() || volume < 1) { // never read: the value for the other half is not known
        readSettings();
        m_parts.progress.status(u"Die Einstellung war noch nicht gelesen. Bitte wählen Sie noch einmal."_s);
        return;
    }
    if (tone == widgets.toneInPhone && !agreesToOtherTone(event)) {
        readSettings();
        m_parts.progress.status(u"Nichts geändert."_s);
        return;
    }
    const toolkit::BusyScope busy(&m_parts.busy);
    const operations::Outcome outcome = operations::setRingtone(job(), event, tone, volume, shower()).outcome;
    if (outcome.isRecordOpen)
        m_parts.program.context.dialogs.Show(
            {.text = openRecordInWords(), .icon = toolkit::Icon::Exclamation});
    if (outcome.isDone())
        m_parts.progress.status(u"%1: %2, Lautstärke %3."_s.arg(phonedata::captionOf(event), tone,
                                                                widgets.volume->currentText()));
    else if (const toolkit::Message failure = ringtoneFailure(outcome); !failure.text.isEmpty())
        m_parts.program.context.dialogs.Show(failure);
    if (outcome.sent == 0)
        readSettings();
}

/// The list shows "Melodie 1" for a tone without a name, and that is sent with a new volume.
bool fraSounds::agreesToOtherTone(SoundEvent event)
{
    const phonedata::PhoneMemory& memory = m_parts.program.memory;
    const size_t index = static_cast<size_t>(event);
    if (operations::isNamed(memory.soundSettings[index], memory.sounds))
        return true;
    const toolkit::Message question{
        .text = u"Die eigene Melodie für \"%1\" ist nicht bekannt. Sie würde durch \"%2\" ersetzt.\n\n"
                u"Trotzdem fortfahren?"_s.arg(phonedata::captionOf(event), m_events[index].toneInPhone),
        .buttons = toolkit::Buttons::YesNo,
        .icon = toolkit::Icon::Question,
        .defaultButton = toolkit::Answer::No};
    return m_parts.program.context.dialogs.Show(question) == toolkit::Answer::Yes;
}

} // namespace kalmo::ui
