#pragma once

#include <QObject>

class TestEntryKinds final : public QObject
{
    Q_OBJECT

private slots:
    void kindCode_data();
    void kindCode();
    void storedDateToDate_data();
    void storedDateToDate();
    void dateToStored();
    void entryLineText_data();
    void entryLineText();
    void entryLineTextFromRow();
    void queryTexts();
    void dayQueryText();
    void dayOffQueryText();
    void markDates_data();
    void markDates();
    void markDatesOfCorruptSpanAreBounded();
    void dayOffDate_data();
    void dayOffDate();
    void panelSubject();
    void monthQueryFindsRows();
    void dayQueryOrdersTasksFirst();
};
