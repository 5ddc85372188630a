#pragma once

#include "phonedata/VcfEntry.h"
#include "support/ScriptedDialogs.h"

namespace kalmo::tests {

using namespace Qt::StringLiterals;

/// The boxes of the vCard phonebook, by what follows the program's name in their title.
inline toolkit::Message box(Icon icon, const QString& text, const QString& title = {})
{
    return {.text = text, .title = u"Kalmo"_s + title, .icon = icon};
}

inline toolkit::Message titledQuestion(const QString& text, const QString& title,
                                       Answer byDefault = Answer::No)
{
    return {.text = text,
            .title = u"Kalmo"_s + title,
            .buttons = Buttons::YesNo,
            .icon = Icon::Question,
            .defaultButton = byDefault};
}

inline const auto lostReference =
    box(Icon::Critical,
        u"LUID konnte beim Schreiben nicht berechnet werden. Bitte wenden Sie sich an den Programmautor."_s);

inline const phonedata::tVcfEntry someone{.lastName = u"Zöllner"_s, .home = u"030 1"_s};

} // namespace kalmo::tests
