#include "cli/Suggestion.h"

#include <algorithm>
#include <vector>

namespace kalmo::cli {

namespace {

constexpr qsizetype longestWord = 40; // no command comes near; longer words are not worth the time

/// Number of letters to add, drop, replace or swap between two words.
int slipsBetween(const QString& left, const QString& right)
{
    const auto width = static_cast<size_t>(right.size()) + 1;
    std::vector<std::vector<int>> slips(static_cast<size_t>(left.size()) + 1, std::vector<int>(width));
    for (size_t row = 0; row < slips.size(); ++row) {
        for (size_t column = 0; column < width; ++column) {
            if (row == 0 || column == 0) {
                slips[row][column] = static_cast<int>(row + column);
                continue;
            }
            const auto letter = [&](const QString& word, size_t place) {
                return word[static_cast<qsizetype>(place)];
            };
            const bool same = letter(left, row - 1) == letter(right, column - 1);
            int least = std::min({slips[row - 1][column] + 1, slips[row][column - 1] + 1,
                                  slips[row - 1][column - 1] + (same ? 0 : 1)});
            if (row > 1 && column > 1 && letter(left, row - 1) == letter(right, column - 2) &&
                letter(left, row - 2) == letter(right, column - 1))
                least = std::min(least, slips[row - 2][column - 2] + 1);
            slips[row][column] = least;
        }
    }
    return slips.back().back();
}

} // namespace

QString closestTo(const QString& word, const QStringList& candidates)
{
    if (word.size() > longestWord)
        return {};
    QString closest;
    int fewest = std::max(1, static_cast<int>(word.size()) / 3) + 1;
    for (const QString& candidate : candidates) {
        const int slips = slipsBetween(word, candidate);
        if (slips < fewest) {
            fewest = slips;
            closest = candidate;
        }
    }
    return closest;
}

} // namespace kalmo::cli
