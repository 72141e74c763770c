#include "TestNoteSaving.h"
#include "TestStickyNotes.h"

#include <QApplication>
#include <QtTest>

// The sticky notes' tests: the note window and its slots, and how notes reach their rows.
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    int failures = 0;
    {
        TestStickyNotes notes;
        failures += QTest::qExec(&notes, argc, argv);
    }
    {
        TestNoteSaving saving;
        failures += QTest::qExec(&saving, argc, argv);
    }
    return failures;
}
