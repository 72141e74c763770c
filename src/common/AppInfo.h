#pragma once

#include <QString>

namespace AppInfo {
inline QString productTitle()
{
    return QStringLiteral("Halvern Verdaly");
}
inline QString versionText()
{
    return QStringLiteral(VERDALY_VERSION);
}
inline QString trayTip()
{
    return productTitle() + QLatin1Char(' ') + versionText();
}
inline QString databaseFileName()
{
    return QStringLiteral("QMCalendar.mdb");
}
inline QString iniFileName()
{
    return QStringLiteral("dayvane.ini");
}
inline QString lockFileName()
{
    return QStringLiteral("verdaly.lock");
}
// The name the desktop files and the icon are installed under.
inline QString desktopId()
{
    return QStringLiteral(VERDALY_APP_ID);
}
} // namespace AppInfo
