#pragma once

#include "phonedata/VcardStore.h"
#include "support/HandsetPort.h"
#include "support/RecordedProgress.h"
#include "support/TestContext.h"

namespace kalmo::tests {

/// An emulated handset that was found on the line, with its vCard phonebook.
struct ContactPhone
{
    explicit ContactPhone(const QString& model, handset::Options options = {})
        : port(test.clock, test.verdict, (options.model = model, options))
    {
        test.sy.PhoneType = port.handset().phone().family.number;
        test.sy.blnTxLfTerminator = test.sy.PhoneType >= 11;
        test.sy.PhoneID = model;
    }

    const handset::IrmcStore& held() { return port.handset().phone().irmc[handset::ContactStore]; }

    TestContext test;
    HandsetPort port;
    link::Line line{test.context, port};
    std::shared_ptr<obex::clsMmc> client = std::make_shared<obex::clsMmc>(line);
    std::unique_ptr<toolkit::ListRows> list = phonedata::makeVcfRows();
    std::shared_ptr<phonedata::VcardStore> store = std::make_shared<phonedata::VcardStore>(client, *list);
    RecordedProgress progress;
};

} // namespace kalmo::tests
