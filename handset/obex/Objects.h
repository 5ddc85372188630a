#pragma once

#include "handset/obex/Packet.h"
#include "handset/Phone.h"

namespace kalmo::handset {

/// Result of a request about an object.
struct ObjectReply
{
    quint8 code = obex::Success;
    QByteArray content = {}; ///< of an object that was asked for
    QByteArray headers = {}; ///< that go with the answer to a change
    double seconds = 0;      ///< that it takes

    bool isGood() const { return code == obex::Success; }
};

/// One line of a folder listing.
struct ListingRow
{
    bool isFolder = false;
    QString name = {};
    qsizetype size = 0;
    QDateTime modified = {};
    QString user = QStringLiteral("R");
    QString group = QStringLiteral("R");
};

/// Facts that come with an object that is put or deleted.
struct ChangeRequest
{
    QByteArray content = {};
    QDateTime modified = {};
    std::optional<QByteArray> expectedCounter = {}; ///< change counter of the client, in digits
    bool answersLuid = false; ///< with the IrMC target a change is answered with LUID and counter
};

/// The objects of the phonebook and the organizer, below the folder "telecom". Paths begin after that name.
class TelecomObjects
{
public:
    explicit TelecomObjects(Phone& phone) : m_phone(phone) {}

    bool isFolder(const QStringList& path) const;
    bool hasItem(const QStringList& path) const;
    std::vector<ListingRow> list(const QStringList& path) const;
    ObjectReply get(const QStringList& path);
    ObjectReply put(const QStringList& path, const ChangeRequest& request);
    ObjectReply remove(const QStringList& path, const ChangeRequest& request);

private:
    /// A path to one item: the store, and the item's LUID.
    struct ItemPath
    {
        IrmcStore* store = nullptr;
        QString luid = {};
    };
    ItemPath itemAt(const QStringList& path) const;
    QByteArray wholeText(const IrmcStore& store) const;
    ObjectReply whole(const IrmcStore& store);
    std::optional<quint8> refusal(const IrmcStore& store, const ChangeRequest& request) const;
    ObjectReply changed(const IrmcStore& store, const QString& luid, bool tells);
    QByteArray counterText(const IrmcStore& store) const;
    QByteArray deviceInformation() const;

    Phone& m_phone;
};

/// Text of a folder listing in one of the forms that handsets write.
QByteArray listingText(const std::vector<ListingRow>& rows, ListingForms form);

} // namespace kalmo::handset
