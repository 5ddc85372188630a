#pragma once

#include <QJsonObject>
#include <QString>

namespace kalmo::handset {

/// The handset's memory on disk: a folder with one readable JSON file for each section, "phonebook.json" for
/// example. A seed file holds the same sections in one object.
class StateFolder
{
public:
    /// An empty path stands for a memory that keeps nothing.
    explicit StateFolder(const QString& path = {}) : m_path(path) {}

    const QString& path() const { return m_path; }

    /// Makes the folder and reads what is there; `sections` stays empty in a new folder. False, and the
    /// reason in `error`, if that fails or if a file isn't JSON.
    bool load(QJsonObject& sections, QString& error) const;

    /// Replaces a section's file, whole or not at all. The first failure is kept in problem().
    void save(const QString& section, const QJsonValue& content);
    const QString& problem() const { return m_problem; }

private:
    QString m_path;
    QString m_problem;
};

/// Reads a JSON file that holds an object or an array. False, and the reason in `error`, if it can't.
bool readJson(const QString& path, QJsonValue& content, QString& error);

} // namespace kalmo::handset
