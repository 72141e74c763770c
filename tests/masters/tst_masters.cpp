#include "TestFrmClass.h"
#include "TestFrmEdit.h"
#include "TestFrmPriority.h"

#include <QApplication>
#include <QtTest>

// The master-data dialogs' tests: one test class per dialog in one executable.
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    int failures = 0;
    {
        TestFrmEdit edit;
        failures += QTest::qExec(&edit, argc, argv);
    }
    {
        TestFrmClass classes;
        failures += QTest::qExec(&classes, argc, argv);
    }
    {
        TestFrmPriority priorities;
        failures += QTest::qExec(&priorities, argc, argv);
    }
    return failures;
}
