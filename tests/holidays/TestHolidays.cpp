// The holidays: the law at its edges, the command that prints them, and how the month grid
// shows them with the era title. The expected days and names are written from the law and
// the government's published list, never taken from the engine; a day added or lost
// between 1955 and 2027 shows in the command's count of those years.
#include "calendarcontrol/HalvernCalendar.h"
#include "holidays/JapaneseHolidays.h"
#include "support/TestKit.h"

#include <QDir>
#include <QHelpEvent>
#include <QImage>
#include <QProcess>
#include <QToolTip>
#include <QtTest>

Q_DECLARE_METATYPE(Equinox::Season)

class TestHolidays final : public QObject
{
    Q_OBJECT

private slots:
    // Every holiday of a span, as "MM-dd name" joined by "|".
    void span_data()
    {
        QTest::addColumn<QDate>("first");
        QTest::addColumn<QDate>("last");
        QTest::addColumn<QString>("holidays");
        const auto row = [](const char* what, const char* first, const char* last, const char* holidays) {
            QTest::newRow(what) << QDate::fromString(QLatin1String(first), Qt::ISODate)
                                << QDate::fromString(QLatin1String(last), Qt::ISODate) << QString::fromUtf8(holidays);
        };
        // clang-format off
        row("the law's first year from 20 July", "1948-01-01", "1948-12-31", "09-23 秋分の日|11-03 文化の日|11-23 勤労感謝の日");
        row("coming-of-age day on the 15th", "1999-01-11", "1999-01-15", "01-15 成人の日");
        row("coming-of-age day moves to a Monday", "2000-01-10", "2000-01-15", "01-10 成人の日");
        row("sports day moves to a Monday", "2000-10-09", "2000-10-10", "10-09 体育の日");
        row("2019: sports day still of the old name", "2019-10-14", "2019-10-22", "10-14 体育の日|10-22 即位礼正殿の儀");
        row("sports day renamed", "2022-10-10", "2022-10-10", "10-10 スポーツの日");
        row("Showa emperor's birthday", "1988-04-29", "1988-04-29", "04-29 天皇誕生日");
        row("greenery day on 29 April", "1989-04-29", "1989-04-29", "04-29 みどりの日");
        row("Showa day, greenery day on 4 May", "2007-04-29", "2007-05-05", "04-29 昭和の日|04-30 振替休日|05-03 憲法記念日|05-04 みどりの日|05-05 こどもの日");
        row("marine day moves to a Monday", "2003-07-20", "2003-07-21", "07-21 海の日");
        row("respect-for-the-aged day moves to a Monday", "2004-09-15", "2004-09-20", "09-20 敬老の日");
        row("2007 rule: a Sunday 3 May passes two holidays", "2009-05-03", "2009-05-06", "05-03 憲法記念日|05-04 みどりの日|05-05 こどもの日|05-06 振替休日");
        // Citizens' holidays from 1985-12-27; a Monday 4 May is a substitute instead.
        row("3 May on a Sunday in 1987", "1987-05-03", "1987-05-05", "05-03 憲法記念日|05-04 振替休日|05-05 こどもの日");
        row("last 4 May of the old rule", "2006-05-04", "2006-05-04", "05-04 国民の休日");
        row("2019 accession", "2019-04-27", "2019-05-06", "04-29 昭和の日|04-30 国民の休日|05-01 天皇の即位の日|05-02 国民の休日|05-03 憲法記念日|05-04 みどりの日|05-05 こどもの日|05-06 振替休日");
        row("2020 Olympic Games", "2020-07-20", "2020-08-11", "07-23 海の日|07-24 スポーツの日|08-10 山の日");
        row("2021 Olympic Games", "2021-07-19", "2021-08-09", "07-22 海の日|07-23 スポーツの日|08-08 山の日|08-09 振替休日");
        // The equinox days before the fitted formulas' range, close to midnight, and after
        // 2100 (the published predictions for those years).
        row("autumn 1955", "1955-09-23", "1955-09-24", "09-24 秋分の日");
        row("spring 1960", "1960-03-20", "1960-03-20", "03-20 春分の日");
        row("autumn 2012 at 23:49 JST", "2012-09-22", "2012-09-22", "09-22 秋分の日");
        row("spring 2101", "2101-03-21", "2101-03-21", "03-21 春分の日");
        row("autumn 2101", "2101-09-23", "2101-09-23", "09-23 秋分の日");
        // clang-format on
    }
    void span()
    {
        QFETCH(QDate, first);
        QFETCH(QDate, last);
        QFETCH(QString, holidays);
        QStringList listed;
        for (const JapaneseHolidays::Holiday& holiday : JapaneseHolidays::HolidaysBetween(first, last))
            listed << holiday.date.toString(QStringLiteral("MM-dd ")) + holiday.name;
        QCOMPARE(listed.join(QLatin1Char('|')), holidays);
        // Each day of the span is named as the list has it.
        QStringList named;
        for (QDate day = first; day <= last; day = day.addDays(1)) {
            if (!JapaneseHolidays::HolidayName(day).isEmpty())
                named << day.toString(QStringLiteral("MM-dd ")) + JapaneseHolidays::HolidayName(day);
        }
        QCOMPARE(named, listed);
    }

