#pragma once

#include <QJsonObject>
#include <QString>

namespace kalmo::handset {

/// The handset's memory on disk: a folder with one readable JSON file for each section, "phonebook.json" for
/// example. A seed file holds the same sections in one object.
class StateFolder
{
public:
    /// With an empty path the memory keeps nothing.
    explicit StateFolder(const QString& path = {}) : m_path(path) {}

    const QString& path() const { return m_path; }

    /// Makes the folder and reads its content; `sections` stays empty in a new folder. Returns false, with
    /// the reason in `error`, if that fails or if a file isn't JSON.
    bool load(QJsonObject& sections, QString& error) const;

    /// Replaces a section's file, whole or not at all. problem() keeps the first failure.
    void save(const QString& section, const QJsonValue& content);
    /// Does the same for a file of the handset's own, by its path below the memory's folder.
    void saveFile(const QString& path, const QByteArray& content);
    void removeFile(const QString& path);
    const QString& problem() const { return m_problem; }

private:
    void replace(const QString& path, const QByteArray& content);

    QString m_path;
    QString m_problem;
};

/// Reads a JSON file that holds an object or an array. Returns false, with the reason in `error`, if it
/// can't.
bool readJson(const QString& path, QJsonValue& content, QString& error);

} // namespace kalmo::handset
