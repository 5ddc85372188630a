#pragma once

#include "transfer/import/WabContact.h"

#include <QByteArray>

#include <functional>

namespace kalmo::transfer {

/// Returns true if bytes begin as a file of cards does.
bool isVcardFile(QByteArrayView bytes);

/// The contacts of a file of cards of the versions 2.1, 3.0 and 4.0, numbered from 1. Photos are skipped,
/// cards of groups and cards within cards are left out. A telephone number goes to the field of its types, a
/// preferred one before the others and one without a type to the first field of home, work and mobile that
/// stays free; a pager to none. A card without an end is cut off. A birthday without a year gets that of
/// `today`. At most mostContacts + 1. `goesOn` is asked from time to time; the contacts read so far are the
/// result once it returns false.
std::vector<WabContact> readVcardFile(QByteArrayView bytes, QDate today,
                                      const std::function<bool()>& goesOn = {});

} // namespace kalmo::transfer
