#include "notes/StickyNoteStore.h"

#include "store/DatabaseConnection.h"
#include "store/DatabaseError.h"
#include "store/SqlText.h"

#include <QWidget>

QString StickyNoteRowSql(int index, const StickyNoteSlot& slot, bool open)
{
    QString sql = QStringLiteral("UPDATE TRNGENERAL SET ");
    if (open) {
        sql += QStringLiteral("DATAS2 = ") + QuoteText(QString::number(slot.colorIndex)) + QLatin1Char(',') +
               QStringLiteral("DATAS3 = '1',") + QStringLiteral("DATAN2 = ") + QString::number(slot.left) +
               QLatin1Char(',') + QStringLiteral("DATAN3 = ") + QString::number(slot.top) + QLatin1Char(',') +
               QStringLiteral("MEMO1 = ") + QuoteText(slot.text) + QLatin1Char(' ');
    } else {
        sql += QStringLiteral("DATAS2 = '',") + QStringLiteral("DATAS3 = '0',") + QStringLiteral("DATAN2 = ") +
               QString::number(slot.left) + QLatin1Char(',') + QStringLiteral("DATAN3 = ") + QString::number(slot.top) +
               QLatin1Char(',') + QStringLiteral("MEMO1 = '' ");
    }
    return sql + QStringLiteral("WHERE CODE = 501 ") + QStringLiteral("AND   DATAN1 = ") + QString::number(index) +
           QLatin1Char(' ');
}

namespace {

void WriteRows(DatabaseConnection& db, const StickyNoteSlots& noteSlots,
               const std::array<bool, StickyNoteSlotCount>& open)
{
    db.BeginTrans();
    try {
        for (int i = 1; i < StickyNoteSlotCount; ++i) {
            const auto at = static_cast<size_t>(i);
            db.ExecuteSql(StickyNoteRowSql(i, noteSlots[at], open[at]));
        }
    } catch (const DatabaseError&) {
        db.RollbackTrans();
        throw;
    }
    db.CommitTrans();
}

} // namespace

void WriteStickyNotes(DatabaseConnection& db, const StickyNoteSlots& noteSlots)
{
    std::array<bool, StickyNoteSlotCount> open{};
    for (size_t i = 1; i < open.size(); ++i)
        open[i] = noteSlots[i].inUse;
    WriteRows(db, noteSlots, open);
}

void SaveStickyNotes(DatabaseConnection& db, StickyNoteSlots& noteSlots)
{
    std::array<bool, StickyNoteSlotCount> open{};
    for (size_t i = 1; i < open.size(); ++i) {
        StickyNoteSlot& slot = noteSlots[i];
        open[i] = slot.inUse;
        if (slot.inUse && slot.window)
            slot.window->close();
        slot.window = nullptr;
    }
    WriteRows(db, noteSlots, open);
}

void LoadStickyNoteSlots(DatabaseConnection& db, StickyNoteSlots& noteSlots)
{
    const Rows rows = db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 ORDER BY DATAN1"));
    for (const Row& row : rows) {
        const qint64 index = row.number(QStringLiteral("DATAN1"));
        if (index < 1 || index >= StickyNoteSlotCount)
            continue;
        StickyNoteSlot& slot = noteSlots[static_cast<size_t>(index)];
        slot.left = static_cast<int>(row.number(QStringLiteral("DATAN2")));
        slot.top = static_cast<int>(row.number(QStringLiteral("DATAN3")));
        if (row.text(QStringLiteral("DATAS3")) == QLatin1String("1") && !slot.window) {
            slot.inUse = true;
            slot.text = row.text(QStringLiteral("MEMO1"));
            slot.colorIndex = row.text(QStringLiteral("DATAS2")).toInt();
        }
    }
}
