#include "obex/PhonePath.h"

#include "obex/FolderListing.h"
#include "obex/ObexFrames.h"

namespace kalmo::obex {

using namespace Qt::StringLiterals;

PhonePath::PhonePath(const QString& text)
{
    const QString path = QString(text).replace(u'/', u'\\');
    m_parts = withoutRoot(path + u'\\').split(u'\\', Qt::SkipEmptyParts);
}

PhonePath PhonePath::folder() const
{
    PhonePath parent;
    parent.m_parts = m_parts.mid(0, m_parts.size() - 1);
    return parent;
}

PhonePath PhonePath::below(const QString& name) const
{
    PhonePath child = *this;
    child.m_parts.append(name);
    return child;
}

QString PhonePath::shown() const
{
    return u'/' + m_parts.join(u'/');
}

QString PhonePath::forEngine() const
{
    return rootPath() + m_parts.join(u'\\');
}

bool PhonePath::canBeMade() const
{
    return fitsNameBytes(shown());
}

bool PhonePath::isTelecom() const
{
    QStringList way;
    for (const QString& part : m_parts) {
        if (part == u".."_s && !way.isEmpty())
            way.removeLast();
        else if (part != u"."_s && part != u".."_s)
            way.append(part);
    }
    return !way.isEmpty() && way.first().compare(u"telecom"_s, Qt::CaseInsensitive) == 0;
}

bool PhonePath::isSamePlace(const PhonePath& other) const
{
    return shown().compare(other.shown(), Qt::CaseInsensitive) == 0;
}

QString nameAsSent(QString name)
{
    return name.remove(u',').remove(u';');
}

bool endsInSlash(const QString& text)
{
    return text.endsWith(u'/') || text.endsWith(u'\\');
}

} // namespace kalmo::obex
