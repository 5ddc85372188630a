#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace kalmo::phonedata {

/// Capacity of a store of the phone and how much of it is in use, in entries.
struct tVcfInfo
{
    qint16 intKap = 0;
    qint16 intBelegt = 0;

    bool operator==(const tVcfInfo&) const = default;
};

/// Reads "info.log"; nothing if one of the two numbers is missing.
std::optional<tVcfInfo> parseInfoLog(const QByteArray& bytes);

/// The phone's answer to an entry that it has written or deleted.
struct LuidAnswer
{
    QString luid;
    qint32 counter = 0; ///< the change counter from now on

    bool operator==(const LuidAnswer&) const = default;
};

/// Reads the payload of such a response; nothing if it is of another kind or length.
std::optional<LuidAnswer> parseLuidAnswer(const QByteArray& payload);

} // namespace kalmo::phonedata
