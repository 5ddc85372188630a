#pragma once

#include "app/mdlRegIni.h"
#include "phonedata/ClassicStore.h"
#include "phonedata/PhoneMemory.h"

#include <optional>

namespace kalmo::ui {

/// Values of `ActiveSection`, which decide about the guards and the way back.
enum Section {
    SectionNone = 0,
    SectionPhonebook = 1,
    SectionProviders = 2,
    SectionSponsor = 3,
    SectionDiverse = 4,
    SectionFiles = 6,
};

/// Values of `ToolbarMode`: the target of the toolbar's commands.
enum ToolbarMode {
    ModeDiverse = 0,
    ModePhonebook = 1,
    ModeProviders = 2,
    ModeSponsor = 3,
    ModeSounds = 5,
};

/// Knows the active section, and if a click on another node needs a question about unsaved changes. It has no
/// widget, so that all of its rules can be tested.
class SectionGuard
{
public:
    SectionGuard(const phonedata::PhoneMemory& memory, const app::Settings& settings)
        : m_memory(memory), m_settings(settings)
    {
    }

    int ActiveSection = SectionNone;
    bool GuardSuppressed = false; ///< true while the window goes back to the previous node

    /// The list that the user has to be asked about before the node of that key is entered.
    std::optional<phonedata::Store> promptFor(const QString& nodeKey) const;

    /// Key of the node of the active section, empty if no way leads back.
    QString previousNode() const;

private:
    const phonedata::PhoneMemory& m_memory;
    const app::Settings& m_settings;
};

} // namespace kalmo::ui
