#pragma once

#include "handset/classic/ClassicStore.h"
#include "handset/model/Models.h"
#include "handset/Options.h"
#include "handset/state/Settings.h"
#include "handset/state/StateFolder.h"
#include "handset/Violations.h"

#include <memory>

namespace kalmo::handset {

/// All that a handset is and knows, whatever line it hangs on.
struct Phone
{
    Options options;
    Model model;
    const Family& family;
    Faults faults;
    Violations violations;

    Settings settings;
    ClassicStore phonebook;
    ClassicStore providers;
    StateFolder memory;

    /// Says on disk what has changed. Nothing to do for a handset that forgets.
    void keepSettings();
    void keep(const ClassicStore& store);

    /// The store that is open, null if none is. At most one is.
    ClassicStore* openStore();
    void closeStores();

    QList<int> rates() const;
    LineEnd lineEnd() const { return options.lineEnd.value_or(family.lineEnd); }
};

/// The handset that the options describe, with what it remembers. Null and the reason in `error` where there
/// is no such model, or where its memory or seed can't be read.
std::unique_ptr<Phone> makePhone(const Options& options, QString& error);

} // namespace kalmo::handset