    // The equinox moments against published almanac times.
    void equinox_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<Equinox::Season>("season");
        QTest::addColumn<QString>("utc");
        const auto spring = Equinox::Season::Spring;
        const auto autumn = Equinox::Season::Autumn;
        // clang-format off
        QTest::newRow("1912 spring") << 1912 << spring << "1912-03-20T23:29:15";
        QTest::newRow("1920 autumn") << 1920 << autumn << "1920-09-23T08:28:34";
        QTest::newRow("2003 spring") << 2003 << spring << "2003-03-21T01:00:00";
        QTest::newRow("2025 autumn") << 2025 << autumn << "2025-09-22T18:19:16";
        QTest::newRow("2033 spring") << 2033 << spring << "2033-03-20T07:22:35";
        // clang-format on
    }
    void equinox()
    {
        QFETCH(int, year);
        QFETCH(Equinox::Season, season);
        QFETCH(QString, utc);
        QDateTime expected = QDateTime::fromString(utc, Qt::ISODate);
        expected.setTimeSpec(Qt::UTC);
        const QDateTime computed = JapaneseHolidays::EquinoxMoment(year, season);
        QVERIFY2(qAbs(computed.secsTo(expected)) <= 90, qPrintable(computed.toString(Qt::ISODate)));
    }

    // `verdaly holidays FROM [TO]`, run as the real program with no display and a home folder
    // of its own: its output, its refusals, and that it leaves the home folder as it found it.
    void command_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last");
        // clang-format off
        // The government's published list of 1955 to 2027 holds 1067 days.
        QTest::newRow("published years") << QStringList{"1955", "2027"} << 0 << 1067 << "1955-01-01\t元日" << "2027-11-23\t勤労感謝の日";
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
    void command()
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
    }

    // The era title format ("gge年m月") across the changes of era.
    void eraTitle_data()
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
        row("first day of Showa", "1926-12-25", "昭和元年12月");
        row("last day of Taisho", "1926-12-24", "大正15年12月");
        row("first day of Taisho", "1912-07-30", "大正元年7月");
        row("solar calendar begins in Meiji 6", "1873-01-01", "明治6年1月");
        row("lunisolar days keep the western year", "1872-12-31", "1872年12月");
        // clang-format on
    }
    void eraTitle()
    {
        QFETCH(QDate, day);
        QFETCH(QString, title);
        HalvernCalendar calendar;
        calendar.setTitleFormat(QStringLiteral("gge年m月"));
        calendar.setCurrentDate(day);
        QCOMPARE(calendar.titleText(), title);
    }

    // The holidays of the shown days: their painting and their tip, which puts the holiday
    // before what the owner says about the day.
    void holidaysOnTheGrid()
    {
        HalvernCalendar calendar;
        calendar.resize(490, 420);
        calendar.setCurrentDate(QDate(2026, 5, 20)); // grid 2026-04-26 .. 2026-06-06
        const QString entry = QStringLiteral("10:00 会議");
        calendar.setDayToolTipProvider([entry](const QDate& day) {
            return day == QDate(2026, 5, 6) || day == QDate(2026, 5, 8) ? entry : QString();
        });
        calendar.show();
        const auto tip = [&calendar](const QDate& day) {
            const QPoint at = calendar.dayRect(day).center();
            QHelpEvent event(QEvent::ToolTip, at, calendar.mapToGlobal(at));
            QApplication::sendEvent(&calendar, &event);
            return QToolTip::isVisible() ? QToolTip::text() : QString();
        };
        QCOMPARE(tip(QDate(2026, 5, 11)), QString()); // nothing to say
        QCOMPARE(tip(QDate(2026, 5, 4)), QStringLiteral("みどりの日"));
        QCOMPARE(tip(QDate(2026, 5, 6)), QStringLiteral("振替休日\n10:00 会議"));
        QCOMPARE(tip(QDate(2026, 5, 8)), entry);
        // Only the shown days carry their holidays.
        QCOMPARE(calendar.holidayName(QDate(2026, 4, 29)), QStringLiteral("昭和の日"));
        QVERIFY(calendar.holidayName(QDate(2026, 3, 20)).isEmpty());
        QVERIFY(calendar.holidayName(QDate(2026, 7, 20)).isEmpty());
        // Day-off, holiday and neighbouring months' looks.
        for (const auto& [code, back, text] : {std::tuple{130, 0x102030, 0x010203}, std::tuple{135, 0x405060, 0x040506},
                                               std::tuple{60, 0xF0F0F0, 0x909090}}) {
            SpotDesign spot = calendar.spotDesign(code);
            spot.back = QColor(QRgb(back));
            spot.text = QColor(QRgb(text));
            calendar.setSpotDesign(code, spot);
        }
        calendar.MarkDayOff(QDate(2026, 5, 5)); // children's day, also the user's day off
        calendar.MarkDayOff(QDate(2026, 5, 7));

        QImage image(calendar.size(), QImage::Format_ARGB32);
        calendar.render(&image);
        const auto back = [&](const QDate& day) {
            const QRect cell = calendar.dayRect(day);
            return image.pixelColor(cell.left() + cell.width() / 6, cell.center().y());
        };
        const auto corner = [&](const QDate& day) {
            return image.pixelColor(calendar.dayRect(day).topRight() + QPoint(-1, 1));
        };
        QCOMPARE(back(QDate(2026, 5, 4)), QColor(0x40, 0x50, 0x60));    // holiday
        QCOMPARE(back(QDate(2026, 5, 5)), QColor(0x40, 0x50, 0x60));    // holiday and day-off ...
        QCOMPARE(corner(QDate(2026, 5, 5)), QColor(0x01, 0x02, 0x03));  // ... with the day-off corner
        QCOMPARE(back(QDate(2026, 5, 7)), QColor(0x10, 0x20, 0x30));    // day-off only
        QVERIFY(corner(QDate(2026, 5, 4)) != QColor(0x01, 0x02, 0x03)); // no corner on a plain holiday
        // 29 April is in the grid's first row, a neighbouring day: marked, but paler.
        QCOMPARE(back(QDate(2026, 4, 29)), QColor(0x98, 0xA0, 0xA8));

        calendar.setHolidaysShown(false);
        calendar.render(&image);
        QCOMPARE(back(QDate(2026, 5, 5)), QColor(0x10, 0x20, 0x30));
        QCOMPARE(tip(QDate(2026, 5, 6)), entry);

        // Next year's days in December's grid; a Monday-first grid of September 2026 starts on
        // 31 August and still holds the week.
        calendar.setHolidaysShown(true);
        calendar.setCurrentDate(QDate(2026, 12, 10));
        QCOMPARE(tip(QDate(2027, 1, 1)), QStringLiteral("元日"));
        calendar.setFirstDayOfWeek(2);
        calendar.setCurrentDate(QDate(2026, 9, 1));
        QCOMPARE(tip(QDate(2026, 9, 22)), QStringLiteral("国民の休日"));
    }
};

VERDALY_TEST(TestHolidays)
#include "TestHolidays.moc"
