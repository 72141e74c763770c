#include "store/Rows.h"

#include <QtGlobal>

#include <cmath>

QVariant Row::value(const QString& column) const
{
    const auto it = m_columns->constFind(column.toUpper());
    Q_ASSERT_X(it != m_columns->cend(), "Row::value", qPrintable(column));
    if (it == m_columns->cend())
        return {};
    return m_values.at(*it);
}

qint64 Row::number(const QString& column) const
{
    const QVariant v = value(column);
    if (v.isNull())
        return 0;
    bool ok = false;
    const double d = v.toDouble(&ok);
    return ok ? static_cast<qint64>(std::llround(d)) : 0;
}
