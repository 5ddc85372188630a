// Fuzzes vCards.

#include "fuzz/Targets.h"

#include "app/CodePage.h"
#include "phonedata/VcfCodec.h"
#include "phonedata/VcfText.h"

namespace kalmo::fuzz {

using namespace phonedata;

void vcardText(const QByteArray& bytes)
{
    const QString text = app::fromCp1252(bytes);
    require(VcfUnesc(VcfEsc(text)).size() <= text.size());
    const VcfCards cards = parseCards(bytes);
    require(std::ssize(cards.cards) <= cards.upperBound + 1);
    for (const auto& [entry, raw] : cards.cards) {
        require(bytes.contains(raw));
        require(vcfEntryFrom(toRow(entry)).luid == entry.luid);
        const QByteArray card = VcfBuildItem(entry, false);
        require(card.count("\r\n") <= 10); // no value adds a line
        if (!card.contains("=\r\n") &&
            app::fitsCp1252(entry.mobile)) // a value that ends in "=" takes the next line for its own
            require(VcfParseItem(app::fromCp1252(card), 1).mobile == entry.mobile);
    }
}

} // namespace kalmo::fuzz
