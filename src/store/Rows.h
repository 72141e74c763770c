#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>
#include <QVector>

#include <memory>
#include <vector>

// One row of a fully read result, addressed by column name. The values are kept as the
// engine gave them (numbers as numbers, text as its UTF-8 bytes) and turned into Qt values
// only when asked for: the month grid reads three of sixteen columns of a thousand rows.
// Rows of one result share their column index.
class Row final
{
public:
    using ColumnIndex = QHash<QString, int>;

    // Values as stored: builds a row from Qt values (null = NULL).
    Row(std::shared_ptr<const ColumnIndex> columns, const QVector<QVariant>& values);

    // Filled cell by cell by the reader.
    Row(std::shared_ptr<const ColumnIndex> columns, int count);
    void setNull(int column);
    void setInteger(int column, qint64 value);
    void setReal(int column, double value);
    void setText(int column, const char* utf8, int length);
    void setBlob(int column, const char* bytes, int length);
    // Room for the text and blob bytes of the whole row, so filling it allocates once.
    void reserveBytes(int length) { m_bytes.reserve(length); }

    bool has(const QString& column) const { return m_columns->contains(column.toUpper()); }
    QVariant value(const QString& column) const;
    bool isNull(const QString& column) const;
    // Text of the column; NULL reads as the empty text.
    QString text(const QString& column) const;
    // Whole number of the column; NULL and non-numbers read as 0.
    qint64 number(const QString& column) const;
    double real(const QString& column) const;

private:
    enum class Kind : quint8
    {
        Null,
        Integer,
        Real,
        Text,
        Blob,
    };
    struct Cell
    {
        Kind kind = Kind::Null;
        int offset = 0; // text and blob: where the bytes start in m_bytes
        int length = 0;
        union {
            qint64 integer;
            double real;
        } number{};
    };

    const Cell* cell(const QString& column) const;
    QString cellText(const Cell& c) const { return QString::fromUtf8(m_bytes.constData() + c.offset, c.length); }
    void appendBytes(int column, Kind kind, const char* bytes, int length);

    std::shared_ptr<const ColumnIndex> m_columns;
    QVector<Cell> m_cells;
    QByteArray m_bytes;
};

using Rows = std::vector<Row>;
