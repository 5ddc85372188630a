#pragma once

#include <QStringList>

namespace kalmo::toolkit {

/// Text as a search compares it: lower case, without accents ("Müller" becomes "muller", "ß" becomes "ss").
QString foldedForSearch(const QString& text);

/// The rows that hold every word of what a user typed, each word in any column, without regard to case and
/// accents. "mueller" finds "Müller" too. An empty text matches every row.
class RowFilter
{
public:
    explicit RowFilter(const QString& typed = {});

    bool isEmpty() const { return m_words.isEmpty(); }
    bool matches(const QStringList& cells) const;

private:
    QStringList m_words;
};

} // namespace kalmo::toolkit
