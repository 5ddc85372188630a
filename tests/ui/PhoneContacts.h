#pragma once

#include "operations/Records.h"
#include "support/ContactBoxes.h"
#include "support/ListLines.h"
#include "support/ObexClient.h"
#include "ui/forms/ContactCommands.h"
#include "ui/TestProgram.h"

namespace kalmo::tests {

using namespace kalmo::phonedata;
using namespace kalmo::ui;

inline const QString editTitle = u" - Adressbuch bearbeiten"_s;

/// The phonebook of the emulated handset, as the window's commands change it.
struct PhoneContacts : TestProgram
{
    explicit PhoneContacts(const QString& model, const handset::Options& options = {})
        : TestProgram(model, options)
    {
        store->VcfReadList(progress.all());
    }

    CommandResult save(const tVcfEntry& entry, int row = -1)
    {
        EditedContact edited;
        if (row >= 0)
            edited.shown = vcfEntryFrom(list->row(row));
        return saveContact(*store, entry, edited, progress.all());
    }
    CommandResult remove() { return VcfDeleteSelected(*store, progress.all()).result; }
    QStringList luids() const
    {
        QStringList all = linesOf(*list, {VcfLuid});
        all.sort();
        return all;
    }
    QByteArray cards()
    {
        const auto& phone = port.handset().phone();
        return phone.irmc[handset::ContactStore].wholeText(phone.cardText());
    }
    /// The list holds exactly the contacts of the phone, and the line takes AT commands.
    bool isInOrder()
    {
        QStringList inPhone;
        for (const auto& item : port.handset().phone().irmc[handset::ContactStore].items())
            inPhone.append(item.luid);
        inPhone.sort();
        return luids() == inPhone && !port.handset().isInDataMode();
    }
    std::vector<operations::Record> records() const
    {
        return operations::Records(test.context, operations::knownIdentity(test.sy)).all();
    }

    operations::Record read(const operations::Record& record) const
    {
        return operations::Records(test.context, record.phone).read(record.id).value();
    }

    std::unique_ptr<toolkit::ListRows> list = makeVcfRows();
    std::shared_ptr<obex::clsMmc> mmc = std::make_shared<obex::clsMmc>(line);
    std::shared_ptr<VcardStore> store = std::make_shared<VcardStore>(mmc, *list);
};

} // namespace kalmo::tests
