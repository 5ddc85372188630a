#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

/// One line of a card, unfolded: "item1.TEL;TYPE=home,pref:+49 221" and the like.
struct VcardLine
{
    QByteArray name = {};      ///< upper case, without a group: "TEL"
    QByteArrayList types = {}; ///< upper case: "HOME", "PREF"; a value of 1 for PREF= counts as PREF
    bool isQuotedPrintable = false;
    bool isBase64 = false;
    QByteArray charset = {}; ///< upper case, empty if the line names none
    QByteArray value = {};   ///< as it stands in the file

    bool hasType(QByteArrayView type) const { return types.contains(type); }
    /// The value as a text: decoded, escapes left in.
    QString text() const;
};

/// Walks the lines of cards of the versions 2.1, 3.0 and 4.0. The bytes are UTF-8 where they are valid by it,
/// else Windows-1252, unless a line names a character set that the toolkit knows.
class VcardLines
{
public:
    explicit VcardLines(QByteArrayView bytes) : m_rest(bytes) {}

    /// The next line that has a name and a value, nothing at the end.
    std::optional<VcardLine> next();

private:
    QByteArray unfolded();
    void joinSoftBreaks(QByteArray& value);

    QByteArrayView m_rest;
};

/// Parts of a structured value, split at each ";" (or another mark) without a backslash ahead, with escapes
/// taken out.
QStringList vcardParts(const QString& value, QChar mark = u';');
/// A value with escapes taken out; line ends become blanks.
QString vcardText(const QString& value);

} // namespace kalmo::transfer
