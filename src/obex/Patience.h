#pragma once

#include "obex/clsMmc.h"

namespace kalmo::obex {

/// Changes how long the client waits for a response, for as long as the object lives.
class Patience
{
public:
    Patience(clsMmc& client, double seconds) : m_client(client), m_before(client.RxTimeOut())
    {
        m_client.setRxTimeOut(seconds);
    }
    ~Patience() { m_client.setRxTimeOut(m_before); }
    Q_DISABLE_COPY_MOVE(Patience)

private:
    clsMmc& m_client;
    const double m_before; ///< seconds
};

} // namespace kalmo::obex
