#pragma once

#include <QString>

namespace AppInfo {
inline QString productTitle() { return QStringLiteral("Halvern Verdaly"); }
inline QString versionText() { return QStringLiteral("1.2"); }
inline QString trayTip() { return productTitle() + QLatin1Char(' ') + versionText(); }
inline QString databaseFileName() { return QStringLiteral("QMCalendar.mdb"); }
inline QString iniFileName() { return QStringLiteral("dayvane.ini"); }
inline QString lockFileName() { return QStringLiteral("verdaly.lock"); }
} // namespace AppInfo
