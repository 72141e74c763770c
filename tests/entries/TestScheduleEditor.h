#pragma once

#include <QObject>

class TestScheduleEditor final : public QObject
{
    Q_OBJECT

private slots:
    void loadForNewSchedule();
    void loadForChange();
    void vanishedRowClosesSilently();
    void validation_data();
    void validation();
    void insertWritesEveryColumn();
    void newIdFollowsTheLargest();
    void updateTouchesOnlyItsColumns();
    void rowChangedMeanwhileIsLeftAlone();
    void typedClassIsPartOfTheSave();
    void typedExistingClassIsNotInsertedAgain();
    void databaseFailureKeepsTheDialog();
    void cancelWritesNothing();
    void focusNormalisation_data();
    void focusNormalisation();
    void endDateOffersTheStartDate();
    void datePickerLinks();
    void stickyNoteHandOver_data();
    void stickyNoteHandOver();
    void classLinkRefillsInTableOrder();
};
