#include <QApplication>
#include <QtTest>

QObject* MakeTestAlarmEndToEnd();
QObject* MakeTestAlarmTick();
QObject* MakeTestAlarmTimer();
QObject* MakeTestNotifierCommand();
QObject* MakeTestBalloonNotify();

// The alarm subsystem's tests: several test classes in one executable.
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = 0;
    for (auto make : {MakeTestAlarmTick, MakeTestAlarmTimer, MakeTestNotifierCommand, MakeTestBalloonNotify,
                      MakeTestAlarmEndToEnd}) {
        std::unique_ptr<QObject> test(make());
        failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
