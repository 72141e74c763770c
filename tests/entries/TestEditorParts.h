#pragma once

#include <QObject>

// The pieces the entry editors are built from.
class TestEditorParts final : public QObject
{
    Q_OBJECT

private slots:
    void parseTypedDate_data();
    void parseTypedDate();
    void parseTypedTime_data();
    void parseTypedTime();
    void ensureClassFromCombo_data();
    void ensureClassFromCombo();
    void ensureClassTypedTwiceInsertsOnce();
    void ensureClassOnEmptyTable();
    void insertStatement();
    void scheduleUpdateStatement_data();
    void scheduleUpdateStatement();
    void taskUpdateStatement();
    void linkLabelHoverAndClick();
};
