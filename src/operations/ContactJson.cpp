// Contacts in JSON.

#include "operations/ContactFields.h"
#include "operations/ContactFiles.h"
#include "operations/SavedText.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace kalmo::operations {

using phonedata::tVcfEntry;

namespace {

FileFault readMember(const QString& key, const QJsonValue& value, tVcfEntry& contact)
{
    const auto fields = contactFields();
    const auto field =
        std::find_if(fields.begin(), fields.end(), [&](const ContactField& row) { return row.key == key; });
    if (field == fields.end())
        return FileFault::UnknownKey;
    contact.*(field->text) = value.toString();
    return value.isString() ? FileFault::None : FileFault::NotText;
}

SavedListFault readContact(const QJsonValue& value, tVcfEntry& contact)
{
    if (!value.isObject())
        return {.kind = FileFault::NoObject};
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        const FileFault fault = readMember(member.key(), member.value(), contact);
        if (fault != FileFault::None)
            return {.kind = fault, .detail = member.key()};
    }
    return faultOf(contact);
}

} // namespace

QJsonArray contactJson(const Contacts& contacts)
{
    QJsonArray array;
    for (const tVcfEntry& contact : contacts) {
        QJsonObject object;
        for (const ContactField& field : contactFields())
            object.insert(field.key, contact.*(field.text));
        array.append(object);
    }
    return array;
}

QByteArray contactJsonBytes(const SavedList& list)
{
    return QJsonDocument(contactJson(list.contacts)).toJson(QJsonDocument::Indented);
}

bool readContactJson(const QByteArray& bytes, const ReadingRules&, SavedList& list, SavedListFault& fault)
{
    list.contacts.clear();
    QJsonArray array;
    if (!parseJsonArray(bytes, LoneObject::Taken, array, fault))
        return false;
    for (qsizetype index = 0; index < array.size(); ++index) {
        tVcfEntry contact;
        fault = readContact(array.at(index), contact);
        if (fault.kind != FileFault::None) {
            fault.place = SavedListFault::Place::Entry;
            fault.number = static_cast<int>(index) + 1;
            return false;
        }
        list.contacts.push_back(contact);
    }
    return true;
}

} // namespace kalmo::operations
