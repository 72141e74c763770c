#pragma once

#include <QObject>

class TestTaskEditor final : public QObject
{
    Q_OBJECT

private slots:
    void loadForNewTask();
    void loadForChange();
    void vanishedRowClosesSilently();
    void checkBoxesEnableTheirControls();
    void validation_data();
    void validation();
    void insertWritesEveryColumn();
    void noDeadlineKeepsTheDate();
    void completionDate_data();
    void completionDate();
    void updateTouchesOnlyItsColumns();
    void rowChangedMeanwhileIsLeftAlone();
    void typedClassStandsOnItsOwn();
    void databaseFailureKeepsTheDialog();
    void focusNormalisation();
    void datePickerLinks();
    void stickyNoteHandOver();
    void priorityLinkRefills();
};
