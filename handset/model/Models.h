#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace kalmo::handset {

/// The names that a device reports.
struct Model
{
    int family = 0;    ///< 0 for a device that is no handset
    QString cgmm;      ///< answer to "AT+CGMM"
    QString wppn = {}; ///< answer to "AT^WPPN", "^WPPN: 4,S68H" for example; empty if that is an error

    /// A name for people: the one in the second answer, or the first answer.
    QString name() const;
};

/// All models that are known, by family.
const std::vector<Model>& allModels();

/// The model of that name: an answer to "AT+CGMM", a name as "AT^WPPN" gives it ("SL450HX"), that whole
/// answer, or "MODEM" for a modem, which is no handset at all. Case and control characters of the name don't
/// matter.
std::optional<Model> findModel(const QString& name);

} // namespace kalmo::handset
