#include "notes/StickyNoteStore.h"

#include "store/DatabaseConnection.h"
#include "store/SqlText.h"

void SaveStickyNotes(DatabaseConnection& db, std::array<StickyNoteSlot, StickyNoteSlotCount>& noteSlots)
{
    for (int i = 1; i < StickyNoteSlotCount; ++i) {
        StickyNoteSlot& slot = noteSlots[static_cast<size_t>(i)];
        QString sql = QStringLiteral("UPDATE TRNGENERAL SET ");
        if (slot.inUse) {
            if (slot.window)
                slot.window->close();
            slot.window = nullptr;
            sql += QStringLiteral("DATAS2 = ") + QuoteText(QString::number(slot.colorIndex)) + QLatin1Char(',') +
                   QStringLiteral("DATAS3 = '1',") + QStringLiteral("DATAN2 = ") + QString::number(slot.left) +
                   QLatin1Char(',') + QStringLiteral("DATAN3 = ") + QString::number(slot.top) + QLatin1Char(',') +
                   QStringLiteral("MEMO1 = ") + QuoteText(slot.text) + QLatin1Char(' ');
        } else {
            sql += QStringLiteral("DATAS2 = '',") + QStringLiteral("DATAS3 = '0',") + QStringLiteral("DATAN2 = ") +
                   QString::number(slot.left) + QLatin1Char(',') + QStringLiteral("DATAN3 = ") +
                   QString::number(slot.top) + QLatin1Char(',') + QStringLiteral("MEMO1 = '' ");
        }
        sql += QStringLiteral("WHERE CODE = 501 ") + QStringLiteral("AND   DATAN1 = ") + QString::number(i) +
               QLatin1Char(' ');
        db.ExecuteSql(sql);
    }
}

void LoadStickyNotePositions(DatabaseConnection& db, std::array<StickyNoteSlot, StickyNoteSlotCount>& noteSlots)
{
    const Rows rows = db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 ORDER BY DATAN1"));
    for (const Row& row : rows) {
        const qint64 index = row.number(QStringLiteral("DATAN1"));
        if (index < 1 || index >= StickyNoteSlotCount)
            continue;
        StickyNoteSlot& slot = noteSlots[static_cast<size_t>(index)];
        slot.left = static_cast<int>(row.number(QStringLiteral("DATAN2")));
        slot.top = static_cast<int>(row.number(QStringLiteral("DATAN3")));
    }
}
