#include "TestEntryKinds.h"

#include <QApplication>
#include <QtTest>

// The entries subsystem's tests: several test classes in one executable.
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    int failures = 0;
    {
        TestEntryKinds kinds;
        failures += QTest::qExec(&kinds, argc, argv);
    }
    return failures;
}
