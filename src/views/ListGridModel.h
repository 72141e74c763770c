#pragma once

#include "store/Rows.h"

#include <QAbstractTableModel>
#include <QHash>

class DatabaseConnection;

// The rows of the list window's grid. The entries are kept as read and their cells made
// only when the view asks for them, so a fill of a hundred thousand entries costs one read
// and no per-cell work; the priority and class names come from one read each per fill.
class ListGridModel final : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column
    {
        StartDate,
        StartTime,
        EndDate,
        EndTime,
        Priority,
        Subject,
        Class,
        ColumnCount
    };
    // Every cell of a row answers the row's entry ID under this role.
    static constexpr int IdRole = Qt::UserRole;

    explicit ListGridModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    // Replaces the rows by the entries entrySql reads. Raises DatabaseError and keeps the
    // rows shown until now when any of the reads fails.
    void fill(DatabaseConnection& db, const QString& entrySql);

    qint64 idAt(int row) const;
    bool isTask(int row) const;
    QString cellText(int row, int column) const;
    // The row of an entry, -1 when it is not listed.
    int rowOfId(qint64 id) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // The column's title and width in twips, as the grid was always laid out.
    static QString columnTitle(int column);
    static int columnWidthTwips(int column);
    // The widest text the column usually holds (dates and times), "" for free text.
    static QString columnSample(int column);

private:
    Rows m_entries;
    QHash<qint64, QString> m_priorityNames;
    QHash<qint64, QString> m_classNames;
};
