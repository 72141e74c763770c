#include "holidays/JapaneseHolidays.h"
#include "support/TestKit.h"

#include <QtTest>

// Each rule of the holiday law at its edges. The expected days and names are written from
// the law and the government's published list, never taken from the engine. A day added or
// lost between 1955 and 2027 also shows in TestHolidayCommand's count of those years.
class TestHolidayRules final : public QObject
{
    Q_OBJECT

private slots:
    void dayOf_data();
    void dayOf();
    void yearsOutsideTheLawHaveNone();
    void betweenCrossesTheYear();
};

void TestHolidayRules::dayOf_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("name"); // empty: an ordinary day
    const auto row = [](const char* what, const char* iso, const char* name) {
        QTest::newRow(what) << QDate::fromString(QLatin1String(iso), Qt::ISODate) << QString::fromUtf8(name);
    };
    // clang-format off
    row("before the act came into force", "1948-05-05", "");
    row("first culture day under the act", "1948-11-03", "文化の日");
    row("coming-of-age day on the 15th", "1999-01-15", "成人の日");
    row("coming-of-age day moves to a Monday", "2000-01-10", "成人の日");
    row("the 15th no more", "2000-01-15", "");
    row("first foundation day", "1967-02-11", "建国記念の日");
    row("sports day moves to a Monday", "2000-10-09", "体育の日");
    row("sports day renamed", "2022-10-10", "スポーツの日");
    row("sports day still named as before in 2019", "2019-10-14", "体育の日");
    row("Showa emperor's birthday", "1988-04-29", "天皇誕生日");
    row("greenery day on 29 April", "1989-04-29", "みどりの日");
    row("Showa day", "2007-04-29", "昭和の日");
    row("greenery day on 4 May", "2007-05-04", "みどりの日");
    row("no Heisei birthday before the era", "1988-12-23", "");
    row("Heisei emperor's birthday", "1989-12-23", "天皇誕生日");
    row("no emperor's birthday in 2019 (February)", "2019-02-23", "");
    row("no emperor's birthday in 2019 (December)", "2019-12-23", "");
    row("Reiwa emperor's birthday", "2020-02-23", "天皇誕生日");
    row("first marine day", "1996-07-20", "海の日");
    row("marine day moves to a Monday", "2003-07-21", "海の日");
    row("respect-for-the-aged day moves to a Monday", "2004-09-20", "敬老の日");
    row("first mountain day", "2016-08-11", "山の日");
    // Substitute holidays: none for a Sunday holiday before 1973-04-12 (1972 has no Sunday
    // holiday at all), the next day from then on.
    row("Sunday holiday before the substitute rule", "1973-02-12", "");
    row("first substitute holiday", "1973-04-30", "振替休日");
    row("substitute holiday of 1974", "1974-09-16", "振替休日");
    row("old rule: 3 May on Sunday gives 4 May", "1998-05-04", "振替休日");
    row("old rule: no second day", "1998-05-06", "");
    row("2007 rule: Sunday 4 May passes the 5th", "2008-05-06", "振替休日");
    row("2007 rule: Sunday 3 May passes two holidays", "2009-05-06", "振替休日");
    // Citizens' holidays: from 1985-12-27, not on a Sunday until 2006.
    row("4 May on a Sunday in 1986", "1986-05-04", "");
    row("4 May on a Monday in 1987 is a substitute", "1987-05-04", "振替休日");
    row("first citizens' holiday", "1988-05-04", "国民の休日");
    row("last 4 May of the old rule", "2006-05-04", "国民の休日");
    row("citizens' holiday in September 2009", "2009-09-22", "国民の休日");
    row("citizens' holiday in September 2026", "2026-09-22", "国民の休日");
    // The days of imperial ceremonies (those of 1959, 1989 and 1993 count in the command's
    // published-years total).
    row("1990 enthronement ceremony", "1990-11-12", "即位礼正殿の儀");
    row("2019 before the accession", "2019-04-30", "国民の休日");
    row("2019 accession", "2019-05-01", "天皇の即位の日");
    row("2019 after the accession", "2019-05-02", "国民の休日");
    row("2019 children's day on Sunday", "2019-05-06", "振替休日");
    row("2019 enthronement ceremony", "2019-10-22", "即位礼正殿の儀");
    // The Olympic Games.
    row("2020 marine day", "2020-07-23", "海の日");
    row("2020 sports day", "2020-07-24", "スポーツの日");
    row("2020 mountain day", "2020-08-10", "山の日");
    row("2020 no Monday marine day", "2020-07-20", "");
    row("2020 no 11 August", "2020-08-11", "");
    row("2020 no October sports day", "2020-10-12", "");
    row("2021 marine day", "2021-07-22", "海の日");
    row("2021 sports day", "2021-07-23", "スポーツの日");
    row("2021 mountain day on Sunday", "2021-08-08", "山の日");
    row("2021 its substitute", "2021-08-09", "振替休日");
    // The equinox days, before the fitted formulas' range and after 2100 (the published
    // predictions of the equinox for those years).
    row("autumn 1955", "1955-09-24", "秋分の日");
    row("spring 1960", "1960-03-20", "春分の日");
    row("autumn 2012 at 23:49 JST", "2012-09-22", "秋分の日");
    row("spring 2026 at 23:46 JST", "2026-03-20", "春分の日");
    row("spring 2101", "2101-03-21", "春分の日");
    row("autumn 2101", "2101-09-23", "秋分の日");
    // clang-format on
}

void TestHolidayRules::dayOf()
{
    QFETCH(QDate, date);
    QFETCH(QString, name);
    QCOMPARE(JapaneseHolidays::HolidayName(date), name);
}

void TestHolidayRules::yearsOutsideTheLawHaveNone()
{
    QVERIFY(JapaneseHolidays::HolidaysOfYear(1947).empty());
    QVERIFY(JapaneseHolidays::HolidayName(QDate(1947, 11, 3)).isEmpty());
    QVERIFY(JapaneseHolidays::HolidayName(QDate()).isEmpty());
    // 1948 holds only the days after 20 July: the autumn equinox, culture and labour days.
    QCOMPARE(JapaneseHolidays::HolidaysOfYear(1948).size(), size_t(3));
}

void TestHolidayRules::betweenCrossesTheYear()
{
    // A grid from 2025-12-28 to 2026-01-13 holds New Year's Day and coming-of-age day.
    const auto days = JapaneseHolidays::HolidaysBetween(QDate(2025, 12, 28), QDate(2026, 1, 13));
    QCOMPARE(days.size(), size_t(2));
    QCOMPARE(days.front().date, QDate(2026, 1, 1));
    QCOMPARE(days.back().date, QDate(2026, 1, 12));
    QCOMPARE(days.back().name, QStringLiteral("成人の日"));
    QVERIFY(JapaneseHolidays::HolidaysBetween(QDate(2026, 1, 13), QDate(2026, 1, 1)).empty());
}

VERDALY_TEST(TestHolidayRules)
#include "TestHolidayRules.moc"
