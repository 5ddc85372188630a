#pragma once

#include "handset/classic/ClassicStore.h"
#include "handset/files/FileMemory.h"
#include "handset/irmc/IrmcStore.h"
#include "handset/model/Models.h"
#include "handset/Options.h"
#include "handset/state/Settings.h"
#include "handset/state/StateFolder.h"
#include "handset/Violations.h"

#include <memory>

namespace kalmo::handset {

/// State and knowledge of a handset, independent of its line.
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
    std::array<IrmcStore, irmcStores> irmc;
    FileTree files;
    FileMemory fileMemory;
    StateFolder memory;

    /// Writes the changes to disk. Does nothing for a handset that forgets.
    void keepSettings();
    void keep(const ClassicStore& store);
    void keep(const IrmcStore& store);
    void keepFiles();

    /// The store that is open, null if none is. At most one is.
    ClassicStore* openStore();
    void closeStores();

    QList<int> rates() const;
    LineEnd lineEnd() const;
    /// Returns true if commands are echoed until the client changes that.
    bool echoesAtFirst() const { return !isTolerant(); }
    int maxPacket() const { return options.maxPacket > 0 ? options.maxPacket : family.data.maxPacket; }
    bool isTolerant() const { return options.profile != Profile::Own; }
    CardText cardText() const;
};

/// The handset that the options describe, with its memory. Null, with the reason in `error`, if there is no
/// such model, or if its memory or seed can't be read.
std::unique_ptr<Phone> makePhone(const Options& options, QString& error);

} // namespace kalmo::handset
