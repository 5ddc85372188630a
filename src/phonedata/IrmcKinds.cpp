#include "phonedata/IrmcKinds.h"

#include <array>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

const IrmcKindInfo& irmcKindInfo(qint32 kind)
{
    static const std::array<IrmcKindInfo, 5> table = {{
        {u"pb.vcf"_s, {}, u".vcf"_s, u"Adressbuch"_s},
        {u"cal.vcs"_s, u"cal"_s, u".vcs"_s, u"Organizer"_s},
        {u"cal.vcs"_s, u"cal"_s, u".vcs"_s, u"Organizer"_s},
        {u"nt.vnt"_s, u"nt"_s, u".vnt"_s, u"Organizer"_s},
        {},
    }};
    return table[kind >= KindContact && kind <= KindNote ? kind : table.size() - 1];
}

} // namespace kalmo::phonedata
