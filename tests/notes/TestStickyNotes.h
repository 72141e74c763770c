#pragma once

#include <QObject>

class TestStickyNotes final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void thirtyFirstNoteRefusedAndFreedSlotReused();
    void colourIndexShown_data();
    void colourIndexShown();
    void menuColourEntrySetsSlot_data();
    void menuColourEntrySetsSlot();
    void handOverPlace_data();
    void handOverPlace();
    void dragMovesNoteWithoutSelecting();
    void mainWindowEmptyNote_data();
    void mainWindowEmptyNote();
};
