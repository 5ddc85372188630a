#include "link/PortOpening.h"

#include "app/SettingsKeys.h"

namespace kalmo::link {

using namespace Qt::StringLiterals;

int portNumber(const app::Context& context)
{
    const int given = context.sy.ComNoForThisRun;
    return given > 0 ? given : app::getInt(context.settings, app::keys::ComPortNew);
}

void choosePort(app::Context& context, int rate)
{
    context.sy.ComNo = portNumber(context);
    context.sy.ComSettings = u"%1,N,8,1"_s.arg(rate);
}

bool openPort(Line& line)
{
    const app::Sy& sy = line.context().sy;
    SPortAx& port = line.port();
    if (!port.IsOpen() && !port.Open(Line::ComPortName(sy.ComNo)))
        return false;
    line.ConfigurePort();
    port.SetSettings(sy.ComSettings);
    port.SetControlLines(true);
    return true;
}

} // namespace kalmo::link
