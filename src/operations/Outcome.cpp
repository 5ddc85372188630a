#include "operations/Outcome.h"

namespace kalmo::operations {

using namespace Qt::StringLiterals;

QString wordOf(State state)
{
    switch (state) {
    case State::Done:
        return u"done"_s;
    case State::Unchanged:
        return u"unchanged"_s;
    case State::Unknown:
        break;
    }
    return u"unknown"_s;
}

State stateOf(const QString& word)
{
    for (const State state : {State::Done, State::Unchanged}) {
        if (word == wordOf(state))
            return state;
    }
    return State::Unknown;
}

} // namespace kalmo::operations
