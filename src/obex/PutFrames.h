#pragma once

#include <QByteArray>
#include <QString>

namespace kalmo::obex {

/// An object on its way to the phone, cut into frames.
class PutFrames
{
public:
    /// The frame to send when the phone asks for more after the final frame.
    enum class AfterFinal {
        Repeat,     ///< the same frame again, as for files
        EmptyFrame, ///< a final frame that holds nothing, as for IrMC objects
    };

    /// The first frame holds `headers` and at most `firstChunk` bytes of the body; a number below 0 counts as
    /// 0. Each further frame is filled up to `maxPacket`.
    PutFrames(QByteArray headers, QByteArray body, int firstChunk, int maxPacket, AfterFinal afterFinal);

    QByteArray first();
    QByteArray next();
    /// Takes back the last frame, which was not sent.
    void setUnsent() { m_finalOut = m_wasFinalOut; }

    /// Bytes that no frame has taken yet. After the final frame of AfterFinal::Repeat its own bytes are
    /// counted.
    qsizetype left() const { return m_rest.size(); }
    bool isFinalOut() const { return m_finalOut; }

private:
    QByteArrayView take(qsizetype most);

    QByteArray m_headers;
    QByteArray m_body;
    QByteArrayView m_rest; // of m_body
    qsizetype m_firstChunk;
    qsizetype m_nextChunk;
    AfterFinal m_afterFinal;
    bool m_finalOut = false;
    bool m_wasFinalOut = false; // before the last frame
};

/// Bytes of a body that fit into each further frame.
int nextChunkSize(int maxPacket);

/// Bytes of a file that fit into the first frame after Name, Length and Time, for the longest time text.
int fileFirstChunkSize(int maxPacket, const QString& name);
/// Bytes of an IrMC object that fit into the first frame after Name, Length and the application parameters.
int irmcFirstChunkSize(int maxPacket, const QString& name, const QByteArray& parameters);

/// Maximum of the progress bar for a file of `size` bytes. The bar's value starts at 1 and rises with each
/// frame. Kept on purpose: for a file of the first chunk and two or more whole further ones the maximum is
/// one more than there are frames, so that such a file looks like a transfer that stopped early.
int filePutSteps(qsizetype size, int firstChunk, int nextChunk);
/// Maximum of the progress bar for an IrMC object. The bar's value starts at 1 and rises with each request
/// for more.
int irmcPutSteps(qsizetype size, int firstChunk, int nextChunk);

} // namespace kalmo::obex
