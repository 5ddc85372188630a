#pragma once

#include <QStringList>

namespace kalmo::handset {

/// The client's violations of the protocol, in the order in which they happened.
class Violations
{
public:
    /// A tolerant handset records nothing.
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
