#include "calendarcontrol/HalvernCalendar.h"
#include "support/TestKit.h"

#include <QtTest>

// The era title format ("gge年m月") across the changes of era.
class TestEraTitle final : public QObject
{
    Q_OBJECT

private slots:
    void title_data();
    void title();
};

void TestEraTitle::title_data()
{
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QString>("title");
    const auto row = [](const char* what, const char* iso, const char* title) {
        QTest::newRow(what) << QDate::fromString(QLatin1String(iso), Qt::ISODate) << QString::fromUtf8(title);
    };
    // clang-format off
    row("last day of Heisei", "2019-04-30", "平成31年4月");
    row("first day of Reiwa", "2019-05-01", "令和元年5月");
    row("last day of Showa", "1989-01-07", "昭和64年1月");
    row("first day of Heisei", "1989-01-08", "平成元年1月");
    row("rest of Heisei 1", "1989-12-31", "平成元年12月");
    row("Heisei 2", "1990-01-01", "平成2年1月");
    row("first day of Showa", "1926-12-25", "昭和元年12月");
    row("last day of Taisho", "1926-12-24", "大正15年12月");
    row("first day of Taisho", "1912-07-30", "大正元年7月");
    row("solar calendar begins in Meiji 6", "1873-01-01", "明治6年1月");
    row("lunisolar days keep the western year", "1872-12-31", "1872年12月");
    // clang-format on
}

void TestEraTitle::title()
{
    QFETCH(QDate, day);
    QFETCH(QString, title);
    HalvernCalendar calendar;
    calendar.setTitleFormat(QStringLiteral("gge年m月"));
    calendar.setCurrentDate(day);
    QCOMPARE(calendar.titleText(), title);
}

VERDALY_TEST(TestEraTitle)
#include "TestEraTitle.moc"
