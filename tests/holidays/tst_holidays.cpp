#include "TestEquinox.h"
#include "TestEraTitle.h"
#include "TestHolidayCommand.h"
#include "TestHolidayMarks.h"
#include "TestHolidayRules.h"

#include <QApplication>
#include <QtTest>

// The holidays subsystem's tests: several test classes in one executable.
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = 0;
    {
        TestHolidayRules rules;
        failures += QTest::qExec(&rules, argc, argv);
    }
    {
        TestEquinox equinox;
        failures += QTest::qExec(&equinox, argc, argv);
    }
    {
        TestEraTitle era;
        failures += QTest::qExec(&era, argc, argv);
    }
    {
        TestHolidayMarks marks;
        failures += QTest::qExec(&marks, argc, argv);
    }
    {
        TestHolidayCommand command;
        failures += QTest::qExec(&command, argc, argv);
    }
    return failures;
}
