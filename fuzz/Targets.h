#pragma once

#include <QByteArray>

namespace kalmo::fuzz {

/// What is fed with hostile bytes, one function for each kind of source. Each lives in the file of its name,
/// and ends the process where a result is not what it has to be.
void responseFrames(const QByteArray& bytes);
void folderListing(const QByteArray& bytes);
void vcardText(const QByteArray& bytes);
void atAnswers(const QByteArray& bytes);
void luidAnswers(const QByteArray& bytes);
void melody(const QByteArray& bytes);
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
