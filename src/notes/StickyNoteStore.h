#pragma once

#include "common/AppState.h"

class DatabaseConnection;

// The sticky-note rows (one per slot 1..30) as they are written at exit and read at start.

// Closes every open note window and writes all 30 noteSlots back to their rows.
void SaveStickyNotes(DatabaseConnection& db, std::array<StickyNoteSlot, StickyNoteSlotCount>& noteSlots);

// Reads each slot's last position, so that a slot that stays closed keeps it at exit.
void LoadStickyNotePositions(DatabaseConnection& db, std::array<StickyNoteSlot, StickyNoteSlotCount>& noteSlots);
