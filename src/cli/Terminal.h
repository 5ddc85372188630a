#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace kalmo::cli {

/// The three standard streams, as far as the system knows them.
enum class Stream { In = 0, Out = 1, Err = 2 };

bool isTerminal(Stream stream);

/// Columns of the terminal on standard error, 80 where that is not known.
int terminalWidth();

/// Name of the character encoding that the user's locale asks for.
QByteArray localeEncoding();

/// Writes all of it; 0, or the system's error number.
int writeTo(Stream stream, const QByteArray& bytes);

/// Returns true if an error of writeTo() means that the reader has gone away.
bool isBrokenPipe(int error);

/// One line from standard input without its end; nothing at its end or when a signal came.
std::optional<QString> readLine();

} // namespace kalmo::cli
