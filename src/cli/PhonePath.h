#pragma once

#include <QStringList>

namespace kalmo::cli {

/// A file or folder of the phone, as the user says it: from the root, with slashes of either kind, with or
/// without the root itself ("Mobile:\") at its start.
class PhonePath
{
public:
    explicit PhonePath(const QString& text = {});

    bool isRoot() const { return m_parts.isEmpty(); }
    QString name() const { return m_parts.isEmpty() ? QString() : m_parts.last(); }
    PhonePath folder() const;
    PhonePath below(const QString& name) const;

    /// "/Pictures/a.bmp", as results show it.
    QString shown() const;
    /// "Mobile:\Pictures\a.bmp", as the engine has it.
    QString forEngine() const;

    /// False where a file or folder made by that path would get another name in the phone.
    bool canBeMade() const;

    bool operator==(const PhonePath&) const = default;

private:
    QStringList m_parts;
};

/// Whether the user's words name a folder by a slash at their end.
bool endsInSlash(const QString& text);

} // namespace kalmo::cli
