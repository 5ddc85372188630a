#pragma once

#include <QStringList>

namespace kalmo::handset {

/// What the client did that the protocol doesn't allow, in the order in which it happened.
class Violations
{
public:
    void record(const QString& what) { m_all.append(what); }
    const QStringList& all() const { return m_all; }

private:
    QStringList m_all;
};

} // namespace kalmo::handset
