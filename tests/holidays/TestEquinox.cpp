#include "holidays/JapaneseHolidays.h"
#include "support/TestKit.h"

#include <QtTest>

// The equinox moments against published almanac times.
class TestEquinox final : public QObject
{
    Q_OBJECT

private slots:
    void moment_data();
    void moment();
};

Q_DECLARE_METATYPE(Equinox::Season)

void TestEquinox::moment_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<Equinox::Season>("season");
    QTest::addColumn<QString>("utc"); // as the almanacs give it
    const auto spring = Equinox::Season::Spring;
    const auto autumn = Equinox::Season::Autumn;
    // clang-format off
    QTest::newRow("1912 spring") << 1912 << spring << "1912-03-20T23:29:15";
    QTest::newRow("1920 autumn") << 1920 << autumn << "1920-09-23T08:28:34";
    QTest::newRow("2003 spring") << 2003 << spring << "2003-03-21T01:00:00";
    QTest::newRow("2012 autumn") << 2012 << autumn << "2012-09-22T14:49:00";
    QTest::newRow("2024 spring") << 2024 << spring << "2024-03-20T03:06:21";
    QTest::newRow("2025 autumn") << 2025 << autumn << "2025-09-22T18:19:16";
    QTest::newRow("2026 spring") << 2026 << spring << "2026-03-20T14:45:53";
    QTest::newRow("2033 spring") << 2033 << spring << "2033-03-20T07:22:35";
    // clang-format on
}

void TestEquinox::moment()
{
    QFETCH(int, year);
    QFETCH(Equinox::Season, season);
    QFETCH(QString, utc);
    QDateTime expected = QDateTime::fromString(utc, Qt::ISODate);
    expected.setTimeSpec(Qt::UTC);
    const QDateTime computed = JapaneseHolidays::EquinoxMoment(year, season);
    QVERIFY2(qAbs(computed.secsTo(expected)) <= 90, qPrintable(computed.toString(Qt::ISODate)));
}

VERDALY_TEST(TestEquinox)
#include "TestEquinox.moc"
