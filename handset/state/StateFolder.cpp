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
        error = u"%1: %2 at byte %3"_s.arg(path, fault.errorString(), QString::number(fault.offset));
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
    const QJsonDocument document =
        content.isArray() ? QJsonDocument(content.toArray()) : QJsonDocument(content.toObject());
    if (!m_path.isEmpty())
        replace(section + u".json"_s, document.toJson());
}

void StateFolder::saveFile(const QString& path, const QByteArray& content)
{
    if (m_path.isEmpty())
        return;
    QDir(m_path).mkpath(QFileInfo(path).path());
    replace(path, content);
}

void StateFolder::removeFile(const QString& path)
{
    if (!m_path.isEmpty())
        QFile::remove(m_path + u'/' + path);
}

void StateFolder::replace(const QString& path, const QByteArray& content)
{
    QSaveFile file(m_path + u'/' + path);
    // commit() ignores bytes that a full disk did not take. Of the last bytes a part may have been written.
    // Only a second flush reports the rest as an error.
    const auto flushed = [&file] { return file.flush() || file.flush(); };
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && flushed() &&
        file.commit())
        return;
    if (m_problem.isEmpty())
        m_problem = u"%1: %2"_s.arg(file.fileName(), file.errorString());
}

} // namespace kalmo::handset
