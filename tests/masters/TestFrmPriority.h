#pragma once

#include <QObject>

class TestFrmPriority final : public QObject
{
    Q_OBJECT

private slots:
    void loadsInNumberOrder();
    void renameThenOk_data();
    void renameThenOk();
    void okWithoutRenameRewritesEveryRow();
    void closingWithoutOkDiscardsRenames_data();
    void closingWithoutOkDiscardsRenames();
    void editorCancelKeepsName();
    void doubleClickEdits();
    void nothingSelectedChangesNothing();
    void insideOuterTransaction_data();
    void insideOuterTransaction();
    void databaseFailureKeepsDialogOpen();
};
