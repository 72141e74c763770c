#include "notes/NotesLog.h"

Q_LOGGING_CATEGORY(lcNotes, "verdaly.notes")
