// Commands that switch to data mode.

#include "handset/at/AtCommand.h"

namespace kalmo::handset {

namespace {

/// 3 switches to data mode. 0 changes nothing, since the handset is in command mode.
AtAnswer switchMode(AtContext& context, const AtRequest& request)
{
    if (request.form == Form::Read)
        return AtAnswer::ok("^SQWE: 0");
    if (request.argument == "0")
        return AtAnswer::ok();
    if (request.argument != "3")
        return AtAnswer::error(NotSupported);
    if (context.phone.faults.menuOpen > 0) {
        --context.phone.faults.menuOpen;
        return {.result = AtAnswer::Silence};
    }
    AtAnswer answer = AtAnswer::ok();
    answer.then = AtAnswer::EnterDataMode;
    return answer;
}

constexpr AtCommand modeTable[] = {
    {"^SQWE", Form::Set, vcardFamilies, 0.1, switchMode, false, Ending::CrLf},
    {"^SQWE", Form::Read, vcardFamilies, 0.05, switchMode},
};

} // namespace

std::span<const AtCommand> modeCommands()
{
    return modeTable;
}

} // namespace kalmo::handset
