#pragma once

#include <QObject>

class FileTransfers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void downloads();
    void aBrokenLineHasOneBox();
    void aBrokenUploadHasOneBox();
    void aWishToStopHasNone();
    void receivedBytesAreCounted();
    void oneProgressForSeveralFiles();
    void filesFromTheDesktop();
    void filesToTheDesktop();
    void thumbnails();
    void aReplacedPictureHasItsOwnThumbnail();
    void deletes();
    void uploads();
    void theListingDecidesAboutAnEarlyEnd();
    void anEmptyEntryIsNoWholeFile();
};
