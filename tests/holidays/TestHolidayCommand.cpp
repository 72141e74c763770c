#include "support/TestKit.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// `verdaly holidays FROM [TO]`, run as the real program with no display and a home folder of
// its own: its output, its refusals, and that it leaves the home folder as it found it.
class TestHolidayCommand final : public QObject
{
    Q_OBJECT

private slots:
    void output_data();
    void output();
};

void TestHolidayCommand::output_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    // clang-format off
    // The government's published list of 1955 to 2027 holds 1067 days.
    QTest::newRow("published years") << QStringList{"1955", "2027"} << 0 << 1067 << "1955-01-01\t元日" << "2027-11-23\t勤労感謝の日";
    QTest::newRow("one year") << QStringList{"2019"} << 0 << 22 << "2019-01-01\t元日" << "2019-11-23\t勤労感謝の日";
    QTest::newRow("same year twice") << QStringList{"1973", "1973"} << 0 << 14 << "1973-01-01\t元日" << "1973-11-23\t勤労感謝の日";
    QTest::newRow("first year") << QStringList{"1948"} << 0 << 3 << "1948-09-23\t秋分の日" << "1948-11-23\t勤労感謝の日";
    QTest::newRow("no years") << QStringList{} << 2 << 0 << "" << "";
    QTest::newRow("three years") << QStringList{"2020", "2021", "2022"} << 2 << 0 << "" << "";
    QTest::newRow("not a number") << QStringList{"twenty"} << 2 << 0 << "" << "";
    QTest::newRow("not digits") << QStringList{"20x6"} << 2 << 0 << "" << "";
    QTest::newRow("before the law") << QStringList{"1947", "1950"} << 2 << 0 << "" << "";
    QTest::newRow("past the last year") << QStringList{"2026", "2200"} << 2 << 0 << "" << "";
    QTest::newRow("backwards") << QStringList{"2030", "2020"} << 2 << 0 << "" << "";
    // clang-format on
}

void TestHolidayCommand::output()
{
    QFETCH(QStringList, words);
    QFETCH(int, code);
    QFETCH(int, lines);
    QFETCH(QString, first);
    QFETCH(QString, last);
    QTemporaryDir home;
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath(QStringLiteral("verdaly")),
                  QStringList{QStringLiteral("holidays")} + words);
    QVERIFY(process.waitForFinished(10000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), code);
    const QStringList out = QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    const QString error = QString::fromUtf8(process.readAllStandardError());
    QCOMPARE(out.size(), lines);
    QCOMPARE(QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList());
    if (code != 0) {
        QVERIFY2(error.contains(QLatin1String("verdaly holidays")), qPrintable(error));
        return;
    }
    QVERIFY(error.isEmpty());
    QCOMPARE(out.first(), first);
    QCOMPARE(out.last(), last);
    QStringList sorted = out;
    sorted.sort();
    QCOMPARE(sorted, out);
}

VERDALY_TEST(TestHolidayCommand)
#include "TestHolidayCommand.moc"
