// The holidays: the law at its edges, the command that prints them, and how the month grid shows
// them with the era title. The expected days are written from the law and the government's
// published list; a day added or lost between 1955 and 2027 shows in the command's count.
#include "calendarcontrol/HalvernCalendar.h"
#include "holidays/JapaneseHolidays.h"
#include "support/TestKit.h"

#include <QtTest>

class TestHolidays final : public QObject
{
    Q_OBJECT

private slots:
    void span_data()
    {
        QTest::addColumn<QDate>("first");
        QTest::addColumn<QDate>("last");
        QTest::addColumn<QString>("holidays");
        // clang-format off
        QTest::newRow("the law's first year from 20 July") << QDate(1948, 1, 1) << QDate(1948, 12, 31) << "09-23 秋分の日|11-03 文化の日|11-23 勤労感謝の日";
        QTest::newRow("coming-of-age day on the 15th") << QDate(1999, 1, 11) << QDate(1999, 1, 15) << "01-15 成人の日";
        QTest::newRow("coming-of-age day moves to a Monday") << QDate(2000, 1, 10) << QDate(2000, 1, 15) << "01-10 成人の日";
        QTest::newRow("sports day moves to a Monday") << QDate(2000, 10, 9) << QDate(2000, 10, 10) << "10-09 体育の日";
        QTest::newRow("2019: sports day still of the old name") << QDate(2019, 10, 14) << QDate(2019, 10, 22) << "10-14 体育の日|10-22 即位礼正殿の儀";
        QTest::newRow("sports day renamed") << QDate(2022, 10, 10) << QDate(2022, 10, 10) << "10-10 スポーツの日";
        QTest::newRow("Showa emperor's birthday") << QDate(1988, 4, 29) << QDate(1988, 4, 29) << "04-29 天皇誕生日";
        QTest::newRow("greenery day on 29 April") << QDate(1989, 4, 29) << QDate(1989, 4, 29) << "04-29 みどりの日";
        QTest::newRow("Showa day, greenery day on 4 May") << QDate(2007, 4, 29) << QDate(2007, 5, 5) << "04-29 昭和の日|04-30 振替休日|05-03 憲法記念日|05-04 みどりの日|05-05 こどもの日";
        QTest::newRow("marine day moves to a Monday") << QDate(2003, 7, 20) << QDate(2003, 7, 21) << "07-21 海の日";
        QTest::newRow("respect-for-the-aged day moves to a Monday") << QDate(2004, 9, 15) << QDate(2004, 9, 20) << "09-20 敬老の日";
        QTest::newRow("2007 rule: a Sunday 3 May passes two holidays") << QDate(2009, 5, 3) << QDate(2009, 5, 6) << "05-03 憲法記念日|05-04 みどりの日|05-05 こどもの日|05-06 振替休日";
        // Citizens' holidays from 1985-12-27; a Monday 4 May is a substitute instead.
        QTest::newRow("3 May on a Sunday in 1987") << QDate(1987, 5, 3) << QDate(1987, 5, 5) << "05-03 憲法記念日|05-04 振替休日|05-05 こどもの日";
        QTest::newRow("last 4 May of the old rule") << QDate(2006, 5, 4) << QDate(2006, 5, 4) << "05-04 国民の休日";
        QTest::newRow("2019 accession") << QDate(2019, 4, 27) << QDate(2019, 5, 6) << "04-29 昭和の日|04-30 国民の休日|05-01 天皇の即位の日|05-02 国民の休日|05-03 憲法記念日|05-04 みどりの日|05-05 こどもの日|05-06 振替休日";
        QTest::newRow("2020 Olympic Games") << QDate(2020, 7, 20) << QDate(2020, 8, 11) << "07-23 海の日|07-24 スポーツの日|08-10 山の日";
        QTest::newRow("2021 Olympic Games") << QDate(2021, 7, 19) << QDate(2021, 8, 9) << "07-22 海の日|07-23 スポーツの日|08-08 山の日|08-09 振替休日";
        // The equinox days before the fitted formulas' range, close to midnight, and after
        // 2100 (the published prediction).
        QTest::newRow("autumn 1955") << QDate(1955, 9, 23) << QDate(1955, 9, 24) << "09-24 秋分の日";
        QTest::newRow("spring 1960") << QDate(1960, 3, 20) << QDate(1960, 3, 20) << "03-20 春分の日";
        QTest::newRow("autumn 2012 at 23:49 JST") << QDate(2012, 9, 22) << QDate(2012, 9, 22) << "09-22 秋分の日";
        QTest::newRow("spring 2101") << QDate(2101, 3, 21) << QDate(2101, 3, 21) << "03-21 春分の日";
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
    }

