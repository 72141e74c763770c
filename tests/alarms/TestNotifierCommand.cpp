// The notifier's command line, as the calendar writes it and as the notifier reads it.
#include "NotifyCommandLine.h"
#include "alarms/Notifier.h"
#include "support/TestKit.h"

#include <QtTest>

class TestNotifierCommand final : public QObject
{
    Q_OBJECT

private slots:
    void oneLineForm_data();
    void oneLineForm();
    void valuesReachTheNotifierIntact_data();
    void valuesReachTheNotifierIntact();
};

void TestNotifierCommand::oneLineForm_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("sound");
    QTest::addColumn<QString>("soundFile");
    QTest::addColumn<QString>("line");

    // clang-format off
    QTest::newRow("with sound")          << "3F" << true  << "/x/a.wav" << "/opt/v/BalloonNotify /t 会議 /c 3F /i i /a /x/a.wav";
    QTest::newRow("sound on, no file")   << "3F" << true  << ""         << "/opt/v/BalloonNotify /t 会議 /c 3F /i i ";
    // clang-format on
}

void TestNotifierCommand::oneLineForm()
{
    QFETCH(QString, text);
    QFETCH(bool, sound);
    QFETCH(QString, soundFile);
    QFETCH(QString, line);
    QCOMPARE(NotifierCommandLine(QStringLiteral("/opt/v/"), QStringLiteral("会議"), text, sound, soundFile), line);
}

void TestNotifierCommand::valuesReachTheNotifierIntact_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("soundFile");

    // clang-format off
    QTest::newRow("blanks kept as typed")  << "  週次  定例 " << "a  b" << "/home/u/my sounds/bell.wav";
    QTest::newRow("switch words inside")   << "会議 /c 3F /i x" << "see /a and /t" << "";
    QTest::newRow("a title that is a switch") << "/a" << "/c" << "/t.wav";
    QTest::newRow("empty comment")         << "締切" << "" << "/x/a.wav";
    QTest::newRow("several lines")         << "会議" << "第二会議室\n資料を持参" << "";
    // clang-format on
}

void TestNotifierCommand::valuesReachTheNotifierIntact()
{
    QFETCH(QString, title);
    QFETCH(QString, text);
    QFETCH(QString, soundFile);
    const NotifyCommand read = ParseNotifyCommandLine(NotifierArguments(title, text, true, soundFile));
    QVERIFY2(read.valid, qPrintable(read.error));
    QCOMPARE(read.title, title);
    QCOMPARE(read.text, text);
    QCOMPARE(read.icon, QStringLiteral("i"));
    QCOMPARE(read.sound, soundFile);
}

VERDALY_TEST(TestNotifierCommand)

#include "TestNotifierCommand.moc"
