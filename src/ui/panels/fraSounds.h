#pragma once

#include "phonedata/PhoneMemory.h"
#include "phonedata/Ringtones.h"
#include "ui/lists/ListState.h"
#include "ui/panels/PanelFrame.h"
#include "ui/window/CommandTarget.h"

#include <array>
#include <memory>

class QComboBox;
class QGridLayout;

namespace kalmo::ui {

class RowsView;

/// The ringtones of handsets of types 2 to 4. The user's choice goes to the phone at once, and the panel then
/// shows the phone's settings.
class fraSounds : public PanelFrame, public CommandTarget
{
    Q_OBJECT

public:
    explicit fraSounds(const WindowParts& parts, QWidget* parent = nullptr);
    ~fraSounds() override;

    void run(Command command) override;

    /// Reads the phone's melodies and the settings of each event.
    void load();

    /// The list of the phone's own melodies.
    RowsView& view() const { return *m_view; }

private:
    struct Event
    {
        QComboBox* tone;
        QComboBox* volume;
        QString toneInPhone;
    };

    void addEvent(QGridLayout& grid, phonedata::SoundEvent event);
    void showState(ListState state);
    void fillTones();
    void readSettings();
    phonedata::SettingRead shower();
    void choose(phonedata::SoundEvent event);
    bool agreesToOtherTone(phonedata::SoundEvent event);
    phonedata::RingtoneJob job() const;

    WindowParts m_parts;
    std::unique_ptr<toolkit::ListRows> m_sounds;
    RowsView* m_view = nullptr;
    std::array<Event, phonedata::soundEventCount> m_events = {};
};

} // namespace kalmo::ui
