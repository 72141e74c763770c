#include "store/Rows.h"

#include <QtGlobal>

#include <cmath>

Row::Row(std::shared_ptr<const ColumnIndex> columns, int count) : m_columns(std::move(columns)), m_cells(count) {}

Row::Row(std::shared_ptr<const ColumnIndex> columns, const QVector<QVariant>& values)
    : Row(std::move(columns), static_cast<int>(values.size()))
{
    for (int i = 0; i < values.size(); ++i) {
        const QVariant& v = values.at(i);
        if (v.isNull()) {
            setNull(i);
        } else if (v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Float) {
            setReal(i, v.toDouble());
        } else if (v.typeId() == QMetaType::Int || v.typeId() == QMetaType::LongLong || v.typeId() == QMetaType::Bool) {
            setInteger(i, v.toLongLong());
        } else if (v.typeId() == QMetaType::QByteArray) {
            const QByteArray bytes = v.toByteArray();
            setBlob(i, bytes.constData(), static_cast<int>(bytes.size()));
        } else {
            const QByteArray utf8 = v.toString().toUtf8();
            setText(i, utf8.constData(), static_cast<int>(utf8.size()));
        }
    }
}

void Row::setNull(int column)
{
    m_cells[column] = Cell{};
}

void Row::setInteger(int column, qint64 value)
{
    Cell& c = m_cells[column];
    c.kind = Kind::Integer;
    c.number.integer = value;
}

void Row::setReal(int column, double value)
{
    Cell& c = m_cells[column];
    c.kind = Kind::Real;
    c.number.real = value;
}

void Row::appendBytes(int column, Kind kind, const char* bytes, int length)
{
    Cell& c = m_cells[column];
    c.kind = kind;
    c.offset = static_cast<int>(m_bytes.size());
    c.length = length;
    if (length > 0)
        m_bytes.append(bytes, length);
}

void Row::setText(int column, const char* utf8, int length)
{
    appendBytes(column, Kind::Text, utf8, length);
}

void Row::setBlob(int column, const char* bytes, int length)
{
    appendBytes(column, Kind::Blob, bytes, length);
}

const Row::Cell* Row::cell(const QString& column) const
{
    const auto it = m_columns->constFind(column.toUpper());
    Q_ASSERT_X(it != m_columns->cend(), "Row", qPrintable(column));
    if (it == m_columns->cend() || *it < 0 || *it >= m_cells.size())
        return nullptr;
    return &m_cells.at(*it);
}

QVariant Row::value(const QString& column) const
{
    const Cell* c = cell(column);
    if (!c)
        return {};
    switch (c->kind) {
    case Kind::Null:
        return {};
    case Kind::Integer:
        return QVariant(static_cast<qlonglong>(c->number.integer));
    case Kind::Real:
        return QVariant(c->number.real);
    case Kind::Text:
        return QVariant(cellText(*c));
    case Kind::Blob:
        return QVariant(m_bytes.mid(c->offset, c->length));
    }
    return {};
}

bool Row::isNull(const QString& column) const
{
    const Cell* c = cell(column);
    return !c || c->kind == Kind::Null;
}

QString Row::text(const QString& column) const
{
    const Cell* c = cell(column);
    if (c && c->kind == Kind::Text)
        return cellText(*c);
    return value(column).toString();
}

double Row::real(const QString& column) const
{
    const Cell* c = cell(column);
    if (!c)
        return 0.0;
    switch (c->kind) {
    case Kind::Integer:
        return static_cast<double>(c->number.integer);
    case Kind::Real:
        return c->number.real;
    case Kind::Text:
        return cellText(*c).trimmed().toDouble();
    default:
        return 0.0;
    }
}

qint64 Row::number(const QString& column) const
{
    const Cell* c = cell(column);
    if (c && c->kind == Kind::Integer)
        return c->number.integer;
    const double d = real(column);
    return std::isfinite(d) ? static_cast<qint64>(std::llround(d)) : 0;
}
