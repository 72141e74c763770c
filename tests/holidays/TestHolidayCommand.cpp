#include "cli/HolidaysCommand.h"
#include "support/TestKit.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>
#include <memory>

// `verdaly holidays FROM [TO]`: its output, its refusals, and that it runs bare.
class TestHolidayCommand final : public QObject
{
    Q_OBJECT

private slots:
    void output_data();
    void output();
    void runsWithoutDisplayOrDataFolder();
};

namespace {

struct Run
{
    int code = -1;
    QStringList lines;
    QString error;
};

QString ReadAll(std::FILE* file)
{
    std::rewind(file);
    QByteArray bytes;
    char buffer[65536];
    size_t n = 0;
    while ((n = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        bytes.append(buffer, static_cast<qsizetype>(n));
    return QString::fromUtf8(bytes);
}

Run RunCommand(const QStringList& words)
{
    QList<QByteArray> storage{"verdaly", "holidays"};
    for (const QString& word : words)
        storage << word.toUtf8();
    std::vector<char*> argv;
    for (QByteArray& word : storage)
        argv.push_back(word.data());
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> out(std::tmpfile(), &std::fclose);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> err(std::tmpfile(), &std::fclose);
    Run run;
    run.code = RunHolidaysCommand(static_cast<int>(argv.size()), argv.data(), out.get(), err.get());
    run.lines = ReadAll(out.get()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    run.error = ReadAll(err.get());
    return run;
}

} // namespace

void TestHolidayCommand::output_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    // clang-format off
    // The published list of 1955 to 2027 holds 1067 days.
    QTest::newRow("published years") << QStringList{"1955", "2027"} << 0 << 1067 << "1955-01-01\t元日" << "2027-11-23\t勤労感謝の日";
    QTest::newRow("one year") << QStringList{"2019"} << 0 << 22 << "2019-01-01\t元日" << "2019-11-23\t勤労感謝の日";
    QTest::newRow("same year twice") << QStringList{"1973", "1973"} << 0 << 14 << "1973-01-01\t元日" << "1973-11-23\t勤労感謝の日";
    QTest::newRow("first year") << QStringList{"1948"} << 0 << 3 << "1948-09-23\t秋分の日" << "1948-11-23\t勤労感謝の日";
    QTest::newRow("no years") << QStringList{} << 2 << 0 << "" << "";
    QTest::newRow("three years") << QStringList{"2020", "2021", "2022"} << 2 << 0 << "" << "";
    QTest::newRow("not a number") << QStringList{"twenty"} << 2 << 0 << "" << "";
    QTest::newRow("negative") << QStringList{"-2020"} << 2 << 0 << "" << "";
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
    const Run run = RunCommand(words);
    QCOMPARE(run.code, code);
    QCOMPARE(run.lines.size(), lines);
    if (code != 0) {
        QVERIFY2(run.error.startsWith(QLatin1String("usage:")) || run.error.startsWith(QLatin1String("verdaly")),
                 qPrintable(run.error));
        return;
    }
    QVERIFY(run.error.isEmpty());
    QCOMPARE(run.lines.first(), first);
    QCOMPARE(run.lines.last(), last);
    QStringList sorted = run.lines;
    sorted.sort();
    QCOMPARE(sorted, run.lines);
}

void TestHolidayCommand::runsWithoutDisplayOrDataFolder()
{
    // The real command, with no display and a home folder of its own: it prints the year and
    // leaves the home folder as empty as it found it.
    QTemporaryDir home;
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath(QStringLiteral("verdaly")),
                  {QStringLiteral("holidays"), QStringLiteral("2026")});
    QVERIFY(process.waitForFinished(10000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    const QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 18);
    QVERIFY(lines.contains(QStringLiteral("2026-09-22\t国民の休日")));
    QVERIFY(lines.contains(QStringLiteral("2026-05-06\t振替休日")));
    QCOMPARE(QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList());
}

VERDALY_TEST(TestHolidayCommand)
#include "TestHolidayCommand.moc"
