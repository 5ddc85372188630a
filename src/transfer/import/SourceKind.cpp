#include "transfer/import/SourceKind.h"

#include "transfer/import/VcardFile.h"
#include "transfer/import/WabFile.h"

#include <QFile>
#include <QFileInfo>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

SourceKind sourceKindOf(const QString& path)
{
    constexpr qint64 headSize = 1024; // more than both formats need to be recognised
    const QFileInfo info(path);
    const QString ending = info.suffix().toLower();
    if (info.isDir() || ending == u"wab"_s || ending == u"vcf"_s)
        return SourceKind::AddressBook;
    QFile file(path);
    const QByteArray head =
        info.isFile() && file.open(QIODevice::ReadOnly) ? file.read(headSize) : QByteArray();
    return isWabFile(head) || isVcardFile(head) ? SourceKind::AddressBook : SourceKind::Text;
}

} // namespace kalmo::transfer
