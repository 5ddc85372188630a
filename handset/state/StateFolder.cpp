#include "handset/state/StateFolder.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

bool readJson(const QString& path, QJsonValue& content, QString& error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = u"%1: %2"_s.arg(path, file.errorString());
        return false;
    }
    QJsonParseError fault;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &fault);
    if (document.isNull()) {
        error = u"%1: %2 at byte %3"_s.arg(path, fault.errorString()).arg(fault.offset);
        return false;
    }
    content = document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    return true;
}

bool StateFolder::load(QJsonObject& sections, QString& error) const
{
    if (m_path.isEmpty())
        return true;
    const QDir folder(m_path);
    if (!folder.mkpath(u"."_s)) {
        error = u"%1: the folder can't be made"_s.arg(m_path);
        return false;
    }
    for (const QFileInfo& file : folder.entryInfoList({u"*.json"_s}, QDir::Files)) {
        QJsonValue content;
        if (!readJson(file.filePath(), content, error))
            return false;
        sections[file.completeBaseName()] = content;
    }
    return true;
}

void StateFolder::save(const QString& section, const QJsonValue& content)
{
    if (m_path.isEmpty())
        return;
    const QJsonDocument document =
        content.isArray() ? QJsonDocument(content.toArray()) : QJsonDocument(content.toObject());
    QSaveFile file(m_path + u'/' + section + u".json"_s);
    if (file.open(QIODevice::WriteOnly) && file.write(document.toJson()) >= 0 && file.commit())
        return;
    if (m_problem.isEmpty())
        m_problem = u"%1: %2"_s.arg(file.fileName(), file.errorString());
}

} // namespace kalmo::handset
