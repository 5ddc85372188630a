#pragma once

#include "phonedata/StoreTraits.h"
#include "support/ClassicScript.h"
#include "support/RecordedProgress.h"

namespace kalmo::tests {

class RecordedWindow : public toolkit::BusyWindow
{
public:
    QList<bool> states; ///< each time it was blocked and freed
    void SetBusy(bool busy) override { states.append(busy); }
};

/// A classic handset on a scripted line, with the list of one of its stores.
struct ClassicPhone
{
    explicit ClassicPhone(int phoneType, phonedata::Store store = phonedata::Store::Phonebook)
        : port(test), script(test, port), line(test.context, port),
          list(phonedata::traitsOf(store).makeRows())
    {
        test.sy.PhoneType = phoneType;
        test.sy.PhoneID = QStringLiteral("Emulated");
        test.sy.PhoneSerial = QStringLiteral("1"); // nothing asks for it
    }

    phonedata::StoreJob job() { return {line, memory, list.get(), &window, progress.all()}; }
    template <typename Entry>
    void fill(const std::vector<Entry>& entries)
    {
        for (const Entry& entry : entries)
            list->add(phonedata::toRow(entry));
    }

    TestContext test;
    ScriptedPort port;
    ClassicScript script;
    link::Line line;
    phonedata::PhoneMemory memory;
    std::unique_ptr<toolkit::ListRows> list;
    RecordedWindow window;
    RecordedProgress progress;
};

} // namespace kalmo::tests
