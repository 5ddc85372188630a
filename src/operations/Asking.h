#pragma once

#include "operations/ClassicReading.h"

#include <functional>

namespace kalmo::operations {

/// An answer that came twice the same, or the reason why there is none.
template <typename Value>
struct Asked
{
    std::optional<Value> value;
    Cause cause = Cause::None; ///< without a value: of the exchange, or Doubtful if no two answers agreed
};

/// Asks until two answers in a row agree and the later one came undisturbed: short answers have no length
/// and no checksum, so a lost byte or a late answer to an earlier command would pass for a true one. `ask`
/// returns an optional; nothing ends the asking. `agree` compares two answers.
template <typename Ask, typename Agree = std::equal_to<>>
auto askUntilSure(link::Line& line, const Ask& ask, const Agree& agree = {})
    -> Asked<typename std::invoke_result_t<Ask>::value_type>
{
    constexpr int mostAttempts = 4;
    typename std::invoke_result_t<Ask> last;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        auto answer = ask();
        if (!answer)
            return {std::nullopt, causeOf(line.lastFailure())};
        if (attempt > 0 && agree(*answer, *last) && line.isAnswerSafe())
            return {std::move(answer), Cause::None};
        last = std::move(answer);
    }
    return {std::nullopt, Cause::Doubtful};
}

} // namespace kalmo::operations
