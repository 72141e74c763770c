#include "views/ListGridModel.h"

#include "entries/EntryKinds.h"
#include "entries/TypedDateTime.h"
#include "store/DatabaseConnection.h"

#include <array>

namespace {

struct ColumnLayout
{
    const char* title;
    int widthTwips;
};

const std::array<ColumnLayout, ListGridModel::ColumnCount> Columns = {{
    {"開始日", 1000},
    {"開始時間", 800},
    {"終了日", 1000},
    {"終了時間", 800},
    {"優", 300},
    {"用件", 2700},
    {"分類", 950},
}};

// A stored date as the user types it; a stored text that is no date is shown as it is,
// so a damaged row stands out instead of looking like a task.
QString DateCell(const QString& stored)
{
    if (stored.isEmpty())
        return QString();
    const QDate date = StoredDateToDate(stored);
    return date.isValid() ? DateBoxText(date) : stored;
}

QHash<qint64, QString> NameMap(DatabaseConnection& db, const QString& sql, const QString& keyColumn,
                               const QString& nameColumn)
{
    QHash<qint64, QString> names;
    for (const Row& row : db.ReadRows(sql)) {
        const qint64 key = row.number(keyColumn);
        // The first row of a key wins, as a look-up of that key alone would answer.
        if (!names.contains(key))
            names.insert(key, row.text(nameColumn));
    }
    return names;
}

} // namespace

void ListGridModel::fill(DatabaseConnection& db, const QString& entrySql)
{
    Rows entries = db.ReadRows(entrySql);
    QHash<qint64, QString> priorities =
        NameMap(db, QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1"),
                QStringLiteral("DATAN1"), QStringLiteral("DATAS1"));
    QHash<qint64, QString> classes = NameMap(db, QStringLiteral("SELECT * FROM MSTCLASS ORDER BY ID"),
                                             QStringLiteral("ID"), QStringLiteral("CLASS"));
    beginResetModel();
    m_entries.swap(entries);
    m_priorityNames.swap(priorities);
    m_classNames.swap(classes);
    endResetModel();
}

qint64 ListGridModel::idAt(int row) const
{
    if (row < 0 || row >= rowCount())
        return 0;
    return m_entries[static_cast<size_t>(row)].number(QStringLiteral("ID"));
}

bool ListGridModel::isTask(int row) const
{
    if (row < 0 || row >= rowCount())
        return false;
    return m_entries[static_cast<size_t>(row)].text(QStringLiteral("DATA")) == QLatin1String("2");
}

QString ListGridModel::cellText(int row, int column) const
{
    if (row < 0 || row >= rowCount())
        return QString();
    const Row& entry = m_entries[static_cast<size_t>(row)];
    switch (column) {
    case StartDate:
        return DateCell(entry.text(QStringLiteral("STARTDT")));
    case StartTime:
        return entry.text(QStringLiteral("STARTTM"));
    case EndDate:
        return DateCell(entry.text(QStringLiteral("ENDDT")));
    case EndTime:
        return entry.text(QStringLiteral("ENDTM"));
    case Priority:
        return isTask(row) ? m_priorityNames.value(entry.number(QStringLiteral("PRIORITY"))) : QString();
    case Subject:
        return entry.text(QStringLiteral("BUSINESS"));
    case Class:
        return m_classNames.value(entry.number(QStringLiteral("CLASS")));
    default:
        return QString();
    }
}

int ListGridModel::rowOfId(qint64 id) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (idAt(row) == id)
            return row;
    }
    return -1;
}

int ListGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int ListGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ListGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return cellText(index.row(), index.column());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    case IdRole:
        return idAt(index.row());
    default:
        return QVariant();
    }
}

QVariant ListGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return columnTitle(section);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    return QVariant();
}

QString ListGridModel::columnTitle(int column)
{
    return column >= 0 && column < ColumnCount ? QString::fromUtf8(Columns[static_cast<size_t>(column)].title)
                                               : QString();
}

int ListGridModel::columnWidthTwips(int column)
{
    return column >= 0 && column < ColumnCount ? Columns[static_cast<size_t>(column)].widthTwips : 0;
}

QString ListGridModel::columnSample(int column)
{
    switch (column) {
    case StartDate:
    case EndDate:
        return QStringLiteral("0000/00/00");
    case StartTime:
    case EndTime:
        return QStringLiteral("00:00");
    default:
        return QString();
    }
}
