#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace kalmo::app {

/// A growable text buffer for long texts that are put together piece by piece, two bytes for a character. The
/// capacity grows in steps: by a share of itself, or with `SizingMethod` 0 by a fixed number of bytes.
/// All that is not needed for appending is part of the described interface.
class clsStringBuilder
{
public:
    /// Why an operation was refused, in the words of the log.
    struct Error
    {
        QString text;
        QString source;
        bool operator==(const Error&) const = default;
    };
    using Outcome = std::optional<Error>; ///< nothing for success

    /// Step in bytes by which the capacity grows.
    qsizetype BufferBump() const;
    /// Used only with `SizingMethod` 0, and only above 0. An odd number is raised by 1.
    void setBufferBump(qsizetype bytes);

    /// Bytes that fit without growing.
    qsizetype Capacity() const { return m_capacity; }
    /// Rounds up to a whole multiple of the step. A longer text is cut.
    void setCapacity(qsizetype bytes);
    void EnsureCapacity(qsizetype characters);

    int SizingMethod() const { return m_sizingMethod; }
    void setSizingMethod(int method) { m_sizingMethod = method; }
    int SizingPercent() const { return m_sizingPercent; }
    void setSizingPercent(int percent) { m_sizingPercent = percent; }

    /// Characters of the text. Setting more appends zeros; a negative number is ignored.
    qsizetype Length() const { return m_length / bytesPerCharacter; }
    void setLength(qsizetype characters);

    /// One character, counted from 0.
    Outcome Chars(qsizetype index, QChar& character) const;
    Outcome setChars(qsizetype index, QChar character);

    void Append(QStringView text);
    void Append(QChar character)
    {
        if (m_length == m_capacity)
            EnsureCapacity(Length() + 1);
        m_buffer[static_cast<size_t>(Length())] = character;
        m_length += bytesPerCharacter;
    }
    Outcome Insert(qsizetype index, QStringView text);
    Outcome Remove(qsizetype index, qsizetype count);

    QString ToString() const { return QString(m_buffer.data(), Length()); }

private:
    static constexpr qsizetype bytesPerCharacter = 2;
    static constexpr qsizetype firstCapacity = 8192; // bytes

    qsizetype m_capacity = firstCapacity;
    qsizetype m_length = 0; // bytes
    int m_sizingMethod = 1;
    int m_sizingPercent = 25;
    qsizetype m_bufferBump = 2048; // bytes
    std::vector<QChar> m_buffer = std::vector<QChar>(firstCapacity / bytesPerCharacter);
};

} // namespace kalmo::app
