#pragma once

#include "app/mdlDebugLog.h"
#include "app/mdlRegIni.h"
#include "app/Platform.h"
#include "app/Sy.h"
#include "toolkit/Clock.h"
#include "toolkit/Dialogs.h"
#include "toolkit/Ending.h"

namespace kalmo::app {

/// The services that every part of the engine works with. Made once in main; tests make one of fakes.
struct Context
{
    Sy& sy;
    toolkit::Clock& clock;
    toolkit::Dialogs& dialogs;
    toolkit::Ending& ending;
    Platform& platform;
    Settings& settings;
    DebugLog& log;
};

} // namespace kalmo::app
