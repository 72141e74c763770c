#include "entries/ClassCombo.h"
#include "entries/EntryKinds.h"
#include "entries/EntryQueries.h"
#include "entries/LinkLabels.h"
#include "store/SqlText.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QEnterEvent>
#include <QLabel>
#include <QtTest>

// What an entry's span makes of it: its kind, the text of its line on a day, the days it
// marks, and the queries that find it; and the class a typed name files it under.
class TestEntryKinds final : public QObject
{
    Q_OBJECT

private slots:
    // The kinds the editors write (A5, B4, C4, D3, D4, T1, T2) are checked through the editors'
    // own table; these rows are the rest and the edges. A span is start date, start time, end
    // date, end time.
    void kindCode_data()
    {
        QTest::addColumn<QStringList>("span");
        QTest::addColumn<QString>("kind");
        using L = QStringList;
        // clang-format off
        QTest::newRow("A1") << L{"20060501", "", "20060501", ""} << "A1";
        QTest::newRow("A2") << L{"20060501", "", "20060501", "17:00"} << "A2";
        QTest::newRow("A3") << L{"20060501", "09:00", "20060501", ""} << "A3";
        QTest::newRow("A4") << L{"20060501", "09:00", "20060501", "10:00"} << "A4";
        QTest::newRow("A4 end before start") << L{"20060501", "10:00", "20060501", "09:00"} << "A4";
        QTest::newRow("no dates at all") << L{"", "", "", ""} << "A1";
        QTest::newRow("T ignores a start time") << L{"", "09:00", "20060501", ""} << "T1";
        QTest::newRow("D1") << L{"20060501", "", "", ""} << "D1";
        QTest::newRow("B over a year end") << L{"20061231", "", "20070101", ""} << "B1";
        QTest::newRow("C1") << L{"20060501", "", "20060503", ""} << "C1";
        QTest::newRow("C backwards span") << L{"20060501", "", "20060430", ""} << "C1";
        QTest::newRow("unreadable end date") << L{"20060501", "", "2006050", ""} << "";
        QTest::newRow("impossible start date") << L{"20060230", "", "20060301", ""} << "";
        // clang-format on
    }
    void kindCode()
    {
        QFETCH(QStringList, span);
        QFETCH(QString, kind);
        QCOMPARE(KindCode(span.at(0), span.at(1), span.at(2), span.at(3)), kind);
    }

