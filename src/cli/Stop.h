#pragma once

#include "toolkit/Progress.h"

namespace kalmo::cli {

/// Has Ctrl-C, a request to end and a lost terminal noted instead of ending the program, and a broken pipe
/// ignored. The second request ends the program at once, unless a store of the phone is open; the first says
/// on a terminal that closing it may take its time.
void catchStopSignals();

/// True after a request to stop. The engine reads it between two entries.
class StopBox final : public toolkit::CancelBox
{
public:
    bool Checked() const override;
};

/// While one lives a store of the phone is open, and only the engine itself may stop: it closes the store.
class StoreOpenScope
{
public:
    StoreOpenScope();
    ~StoreOpenScope();
    Q_DISABLE_COPY_MOVE(StoreOpenScope)
};

} // namespace kalmo::cli
