#pragma once

#include "handset/obex/Objects.h"
#include "handset/Seams.h"

namespace kalmo::handset {

/// All objects that OBEX reaches: the file system, and the folder "telecom" in its root. Paths begin at the
/// root.
class ObjectStore
{
public:
    ObjectStore(Phone& phone, const TimeSource& time) : m_phone(phone), m_time(time), m_telecom(phone) {}

    /// With the IrMC target only "telecom" is there, and changes are answered with LUID and counter.
    void setIrmc(bool on) { m_irmc = on; }
    bool isIrmc() const { return m_irmc; }

    bool has(const QStringList& path);
    bool isFolder(const QStringList& path);
    ObjectReply list(const QStringList& path);
    ObjectReply makeFolder(const QStringList& path);
    ObjectReply get(const QStringList& path);
    /// Returns true if there is room for an object of that size, before and during its transfer.
    quint8 room(const QStringList& path, qint64 size);
    ObjectReply put(const QStringList& path, ChangeRequest request);
    ObjectReply remove(const QStringList& path, ChangeRequest request);
    ObjectReply move(const QStringList& from, const QStringList& to);
    /// `text` is user and group rights, each in quotes: "RWD""R".
    ObjectReply setRights(const QStringList& path, const QByteArray& text);
    /// Bytes of memory. `query` is 1 for all, 2 for free, and a path after that for the memory card.
    ObjectReply memory(const QByteArray& query);

private:
    bool hasFiles() const { return !m_irmc && m_phone.files.capacity() > 0; }
    ObjectReply done(FileResult result, double seconds);

    Phone& m_phone;
    const TimeSource& m_time;
    TelecomObjects m_telecom;
    bool m_irmc = false;
};

/// Returns true if the path leads to "telecom" or below.
bool isTelecom(const QStringList& path);

} // namespace kalmo::handset