    // The equinox moments (UTC) against published almanac times; the month tells the season.
    void equinox_data()
    {
        QTest::addColumn<QString>("utc");
        for (const char* utc : {"1912-03-20T23:29:15Z", "1920-09-23T08:28:34Z", "2003-03-21T01:00:00Z",
                                "2025-09-22T18:19:16Z", "2033-03-20T07:22:35Z"})
            QTest::newRow(utc) << utc;
    }
    void equinox()
    {
        QFETCH(QString, utc);
        const QDateTime expected = QDateTime::fromString(utc, Qt::ISODate);
        const auto season = expected.date().month() == 3 ? Equinox::Season::Spring : Equinox::Season::Autumn;
        const QDateTime computed = JapaneseHolidays::EquinoxMoment(expected.date().year(), season);
        QVERIFY2(qAbs(computed.secsTo(expected)) <= 90, qPrintable(computed.toString(Qt::ISODate)));
    }

    // `verdaly holidays FROM [TO]`, run as the real program with no display and a home folder
    // of its own: its output, its refusals, and that it leaves the home folder as it found it.
    void command_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("lines"); // 0: refused with code 2
        QTest::addColumn<QStringList>("firstAndLast");
        // clang-format off
        // The government's published list of 1955 to 2027 holds 1067 days.
        QTest::newRow("published years") << QStringList{"1955", "2027"} << 1067 << QStringList{"1955-01-01\t元日", "2027-11-23\t勤労感謝の日"};
        QTest::newRow("same year twice") << QStringList{"1973", "1973"} << 14 << QStringList{"1973-01-01\t元日", "1973-11-23\t勤労感謝の日"};
        QTest::newRow("first year") << QStringList{"1948"} << 3 << QStringList{"1948-09-23\t秋分の日", "1948-11-23\t勤労感謝の日"};
        QTest::newRow("no years") << QStringList{} << 0 << QStringList();
        QTest::newRow("three years") << QStringList{"2020", "2021", "2022"} << 0 << QStringList();
        QTest::newRow("not a number") << QStringList{"twenty"} << 0 << QStringList();
        QTest::newRow("not digits") << QStringList{"20x6"} << 0 << QStringList();
        QTest::newRow("before the law") << QStringList{"1947", "1950"} << 0 << QStringList();
        QTest::newRow("past the last year") << QStringList{"2026", "2200"} << 0 << QStringList();
        QTest::newRow("backwards") << QStringList{"2030", "2020"} << 0 << QStringList();
        // clang-format on
    }
    void command()
    {
        QFETCH(QStringList, words);
        QFETCH(int, lines);
        QFETCH(QStringList, firstAndLast);
        QTemporaryDir home;
        QProcess process;
        process.setEnvironment({QStringLiteral("HOME=") + home.path(), QStringLiteral("PATH=/usr/bin:/bin")});
        process.start(QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath(QStringLiteral("verdaly")),
                      QStringList{QStringLiteral("holidays")} + words);
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), lines ? 0 : 2);
        const QStringList out = QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        const QString error = QString::fromUtf8(process.readAllStandardError());
        QCOMPARE(out.size(), lines);
        QCOMPARE(QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList());
        QVERIFY2(lines ? error.isEmpty() : error.contains(QLatin1String("verdaly holidays")), qPrintable(error));
        if (lines)
            QCOMPARE((QStringList{out.first(), out.last()}), firstAndLast);
    }

    void eraTitle_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("title");
        // clang-format off
        QTest::newRow("last day of Heisei") << QDate(2019, 4, 30) << "平成31年4月";
        QTest::newRow("first day of Reiwa") << QDate(2019, 5, 1) << "令和元年5月";
        QTest::newRow("last day of Showa") << QDate(1989, 1, 7) << "昭和64年1月";
        QTest::newRow("first day of Heisei") << QDate(1989, 1, 8) << "平成元年1月";
        QTest::newRow("first day of Showa") << QDate(1926, 12, 25) << "昭和元年12月";
        QTest::newRow("last day of Taisho") << QDate(1926, 12, 24) << "大正15年12月";
        QTest::newRow("first day of Taisho") << QDate(1912, 7, 30) << "大正元年7月";
        QTest::newRow("solar calendar begins in Meiji 6") << QDate(1873, 1, 1) << "明治6年1月";
        QTest::newRow("lunisolar days keep the western year") << QDate(1872, 12, 31) << "1872年12月";
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
        QCOMPARE(DayToolTip(calendar, QDate(2026, 5, 11)), QString()); // nothing to say
        QCOMPARE(DayToolTip(calendar, QDate(2026, 5, 4)), QStringLiteral("みどりの日"));
        QCOMPARE(DayToolTip(calendar, QDate(2026, 5, 6)), QStringLiteral("振替休日\n10:00 会議"));
        QCOMPARE(DayToolTip(calendar, QDate(2026, 5, 8)), entry);
        // Only the shown days carry their holidays.
        QCOMPARE(calendar.holidayName(QDate(2026, 4, 29)), QStringLiteral("昭和の日"));
        QVERIFY(calendar.holidayName(QDate(2026, 3, 20)).isEmpty());
        QVERIFY(calendar.holidayName(QDate(2026, 7, 20)).isEmpty());
        // Day-off, holiday and neighbouring months' looks.
        for (const auto& [code, back, text] : {std::tuple{130, 0x102030, 0x010203}, std::tuple{135, 0x405060, 0x040506},
                                               std::tuple{60, 0xF0F0F0, 0x909090}})
            calendar.setSpotDesign(code, {QColor(QRgb(back)), QColor(QRgb(text)), calendar.spotDesign(code).font});
        calendar.MarkDayOff(QDate(2026, 5, 5)); // children's day, also the user's day off
        calendar.MarkDayOff(QDate(2026, 5, 7));

        QImage image(calendar.size(), QImage::Format_ARGB32);
        calendar.render(&image);
        const auto back = [&](const QDate& d) {
            return image.pixelColor(calendar.dayRect(d).center() - QPoint(calendar.dayRect(d).width() / 3, 0));
        };
        const auto corner = [&](const QDate& d) {
            return image.pixelColor(calendar.dayRect(d).topRight() + QPoint(-1, 1));
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
        QCOMPARE(DayToolTip(calendar, QDate(2026, 5, 6)), entry);

        // Next year's days in December's grid; a Monday-first grid of September 2026 starts on
        // 31 August and still holds the week.
        calendar.setHolidaysShown(true);
        calendar.setCurrentDate(QDate(2026, 12, 10));
        QCOMPARE(DayToolTip(calendar, QDate(2027, 1, 1)), QStringLiteral("元日"));
        calendar.setFirstDayOfWeek(2);
        calendar.setCurrentDate(QDate(2026, 9, 1));
        QCOMPARE(DayToolTip(calendar, QDate(2026, 9, 22)), QStringLiteral("国民の休日"));
    }
};

VERDALY_TEST(TestHolidays)
#include "TestHolidays.moc"
