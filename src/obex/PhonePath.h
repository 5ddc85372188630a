#pragma once

#include <QStringList>

namespace kalmo::obex {

/// A file or folder of the phone, by the names on the path from the root.
class PhonePath
{
public:
    /// Takes slashes of either kind, with or without the root itself ("Mobile:\") at the start.
    explicit PhonePath(const QString& text = {});

    bool isRoot() const { return m_parts.isEmpty(); }
    QString name() const { return m_parts.isEmpty() ? QString() : m_parts.last(); }
    PhonePath folder() const;
    /// Something in this folder. `name` is one part, even if it holds a separator.
    PhonePath below(const QString& name) const;
    const QStringList& parts() const { return m_parts; }

    /// "/Pictures/a.bmp", as results show it.
    QString shown() const;
    /// "Mobile:\Pictures\a.bmp", as the client takes it.
    QString forEngine() const;

    /// Returns false if a file or folder made by that path would get another name in the phone.
    bool canBeMade() const;

    /// Returns true for "telecom" in the root and all below it, where the phone keeps contacts, appointments
    /// and notes. Parts such as ".." count as the path that they may mean.
    bool isTelecom() const;

    /// Returns true if both name the same file or folder: the phones take names without regard to case.
    bool isSamePlace(const PhonePath& other) const;

    bool operator==(const PhonePath&) const = default;

private:
    QStringList m_parts;
};

/// The name under which a file goes to the phone: without "," and ";", which phones can't handle.
QString nameAsSent(QString name);

/// Returns true if the user's words name a folder by a slash at their end.
bool endsInSlash(const QString& text);

} // namespace kalmo::obex
