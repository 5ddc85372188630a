#pragma once

#include <QStringList>

namespace kalmo::handset {

/// What the client did that the protocol doesn't allow, in the order in which it happened.
class Violations
{
public:
    /// With a tolerant handset nothing is one.
    explicit Violations(bool tolerant = false) : m_tolerant(tolerant) {}

    void record(const QString& what)
    {
        if (!m_tolerant)
            m_all.append(what);
    }
    const QStringList& all() const { return m_all; }

private:
    bool m_tolerant;
    QStringList m_all;
};

} // namespace kalmo::handset
