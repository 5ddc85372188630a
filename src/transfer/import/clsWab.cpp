#include "transfer/import/clsWab.h"

#include "app/Files.h"
#include "transfer/import/VcardFile.h"
#include "transfer/import/WabFile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace kalmo::transfer {

namespace {

QStringList cardFilesOf(const QString& folder)
{
    QStringList paths;
    for (const QFileInfo& info : QDir(folder).entryInfoList({u"*.vcf"_s}, QDir::Files, QDir::Name))
        paths.append(info.filePath());
    return paths;
}

AddressBookFault faultOf(WabFault fault)
{
    switch (fault) {
    case WabFault::None:
        return AddressBookFault::None;
    case WabFault::NotAnAddressBook:
        break;
    case WabFault::OldLayout:
        return AddressBookFault::OldLayout;
    case WabFault::TooManyContacts:
        return AddressBookFault::TooManyContacts;
    case WabFault::Damaged:
        return AddressBookFault::Damaged;
    }
    return AddressBookFault::NotAnAddressBook;
}

} // namespace

bool clsWab::OpenWab(const QString& path)
{
    if (m_open)
        return false;
    const QFileInfo info(path);
    m_fault = AddressBookFault::None;
    m_isFolder = info.isDir();
    m_files = m_isFolder ? cardFilesOf(path) : QStringList(path);
    if (!info.exists())
        m_fault = AddressBookFault::NotThere;
    else if (m_files.isEmpty())
        m_fault = AddressBookFault::NotAnAddressBook;
    m_open = m_fault == AddressBookFault::None;
    return m_open;
}

void clsWab::CloseWap()
{
    m_open = false;
    m_files.clear();
}

bool clsWab::ReadAllContacts(QDate today)
{
    if (!m_open)
        return false;
    if (m_events.BusyStart)
        m_events.BusyStart();
    std::vector<WabContact> before = std::exchange(m_contacts, {});
    ReadingLosses lossesBefore = std::exchange(m_losses, {});
    m_fault = AddressBookFault::None;
    for (const QString& path : std::as_const(m_files)) {
        if (!readFile(path, today) || !goesOn())
            break;
    }
    if (m_contacts.size() > mostContacts)
        m_fault = AddressBookFault::TooManyContacts;
    if (m_fault != AddressBookFault::None) {
        m_contacts = std::move(before);
        m_losses = std::move(lossesBefore);
    }
    const int total = m_fault == AddressBookFault::None ? ContactCount() : 0;
    for (int number = 1; number <= total; ++number) {
        m_contacts[static_cast<size_t>(number) - 1].entryNumber = number;
        if (m_events.Busy)
            m_events.Busy(number, total);
    }
    if (m_events.BusyEnd)
        m_events.BusyEnd();
    return m_fault == AddressBookFault::None;
}

/// Asks the event only until it wants to stop: a later answer may be another one.
bool clsWab::goesOn()
{
    if (m_fault == AddressBookFault::None && m_events.Reading && !m_events.Reading())
        m_fault = AddressBookFault::Stopped;
    return m_fault == AddressBookFault::None;
}

bool clsWab::readFile(const QString& path, QDate today)
{
    QByteArray bytes;
    if (QFileInfo(path).size() > largestAddressBook)
        m_fault = AddressBookFault::TooLarge;
    else if (!app::FileExists(path) || !app::readWholeFile(path, bytes))
        m_fault = AddressBookFault::NotReadable;
    m_faultyFile = path;
    if (m_fault != AddressBookFault::None)
        return false;
    std::vector<WabContact> found;
    if (!m_isFolder && isWabFile(bytes)) {
        WabBook book = readWabFile(bytes);
        found = std::move(book.contacts);
        m_losses.damagedRecords = book.damagedRecords;
        m_fault = faultOf(book.fault);
    } else if (isVcardFile(bytes)) {
        found = readVcardFile(bytes, today, [this] { return goesOn(); });
    } else if (m_isFolder) {
        m_losses.skippedFiles.append(path);
    } else {
        m_fault = AddressBookFault::NotAnAddressBook;
    }
    m_contacts.insert(m_contacts.end(), found.begin(), found.end());
    return m_fault == AddressBookFault::None && m_contacts.size() <= mostContacts;
}

bool clsWab::GetContact(int number, WabContact& record) const
{
    if (number < 1 || number > ContactCount())
        return false;
    record = m_contacts[static_cast<size_t>(number) - 1];
    return true;
}

} // namespace kalmo::transfer
