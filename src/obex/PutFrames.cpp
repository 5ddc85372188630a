#include "obex/PutFrames.h"

#include "obex/ObexFrames.h"

#include <algorithm>

namespace kalmo::obex {

namespace {

constexpr int frameAndBodyHeads = 6;
// Frame head 3, Name head 3 and its 00, Length 5, Time 18, Body head 3.
constexpr int fileOverhead = 33;
// Frame head 3, Name head 3 and its 00, Length 5, application parameters' head 3, Body head 3.
constexpr int irmcOverhead = 18;

int wholeChunksBehind(qsizetype size, int firstChunk, int nextChunk)
{
    return static_cast<int>((size - firstChunk) / nextChunk);
}

} // namespace

PutFrames::PutFrames(QByteArray headers, QByteArray body, int firstChunk, int maxPacket,
                     AfterFinal afterFinal)
    : m_headers(std::move(headers)), m_body(std::move(body)), m_rest(m_body),
      m_firstChunk(std::max(firstChunk, 0)), m_nextChunk(nextChunkSize(maxPacket)), m_afterFinal(afterFinal)
{
}

QByteArrayView PutFrames::take(qsizetype most)
{
    const QByteArrayView taken = m_rest.first(std::min(most, m_rest.size()));
    m_rest = m_rest.sliced(taken.size());
    return taken;
}

QByteArray PutFrames::first()
{
    m_finalOut = m_rest.size() <= m_firstChunk;
    return putFrame(m_finalOut, m_headers, take(m_firstChunk));
}

QByteArray PutFrames::next()
{
    m_wasFinalOut = m_finalOut;
    if (m_rest.size() > m_nextChunk)
        return putFrame(false, {}, take(m_nextChunk));
    const QByteArrayView rest = m_rest;
    if (m_afterFinal == AfterFinal::EmptyFrame)
        m_rest = {};
    m_finalOut = true;
    return putFrame(true, {}, rest);
}

int nextChunkSize(int maxPacket)
{
    return maxPacket - frameAndBodyHeads;
}

int fileFirstChunkSize(int maxPacket, const QString& name)
{
    return maxPacket - static_cast<int>(nameBytes(name).size()) - fileOverhead;
}

int irmcFirstChunkSize(int maxPacket, const QString& name, const QByteArray& parameters)
{
    return maxPacket - static_cast<int>(nameBytes(name).size() + parameters.size()) - irmcOverhead;
}

int filePutSteps(qsizetype size, int firstChunk, int nextChunk)
{
    if (size <= firstChunk)
        return 2;
    return size <= firstChunk + nextChunk ? 3 : wholeChunksBehind(size, firstChunk, nextChunk) + 3;
}

int irmcPutSteps(qsizetype size, int firstChunk, int nextChunk)
{
    if (size <= firstChunk)
        return 1;
    return size <= firstChunk + nextChunk ? 3 : wholeChunksBehind(size, firstChunk, nextChunk) + 2;
}

} // namespace kalmo::obex
