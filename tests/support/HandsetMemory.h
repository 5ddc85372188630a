#pragma once

#include "handset/Phone.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace kalmo::tests {

/// Everything that an emulated handset holds, one line for each file, entry, contact and setting. The
/// references of contacts are left out, and so is the order of files and contacts: a phone gives a new
/// reference and place to one that comes back.
inline QStringList memoryOf(const handset::Phone& phone)
{
    QStringList lines;
    const auto add = [&lines](const QString& what, const QJsonObject& object) {
        lines.append(what + u' ' + QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
    };
    for (const handset::ClassicStore* store : {&phone.phonebook, &phone.providers}) {
        for (const QJsonValue& entry : store->json())
            add(store->section(), entry.toObject());
    }
    add(QStringLiteral("settings"), phone.settings.json());
    const std::function<void(const handset::FileNode&, const QString&)> addFiles =
        [&](const handset::FileNode& node, const QString& path) {
            lines.append(QStringLiteral("%1 %2 %3 %4 %5")
                             .arg(path, node.user, node.group,
                                  node.isFolder ? QString() : node.modified.toString(Qt::ISODate),
                                  QString::fromLatin1(node.content.toHex())));
            for (const auto& child : node.children)
                addFiles(*child, path + u'/' + child->name);
        };
    const qsizetype ordered = lines.size();
    addFiles(phone.files.root(), {});
    for (const handset::IrmcItem& item : phone.irmc[handset::ContactStore].items()) {
        QJsonObject fields;
        for (auto field = item.fields.begin(); field != item.fields.end(); ++field) {
            if (field.value() != QString()) // an empty one is as good as none
                fields.insert(field.key(), field.value());
        }
        add(QStringLiteral("contact"), fields);
    }
    std::sort(lines.begin() + ordered, lines.end());
    return lines;
}

/// The same with the name under which an entry of a classic list goes back that has none.
inline QStringList named(QStringList memory)
{
    return memory.replaceInStrings(QStringLiteral("\"name\":\"\""), QStringLiteral("\"name\":\"Ohne Name\""));
}

} // namespace kalmo::tests
