#pragma once

#include "app/Sizes.h"
#include "transfer/import/WabContact.h"

#include <functional>

namespace kalmo::transfer {

/// Bytes of the largest file that is read.
inline constexpr qint64 largestAddressBook = 64 * app::megabyte;

/// Why an address book could not be opened or read.
enum class AddressBookFault {
    None,
    NotThere,
    NotReadable,
    TooLarge,
    NotAnAddressBook,
    OldLayout, ///< a Windows Address Book of the layout that Windows 95 wrote
    Damaged,   ///< a Windows Address Book of which no contact can be read
    TooManyContacts,
    Stopped ///< by the user
};

/// The contacts of an address book: of a Windows Address Book (.wab), a file of cards (.vcf), or a folder of
/// such files. They are held after closing too, until another reading
/// succeeds.
class clsWab
{
public:
    /// The reports of a reading, in this order. Each may be absent.
    struct Events
    {
        std::function<void()> BusyStart = {};
        std::function<bool()> Reading = {}; ///< from time to time while files are read; false stops it
        std::function<void(int current, int total)> Busy = {};
        std::function<void()> BusyEnd = {};
    };

    clsWab() = default;
    explicit clsWab(Events events) : m_events(std::move(events)) {}

    /// Opens a book. Returns false if one is open already, or this one can't be opened.
    bool OpenWab(const QString& path);
    void CloseWap();

    /// Reads all contacts of the open book. Returns false if it can't be read.
    bool ReadAllContacts(QDate today);
    int ContactCount() const { return static_cast<int>(m_contacts.size()); }
    /// Copies the contact of a number from 1 on. Returns false for any other number.
    bool GetContact(int number, WabContact& record) const;
    const std::vector<WabContact>& contacts() const { return m_contacts; }

    /// All that the last reading left out.
    const ReadingLosses& losses() const { return m_losses; }

    /// Why the last call failed, and at which file of a folder.
    AddressBookFault fault() const { return m_fault; }
    const QString& faultyFile() const { return m_faultyFile; }

private:
    bool goesOn();
    bool readFile(const QString& path, QDate today);

    Events m_events;
    bool m_open = false;
    bool m_isFolder = false;
    QStringList m_files;
    ReadingLosses m_losses;
    std::vector<WabContact> m_contacts;
    AddressBookFault m_fault = AddressBookFault::None;
    QString m_faultyFile;
};

} // namespace kalmo::transfer
