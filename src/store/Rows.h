#pragma once

#include <QHash>
#include <QString>
#include <QVariant>
#include <QVector>

#include <memory>
#include <vector>

// One row of a fully read result, addressed by column name. Rows of one result share
// their column index, so a row costs little more than its values.
class Row final
{
public:
    using ColumnIndex = QHash<QString, int>;

    Row(std::shared_ptr<const ColumnIndex> columns, QVector<QVariant> values)
        : m_columns(std::move(columns)), m_values(std::move(values))
    {}

    bool has(const QString& column) const { return m_columns->contains(column.toUpper()); }
    QVariant value(const QString& column) const;
    bool isNull(const QString& column) const { return value(column).isNull(); }
    // Text of the column; NULL reads as the empty text.
    QString text(const QString& column) const { return value(column).toString(); }
    // Whole number of the column; NULL and non-numbers read as 0.
    qint64 number(const QString& column) const;
    double real(const QString& column) const { return value(column).toDouble(); }

private:
    std::shared_ptr<const ColumnIndex> m_columns;
    QVector<QVariant> m_values;
};

using Rows = std::vector<Row>;
