#pragma once

#include <QByteArray>

namespace kalmo::fuzz {

/// The targets of the fuzzers, one function for each kind of input, in the file of its name. Each ends the
/// process if a result is wrong.
void responseFrames(const QByteArray& bytes);
void folderListing(const QByteArray& bytes);
void vcardText(const QByteArray& bytes);
void atAnswers(const QByteArray& bytes);
void luidAnswers(const QByteArray& bytes);
void melody(const QByteArray& bytes);
void codedSound(const QByteArray& bytes);
void importedText(const QByteArray& bytes);
void cardFiles(const QByteArray& bytes);
void wabFiles(const QByteArray& bytes);

/// Ends the process unless `holds`, in every kind of build.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace kalmo::fuzz
