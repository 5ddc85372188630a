// Feeds each target with its corpus, and with every beginning of each file: what fuzzers have found stays
// found, without a fuzzer.

#include "fuzz/Targets.h"

#include <QDir>

#include <cstdio>

using namespace kalmo;

namespace {

struct NamedTarget
{
    const char* name;
    void (*run)(const QByteArray& bytes);
};

constexpr NamedTarget targets[] = {
    {"responseFrames", fuzz::responseFrames}, {"folderListing", fuzz::folderListing},
    {"vcardText", fuzz::vcardText},           {"atAnswers", fuzz::atAnswers},
    {"luidAnswers", fuzz::luidAnswers},       {"melody", fuzz::melody},
    {"codedSound", fuzz::codedSound},         {"importedText", fuzz::importedText},
    {"cardFiles", fuzz::cardFiles},           {"wabFiles", fuzz::wabFiles},
};

} // namespace

int main(int, char** argv)
{
    for (const NamedTarget& target : targets) {
        const QDir folder(QDir(QString::fromLocal8Bit(argv[1])).filePath(QString::fromLatin1(target.name)));
        const QFileInfoList files = folder.entryInfoList(QDir::Files);
        std::printf("%s: %d files\n", target.name, static_cast<int>(files.size()));
        if (files.isEmpty())
            return 1;
        for (const QFileInfo& info : files) {
            QFile file(info.filePath());
            if (!file.open(QIODevice::ReadOnly))
                return 1;
            const QByteArray bytes = file.readAll();
            for (qsizetype size = 0; size <= bytes.size(); ++size)
                target.run(bytes.first(size));
        }
    }
    return 0;
}
