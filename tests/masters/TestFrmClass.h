#pragma once

#include <QObject>

class TestFrmClass final : public QObject
{
    Q_OBJECT

private slots:
    void loadsInSortOrder();
    void captions();
    void newClassId_data();
    void newClassId();
    void newClassCancelledWritesNothing();
    void okRenumbersAndRewritesEveryLine();
    void rename_data();
    void rename();
    void move_data();
    void move();
    void deleteUnused();
    void deleteAnsweredCancel();
    void deleteInUseRefused_data();
    void deleteInUseRefused();
    void nothingSelectedChangesNothing_data();
    void nothingSelectedChangesNothing();
    void closingWithoutOkUndoesEverything_data();
    void closingWithoutOkUndoesEverything();
    void destroyedOpenRollsBack();
    void insideOuterTransaction_data();
    void insideOuterTransaction();
    void databaseFailureKeepsDialogOpen();
    void loadFailureLeavesOnlyCancel();
};
