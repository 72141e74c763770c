#include "common/DateText.h"

QString DateCaption(const QDate& date)
{
    if (!date.isValid())
        return QString();
    // Spelled out rather than taken from the locale, so the caption reads the same on
    // every desktop whatever its language.
    static const QString weekdays[] = {QStringLiteral("月"), QStringLiteral("火"), QStringLiteral("水"),
                                       QStringLiteral("木"), QStringLiteral("金"), QStringLiteral("土"),
                                       QStringLiteral("日")};
    return QStringLiteral("%1/%2/%3 (%4)")
        .arg(date.year())
        .arg(date.month())
        .arg(date.day())
        .arg(weekdays[date.dayOfWeek() - 1]);
}
