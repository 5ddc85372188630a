// Fuzzes answers to AT commands.

#include "fuzz/Targets.h"

#include "app/CodePage.h"
#include "link/PhoneModels.h"
#include "phonedata/AreaCodes.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/ClassicPhonebook.h"
#include "phonedata/IrmcAnswers.h"
#include "phonedata/ProviderList.h"
#include "toolkit/EventLoopClock.h"

namespace kalmo::fuzz {

using namespace phonedata;
using namespace Qt::StringLiterals;

void atAnswers(const QByteArray& bytes)
{
    app::Sy sy;
    toolkit::EventLoopClock clock;
    app::DebugLog log(sy, clock, {});
    const QString text = app::fromCp1252(bytes);
    for (const int phoneType : {1, 4}) {
        const ClassicEntry entry = parsePhonebookReply(bytes, phoneType, {}, log);
        require(entry.number.size() <= text.size());
        for (const ClassicEntry& saved : telEntries(bytes, phoneType))
            require(!saved.name.contains(u'"'));
    }
    lengthsAddUp(bytes, Store::Phonebook);
    lengthsAddUp(bytes, Store::Providers);
    require(parseProviderReply(bytes).number.size() <= text.size());
    require(static_cast<qsizetype>(prvEntries(bytes).size()) <= text.size());
    QString model;
    if (link::ParseWppn(text, model))
        require(QString(text).remove(u"^WPPN:"_s).contains(model)); // it goes wherever it stands
    parseAreaCodes(text);
    parseInfoLog(bytes);
}

} // namespace kalmo::fuzz
