#pragma once

#include "common/AppState.h"

#include <QString>

class DatabaseConnection;

// The sticky-note rows: one per slot 1..30, only ever updated, never inserted.
using StickyNoteSlots = std::array<StickyNoteSlot, StickyNoteSlotCount>;

// The statement that writes slot `index` to its row: text, colour and place while the note
// is open; otherwise an empty, closed row that keeps the slot's last place.
QString StickyNoteRowSql(int index, const StickyNoteSlot& slot, bool open);

// Writes every slot's current state (text, colour, place, open or not) to its row, without
// touching the note windows: what each note shows now, since the notes keep their slots
// current as they change. Alone it is one transaction, so the rows never mix two moments;
// inside a caller's transaction it becomes part of it.
void WriteStickyNotes(DatabaseConnection& db, const StickyNoteSlots& noteSlots);

// The exit's save: closes every open note window (which leaves its last text and place in
// its slot), then writes all 30 rows with the notes that were open marked open.
void SaveStickyNotes(DatabaseConnection& db, StickyNoteSlots& noteSlots);

// Reads each slot's last position, so that a slot that stays closed keeps it at exit, and
// puts each note that was open at the last exit (DATAS3 '1') back in its slot with its
// colour and text, marked open, for ReopenStickyNotes to show. Without this the exit
// would write those notes back as closed and empty.
void LoadStickyNoteSlots(DatabaseConnection& db, StickyNoteSlots& noteSlots);
