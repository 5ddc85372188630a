#include "toolkit/RowFilter.h"

#include <algorithm>

namespace kalmo::toolkit {

using namespace Qt::StringLiterals;

namespace {

/// The spelling without umlauts: "Müller" becomes "mueller".
QString withoutUmlauts(const QString& text)
{
    QString plain = text.toLower();
    plain.replace(u'ä', u"ae"_s).replace(u'ö', u"oe"_s).replace(u'ü', u"ue"_s);
    return foldedForSearch(plain);
}

} // namespace

QString foldedForSearch(const QString& text)
{
    QString folded;
    for (const QChar letter : text.normalized(QString::NormalizationForm_KD).toCaseFolded()) {
        if (letter.category() != QChar::Mark_NonSpacing)
            folded += letter;
    }
    return folded.replace(u'ß', u"ss"_s);
}

RowFilter::RowFilter(const QString& typed)
    : m_words(foldedForSearch(typed.simplified()).split(u' ', Qt::SkipEmptyParts))
{
}

bool RowFilter::matches(const QStringList& cells) const
{
    QString all;
    QString plain;
    for (const QString& cell : cells) {
        all += foldedForSearch(cell) + u'\n'; // no word reaches over two cells
        plain += withoutUmlauts(cell) + u'\n';
    }
    return std::ranges::all_of(
        m_words, [&](const QString& word) { return all.contains(word) || plain.contains(word); });
}

} // namespace kalmo::toolkit
