#pragma once

#include <QByteArrayList>

#include <optional>

namespace kalmo::phonedata {

/// The phone's replies in one piece for a file: for each its length in bytes, a colon, the bytes and a line
/// feed. A reply may hold any byte.
QByteArray repliesBytes(const QByteArrayList& replies);

/// The replies in such a piece; nothing if it is broken or cut off.
std::optional<QByteArrayList> repliesFrom(const QByteArray& bytes);

} // namespace kalmo::phonedata
