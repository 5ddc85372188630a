#pragma once

#include "handset/obex/ObjectStore.h"

namespace kalmo::handset {

/// The handset's side of an OBEX session: one request in, one answer out.
class ObexServer
{
public:
    struct Answer
    {
        QByteArray frame;
        double seconds = 0;        ///< that it takes
        bool disconnected = false; ///< the client has disconnected
    };

    ObexServer(Phone& phone, const TimeSource& time) : m_phone(phone), m_time(time), m_store(phone, time) {}

    Answer handle(const ObexPacket& request);
    /// Resets to the state before the first CONNECT.
    void reset();

private:
    static Answer answer(quint8 code, const QByteArray& rest = {}, double seconds = 0);
    static Answer answer(const ObjectReply& reply)
    {
        return answer(reply.code, reply.headers, reply.seconds);
    }

    /// An object that is being sent.
    struct Outgoing
    {
        QString what = {}; ///< empty if there is none
        QByteArray body = {};
        qsizetype sent = 0;
    };
    /// An object that is being received.
    struct Incoming
    {
        QString what = {};
        QStringList path = {};
        ChangeRequest request = {};
        std::optional<quint32> length = {}; ///< that was announced
        int parts = 0;                      ///< frames that have come
    };

    Answer dispatch(const ObexPacket& request);
    Answer connectTo(const ObexPacket& request);
    Answer disconnect();
    Answer setPath(const ObexPacket& request);
    Answer enter(const QString& name, bool create);
    Answer get(const ObexPacket& request);
    Answer startSending(const QString& what, const ObjectReply& reply);
    Answer nextPart();
    Answer put(const ObexPacket& request);
    Answer startReceiving(const ObexPacket& request);
    Answer takePart(const ObexPacket& request);
    Answer finishReceiving();
    Answer change(const ObexPacket& request);
    Answer move(const std::vector<ObexParameter>& parameters);
    Answer abort();

    void dropTransfers(const ObexPacket& request);
    void leaveIncoming();
    void leftInTheMiddle(const QString& request, const QString& what);
    void checkFullFrame(const ObexPacket& request);
    std::vector<ObexParameter> parametersOf(const ObexPacket& request);
    std::optional<QByteArray> expectedCounter(const ObexPacket& request);
    /// Path of an object by its name. Gives nothing for a name that can't be one. `changes` is true for a put
    /// or a delete.
    std::optional<QStringList> locate(const QString& name, bool changes);
    bool mayBePath(const QString& name) const;
    std::optional<QStringList> asItStands(const QString& name);
    void complain(const QString& what) { m_phone.violations.record(what); }

    /// Answers a change, and notes when a contact has changed.
    Answer answerChange(const QStringList& path, const ObjectReply& reply);

    Phone& m_phone;
    const TimeSource& m_time;
    ObjectStore m_store;
    bool m_connected = false;
    qsizetype m_largestAnswer = 255;
    QStringList m_folder;
    Outgoing m_out;
    Incoming m_in;
    std::optional<double> m_sortedAt; ///< when the phonebook is in order again after a change
};

} // namespace kalmo::handset
