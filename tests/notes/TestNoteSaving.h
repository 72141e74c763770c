#pragma once

#include <QObject>

class TestNoteSaving final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void textStoredIntact_data();
    void textStoredIntact();
    void exitMarksOpenRowsOnly();
    void closedNoteKeepsItsPlace();
    void autosaveWaitsForDialogTransaction();
    void nothingWrittenAfterRestore();
    void exitDuringDialogStillSavesNotes();
};