    // A stored date (one argument) or a day-off's year, month and day (three).
    void dates_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QDate>("date");
        using L = QStringList;
        // clang-format off
        QTest::newRow("empty is the no-date value") << L{""} << QDate(100, 1, 1);
        QTest::newRow("plain") << L{"20060501"} << QDate(2006, 5, 1);
        QTest::newRow("no leap day") << L{"20060229"} << QDate();
        QTest::newRow("year 0") << L{"00000101"} << QDate();
        QTest::newRow("slashes") << L{"2006/05/01"} << QDate();
        QTest::newRow("full-width digits") << L{"２００６０５０１"} << QDate();
        QTest::newRow("day-off 2/29 in a leap year") << L{"2008", "2", "29"} << QDate(2008, 2, 29);
        QTest::newRow("day-off 2/29 in a plain year") << L{"2006", "2", "29"} << QDate();
        QTest::newRow("day-off huge month") << L{"2006", "4294967297", "1"} << QDate();
        QTest::newRow("day-off negative day") << L{"2006", "5", "-3"} << QDate();
        // clang-format on
    }
    void dates()
    {
        QFETCH(QStringList, args);
        QFETCH(QDate, date);
        const QDate result = args.size() == 1
                                 ? StoredDateToDate(args.at(0))
                                 : DayOffDate(args.at(0).toInt(), args.at(1).toLongLong(), args.at(2).toLongLong());
        QCOMPARE(result, date);
    }

    // One-day and open-ended entries on their day and on others; spans on their start, middle
    // and end day; tasks on their deadline, done or not. An entry is its span, kind and
    // completion. The panel's own table shows A3, A4, T1 and T2 on their day.
    void entryLineText_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QStringList>("entry");
        QTest::addColumn<QString>("text");
        const QDate may1(2006, 5, 1);
        const QDate may2(2006, 5, 2);
        const QDate may3(2006, 5, 3);
        using L = QStringList;
        // clang-format off
        QTest::newRow("A1") << may1 << L{"20060501", "", "20060501", "", "A1", ""} << "";
        QTest::newRow("A2") << may1 << L{"20060501", "", "20060501", "17:00", "A2", ""} << "      - 17:00";
        QTest::newRow("A5") << may1 << L{"20060501", "10:00", "20060501", "10:00", "A5", ""} << "10:00";
        QTest::newRow("A4 midnight") << may1 << L{"20060501", "00:00", "20060501", "00:30", "A4", ""} << " 0:00 -  0:30";
        QTest::newRow("D4") << may1 << L{"20060501", "10:00", "", "11:00", "D4", ""} << "10:00 - 11:00";
        QTest::newRow("A4 next day") << may2 << L{"20060501", "09:00", "20060501", "10:30", "A4", ""} << "";
        QTest::newRow("D3 day before") << QDate(2006, 4, 30) << L{"20060501", "21:00", "", "", "D3", ""} << "";
        QTest::newRow("B1 start") << may1 << L{"20060501", "", "20060502", "", "B1", ""} << " 5/ 1 -  5/ 2";
        QTest::newRow("B1 end") << may2 << L{"20060501", "", "20060502", "", "B1", ""} << " 5/ 1 -> 5/ 2";
        QTest::newRow("B2 end") << may2 << L{"20060501", "", "20060502", "17:00", "B2", ""} << " 5/ 1 ->17:00";
        QTest::newRow("B3 start") << may1 << L{"20060501", "23:00", "20060502", "", "B3", ""} << "23:00 -  5/ 2";
        QTest::newRow("B4 end") << may2 << L{"20060501", "23:00", "20060502", "01:00", "B4", ""} << " 5/ 1 -> 1:00";
        QTest::newRow("B4 day after") << may3 << L{"20060501", "23:00", "20060502", "01:00", "B4", ""} << "";
        QTest::newRow("C3 start") << may1 << L{"20060501", "09:30", "20060503", "", "C3", ""} << " 9:30 -  5/ 3";
        QTest::newRow("C3 middle") << may2 << L{"20060501", "09:30", "20060503", "", "C3", ""} << " 5/ 1 -> 5/ 3";
        QTest::newRow("C4 end") << may3 << L{"20060501", "09:30", "20060503", "08:00", "C4", ""} << " 5/ 1 -> 8:00";
        QTest::newRow("C1 over a year end") << QDate(2007, 1, 1) << L{"20061228", "", "20070103", "", "C1", ""} << "12/28 -> 1/ 3";
        QTest::newRow("backwards span, start day") << may1 << L{"20060501", "", "20060430", "", "C1", ""} << " 5/ 1 -  4/30";
        QTest::newRow("backwards span, end day") << QDate(2006, 4, 30) << L{"20060501", "", "20060430", "", "C1", ""} << "";
        QTest::newRow("T2 done") << may1 << L{"", "", "20060501", "09:00", "T2", "1"} << "      -> 9:00";
        QTest::newRow("T1 other day") << may2 << L{"", "", "20060501", "", "T1", "0"} << "";
        QTest::newRow("unknown kind") << may1 << L{"20060501", "09:00", "20060501", "", "Z3", ""} << "";
        QTest::newRow("invalid day") << QDate() << L{"20060501", "09:00", "20060501", "", "A3", ""} << "";
        // clang-format on
    }
    void entryLineText()
    {
        QFETCH(QDate, day);
        QFETCH(QStringList, entry);
        QFETCH(QString, text);
        QCOMPARE(EntryLineText(day, entry.at(0), entry.at(1), entry.at(2), entry.at(3), entry.at(4), entry.at(5)),
                 text);
    }

    // The window throughout: the grid of May 2006, 2006/04/30 to 2006/06/10.
    void markDates_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::addColumn<QStringList>("marks");
        // clang-format off
        QTest::newRow("A on its start") << "A3" << "20060515" << "20060515" << QStringList{"20060515"};
        QTest::newRow("T on its deadline") << "T1" << "" << "20060608" << QStringList{"20060608"};
        QTest::newRow("T after the grid") << "T2" << "" << "20060611" << QStringList{};
        QTest::newRow("B entering the grid") << "B4" << "20060429" << "20060430" << QStringList{"20060430"};
        QTest::newRow("C from the previous month") << "C1" << "20060425" << "20060503" << QStringList{"20060430", "20060501", "20060502", "20060503"};
        QTest::newRow("C leaving the grid") << "C2" << "20060609" << "20060620" << QStringList{"20060609", "20060610"};
        QTest::newRow("C backwards") << "C1" << "20060510" << "20060505" << QStringList{};
        QTest::newRow("C unreadable end") << "C1" << "20060510" << "2006051x" << QStringList{};
        QTest::newRow("unknown kind") << "X1" << "20060510" << "20060510" << QStringList{};
        // clang-format on
    }
    void markDates()
    {
        QFETCH(QString, kind);
        QFETCH(QString, start);
        QFETCH(QString, end);
        QFETCH(QStringList, marks);
        QStringList got;
        for (const QDate& d : EntryMarkDates(kind, start, end, QDate(2006, 4, 30), QDate(2006, 6, 10)))
            got << DateToStored(d);
        QCOMPARE(got, marks);
        // A corrupt span over millennia marks the window only, and at once.
        QElapsedTimer timer;
        timer.start();
        const QVector<QDate> dates = EntryMarkDates(QStringLiteral("C1"), QStringLiteral("00010101"),
                                                    QStringLiteral("99991231"), QDate(2006, 4, 30), QDate(2006, 6, 10));
        QCOMPARE(dates.size(), 42);
        QCOMPARE(dates.front(), QDate(2006, 4, 30));
        QCOMPARE(dates.back(), QDate(2006, 6, 10));
        QVERIFY(timer.elapsed() < 1000);
    }

    void queries()
    {
        TestEnvironment env;
        DatabaseConnection& db = env.db();
        const auto insert = [&db](int id, const char* kind, const char* start, const char* startTime, const char* end,
                                  const char* endTime, int priority = 0, const char* completion = "") {
            StoredEntry e = Entry(id, kind, start, startTime, end, endTime);
            e.priority = priority;
            e.completion = completion;
            StoreEntry(db, e);
        };
        insert(1, "C1", "20060420", "", "20060503", "");            // from the previous month
        insert(2, "T1", "", "", "20060608", "");                    // in the grid's trailing days
        insert(3, "A1", "20060615", "", "20060615", "");            // after the grid
        insert(4, "B1", "20060429", "", "20060430", "");            // ends on the first shown day
        insert(5, "C1", "20060301", "", "20060320", "");            // long before
        insert(6, "D3", "20060610", "09:00", "", "");               // on the last shown day
        insert(7, "T2", "", "", "20060429", "17:00");               // the day before the grid
        insert(8, "A3", "20060430", "08:00", "20060430", "");       // the first shown day
        insert(9, "T1", "", "", "20060515", "", 2, "1");            // finished tasks count
        insert(10, "C4", "20060401", "10:00", "20061231", "12:00"); // over the whole grid
        insert(11, "D1", "20060611", "", "", "");                   // the day after the grid
        insert(12, "T2", "", "", "20060601", "17:00");              // a task with a time
        QStringList month = Lines(db, MonthQuerySql(QDate(2006, 4, 30), QDate(2006, 6, 10)), {"ID"});
        std::sort(month.begin(), month.end(), [](const QString& a, const QString& b) { return a.toInt() < b.toInt(); });
        QCOMPARE(month, QStringList({"1", "2", "4", "6", "8", "9", "10", "12"}));

        // A day's lines: tasks by priority, then spans, then the day's own entries by time.
        db.ExecuteSql(QStringLiteral("DELETE FROM TRNSCHTSK"));
        insert(1, "A3", "20060510", "10:00", "20060510", "");
        insert(2, "T1", "", "", "20060510", "", 3);
        insert(3, "T1", "", "", "20060510", "", 1);
        insert(4, "A4", "20060510", "09:00", "20060510", "11:00", 2); // the time goes before the priority
        insert(5, "C1", "20060508", "", "20060512", "");
        insert(6, "D1", "20060510", "", "", "");
        insert(7, "A1", "20060511", "", "20060511", "");
        insert(8, "B2", "20060509", "", "20060510", "08:00");
        insert(9, "T2", "", "", "20060509", "08:00");
        QCOMPARE(Lines(db, DayQuerySql(QDate(2006, 5, 10)), {"ID"}), QStringList({"3", "2", "5", "8", "6", "4", "1"}));
    }

    // The combo offers 仕事 (ID 3) and 私用 (ID 7); the table holds those two, or none.
    void ensureClassFromCombo_data()
    {
        QTest::addColumn<int>("selectIndex"); // -1: type instead of choosing; -2: the table is empty
        QTest::addColumn<QString>("typed");
        QTest::addColumn<qint64>("classId");
        QTest::addColumn<int>("classRows");
        // clang-format off
        QTest::newRow("blanks only") << -1 << "   " << qint64(0) << 2;
        QTest::newRow("typed name of an item") << -1 << "仕事" << qint64(3) << 2;
        QTest::newRow("typed with blanks around") << -1 << " 私用 " << qint64(7) << 2;
        QTest::newRow("typed over a chosen item") << 0 << "私用" << qint64(7) << 2;
        QTest::newRow("new name over a chosen item") << 0 << "出張" << qint64(8) << 3;
        QTest::newRow("apostrophe kept") << -1 << "it's mine" << qint64(8) << 3;
        QTest::newRow("empty table") << -2 << "家族" << qint64(1) << 1;
        // clang-format on
    }
    void ensureClassFromCombo()
    {
        QFETCH(int, selectIndex);
        QFETCH(QString, typed);
        QFETCH(qint64, classId);
        QFETCH(int, classRows);
        TestEnvironment env;
        if (selectIndex > -2) {
            StoreClass(env.db(), 3, QStringLiteral("仕事"), 1);
            StoreClass(env.db(), 7, QStringLiteral("私用"), 2);
        }
        QComboBox combo;
        combo.setEditable(true);
        FillClassCombo(env.db(), &combo, QStringLiteral("SELECT * FROM MSTCLASS ORDER BY SORTKEY"));
        combo.setCurrentIndex(qMax(selectIndex, -1));
        combo.setEditText(typed);
        QCOMPARE(EnsureClassFromCombo(env.db(), &combo), classId);
        QCOMPARE(env.count(QStringLiteral("MSTCLASS")), classRows);
        QCOMPARE(combo.count(), classRows);
        if (classId != 0)
            QCOMPARE(combo.currentData().toLongLong(), classId);
        if (classId == 8 || classId == 1)
            QCOMPARE(env.count(QStringLiteral("MSTCLASS"),
                               QStringLiteral("ID = %1 AND SORTKEY = 0 AND CLASS = ").arg(classId) +
                                   QuoteText(typed.trimmed())),
                     1);
    }

    void linkLabelHoverAndClick()
    {
        QWidget window;
        auto* first = new QLabel(QStringLiteral("カレンダー"), &window);
        auto* second = new QLabel(QStringLiteral("分類の編集"), &window);
        second->move(0, 40);
        int firstClicks = 0;
        auto* links = new LinkLabelGroup(&window);
        links->add(first, [&] { ++firstClicks; });
        links->add(second, nullptr);
        const auto looks = [](QLabel* label) {
            return qMakePair(label->palette().color(QPalette::WindowText), label->font().underline());
        };
        const auto atRest = qMakePair(LinkLabelGroup::restColor(), false);
        // At rest before the pointer ever came near (showing may put the pointer over one).
        QCOMPARE(looks(first), atRest);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto lit = qMakePair(first->palette().color(QPalette::Active, QPalette::Highlight), true);
        QVERIFY(lit.first != LinkLabelGroup::restColor());
        QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
        QApplication::sendEvent(first, &enter);
        QCOMPARE(looks(first), lit);
        QCOMPARE(looks(second), atRest);
        QApplication::sendEvent(second, &enter);
        QCOMPARE(looks(first), atRest);
        QCOMPARE(looks(second), lit);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(second, &leave);
        QCOMPARE(looks(second), atRest);

        QTest::mouseClick(first, Qt::LeftButton);
        QTest::mouseClick(first, Qt::RightButton);
        first->setEnabled(false);
        // A link that cannot be used looks disabled, not like one at rest.
        QVERIFY(first->palette().color(QPalette::Disabled, QPalette::WindowText) != LinkLabelGroup::restColor());
        QTest::mouseClick(first, Qt::LeftButton);
        QTest::mouseClick(second, Qt::LeftButton); // a link without an action is harmless
        QCOMPARE(firstClicks, 1);
    }
};

VERDALY_TEST(TestEntryKinds)
#include "TestEntryKinds.moc"
