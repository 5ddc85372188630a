#include "app/clsStringBuilder.h"

#include <algorithm>

namespace kalmo::app {

using namespace Qt::StringLiterals;

namespace {

clsStringBuilder::Error outOfRange(const QString& source)
{
    return {u"Argument(s) out of range."_s, source};
}

} // namespace

qsizetype clsStringBuilder::BufferBump() const
{
    return m_sizingMethod != 0 ? m_capacity * m_sizingPercent / 100 : m_bufferBump;
}

void clsStringBuilder::setBufferBump(qsizetype bytes)
{
    if (m_sizingMethod == 0 && bytes > 0)
        m_bufferBump = bytes + bytes % bytesPerCharacter;
}

void clsStringBuilder::setCapacity(qsizetype bytes)
{
    if (bytes <= 0)
        return;
    const qsizetype step = std::max(BufferBump(), bytesPerCharacter); // a share may come out at nothing
    m_capacity = (bytes + step - 1) / step * step;
    m_capacity += m_capacity % bytesPerCharacter;
    m_length = std::min(m_length, m_capacity);
    m_buffer.resize(static_cast<size_t>(m_capacity / bytesPerCharacter));
}

void clsStringBuilder::EnsureCapacity(qsizetype characters)
{
    if (characters * bytesPerCharacter > m_capacity)
        setCapacity(characters * bytesPerCharacter);
}

void clsStringBuilder::setLength(qsizetype characters)
{
    if (characters < 0)
        return;
    EnsureCapacity(characters);
    if (characters > Length())
        std::fill(m_buffer.begin() + Length(), m_buffer.begin() + characters, QChar());
    m_length = characters * bytesPerCharacter;
}

clsStringBuilder::Outcome clsStringBuilder::Chars(qsizetype index, QChar& character) const
{
    if (index < 0 || index >= Length())
        return Error{u"Tried reading character past end of buffer."_s, u"CStringBuilder.Chars"_s};
    character = m_buffer[static_cast<size_t>(index)];
    return {};
}

clsStringBuilder::Outcome clsStringBuilder::setChars(qsizetype index, QChar character)
{
    if (index < 0 || index >= Length())
        return Error{u"Tried assigning character past end of buffer."_s, u"CStringBuilder.Chars"_s};
    m_buffer[static_cast<size_t>(index)] = character;
    return {};
}

void clsStringBuilder::Append(QStringView text)
{
    EnsureCapacity(Length() + text.size());
    std::copy(text.begin(), text.end(), m_buffer.begin() + Length());
    m_length += text.size() * bytesPerCharacter;
}

clsStringBuilder::Outcome clsStringBuilder::Insert(qsizetype index, QStringView text)
{
    if (index < 0 || index > Length())
        return outOfRange(u"CStringBuilder.Insert"_s);
    const qsizetype end = Length();
    Append(text);
    std::rotate(m_buffer.begin() + index, m_buffer.begin() + end, m_buffer.begin() + Length());
    return {};
}

clsStringBuilder::Outcome clsStringBuilder::Remove(qsizetype index, qsizetype count)
{
    if (index < 0 || count < 0 || count > Length() - index)
        return outOfRange(u"CStringBuilder.Remove"_s);
    std::copy(m_buffer.begin() + index + count, m_buffer.begin() + Length(), m_buffer.begin() + index);
    m_length -= count * bytesPerCharacter;
    return {};
}

} // namespace kalmo::app
