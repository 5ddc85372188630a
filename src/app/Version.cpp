#include "app/Version.h"

namespace kalmo::app {

QString programVersion()
{
    return QStringLiteral(KALMO_VERSION);
}

} // namespace kalmo::app
