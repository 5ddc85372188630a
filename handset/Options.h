#pragma once

#include "handset/Faults.h"
#include "handset/model/Families.h"

#include <QList>
#include <QString>

#include <optional>

namespace kalmo::handset {

/// What comes back at a rate that the handset doesn't speak.
enum class WrongRate { Silence, Garbage };

/// Which handset, with what in it, and how it behaves.
struct Options
{
    QString model = QStringLiteral("PICASSO"); ///< as findModel() takes it

    // A device that is in no table: takes the place of `model` where `cgmm` is not empty.
    QString cgmm = {};
    QString wppn = {};
    int family = 0;

    QList<int> rates = {};               ///< baud; empty for those of the family
    std::optional<LineEnd> lineEnd = {}; ///< nothing for that of the family
    WrongRate wrongRate = WrongRate::Silence;

    QString stateFolder = {}; ///< where the handset's memory lies; empty for a handset that forgets
    /// File that a handset without a memory starts with; "sample" for the one that comes with the program,
    /// "none" for an empty handset.
    QString seed = QStringLiteral("sample");
    int entries = 0;  ///< the phonebook is filled up to so many entries
    int capacity = 0; ///< entries that the phonebook takes; 0 for that of the family

    Faults faults = {};
};

} // namespace kalmo::handset
