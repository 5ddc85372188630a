#pragma once

#include "cli/Terminal.h"

#include <QJsonValue>
#include <QStringEncoder>

#include <functional>

namespace kalmo::cli {

/// Prints one result on standard output, all else on standard error. Of text for a terminal only the line
/// ends steer it: any other control character shows as "?", since it may come from a phone or a file.
class Output
{
public:
    /// Writes bytes to a stream; 0, or the system's error number.
    using Sink = std::function<int(Stream stream, const QByteArray& bytes)>;

    struct Manner
    {
        bool json = false;        ///< the result is one JSON value
        bool quiet = false;       ///< no notes
        int progressWidth = 0;    ///< columns for a line of progress; 0 shows none
        QByteArray encoding = {}; ///< of the locale; UTF-8 if empty
    };

    Output(Sink sink, const Manner& manner);

    bool isJson() const { return m_manner.json; }

    /// The result: the value as JSON, or the text, whichever the user wants.
    void show(const QJsonValue& value, const QString& text);

    /// Text for standard output, whole lines.
    void print(const QString& text);

    /// Prints complete lines to standard error that the user may do without.
    void note(const QString& text);

    /// Prints an error in one line or several, after the program's name.
    void error(const QString& text);

    /// A question or another piece of a line for standard error.
    void prompt(const QString& text);

    /// Shows a line of progress in place of the one before; an empty one takes it away.
    void progress(const QString& line);

    /// Returns true if the whole result reached standard output. A reader that went away is no failure. Any
    /// other failure has been reported.
    bool isComplete() const { return m_complete; }

private:
    void toOut(const QByteArray& bytes);
    void toErr(const QString& text);
    QByteArray encoded(const QString& text);

    Sink m_sink;
    Manner m_manner;
    QStringEncoder m_encoder;
    qsizetype m_progressLength = 0; // characters of the line of progress that is on screen
    bool m_complete = true;
    bool m_readerGone = false;
};

} // namespace kalmo::cli
