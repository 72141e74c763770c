#include "TestEditorParts.h"
#include "TestEntryKinds.h"
#include "TestScheduleEditor.h"
#include "TestTaskEditor.h"

#include <QApplication>
#include <QtTest>

// The entries subsystem's tests: several test classes in one executable.
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = 0;
    {
        TestEntryKinds kinds;
        failures += QTest::qExec(&kinds, argc, argv);
    }
    {
        TestEditorParts parts;
        failures += QTest::qExec(&parts, argc, argv);
    }
    {
        TestScheduleEditor schedule;
        failures += QTest::qExec(&schedule, argc, argv);
    }
    {
        TestTaskEditor task;
        failures += QTest::qExec(&task, argc, argv);
    }
    return failures;
}
