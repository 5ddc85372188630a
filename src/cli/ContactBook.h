#pragma once

#include "cli/Job.h"
#include "operations/SavedLists.h"
#include "phonedata/VcardStore.h"

namespace kalmo::cli {

/// The vCard phonebook of a phone that has been found.
class ContactBook
{
public:
    ContactBook(Job& job, const std::shared_ptr<obex::clsMmc>& client);

    /// Reads it, and once more if not as many contacts came as the phone says to hold. Anything but ExitDone
    /// has been told; whether the second reading is whole is for the caller to ask.
    ExitStatus read();

    phonedata::VcardStore& store() { return *m_store; }
    toolkit::ListRows& list() { return *m_list; }
    /// As last read or written.
    operations::Contacts contacts() const;

    /// Whether as many contacts came as the phone says to hold, neither fewer nor more.
    bool isWhole() const;
    /// A sentence without its point about a reading that is not whole.
    QString mismatch() const;

    /// Saves what was read. False has been told. `path` stays empty for a phonebook that is empty.
    bool backUp(QString& path);

private:
    ExitStatus readOnce();

    Job& m_job;
    std::unique_ptr<toolkit::ListRows> m_list;
    std::shared_ptr<phonedata::VcardStore> m_store;
};

/// Reads the contacts of a phone that has been found, and shows or saves them.
ExitStatus showContacts(Job& job);

} // namespace kalmo::cli
