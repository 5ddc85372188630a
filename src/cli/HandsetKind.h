#pragma once

#include <QString>

namespace kalmo::cli {

/// The handsets that a command is for.
struct HandsetKind
{
    bool (*fits)(int phoneType); ///< returns true for their families
    QStringView subject;         ///< "a handset with a file system"

    /// "a handset with a file system (families 5, 6 and 8 to 13)"
    QString inWords() const;
};

extern const HandsetKind clockHandset;
extern const HandsetKind classicHandset;
extern const HandsetKind ringingHandset;
extern const HandsetKind vcardHandset;
extern const HandsetKind rewritingHandset;
extern const HandsetKind filingHandset;

} // namespace kalmo::cli
