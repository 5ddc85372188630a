#pragma once

#include <QString>

namespace kalmo::app {

using namespace Qt::StringLiterals;

/// The product word of titles and texts.
inline QString productName()
{
    return u"Kalmo"_s;
}
/// "1.9.8": the version of the project in CMakeLists.txt.
QString programVersion();
inline QString versionDate()
{
    return u"17.09.2026"_s;
}

/// Host of the program's own web pages.
inline QString webSite()
{
    return u"www.kalmo.example"_s;
}

} // namespace kalmo::app
