
#include "entries/ClassCombo.h"
#include "entries/LinkLabels.h"
#include "entries/TypedDateTime.h"
#include "store/SqlText.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QEnterEvent>
#include <QLabel>
#include <QtTest>

class TestEditorParts final : public QObject
{
    Q_OBJECT

private slots:
    void parseTypedDate_data();
    void parseTypedDate();
    void parseTypedTime_data();
    void parseTypedTime();
    void ensureClassFromCombo_data();
    void ensureClassFromCombo();
    void ensureClassOnEmptyTable();
    void linkLabelHoverAndClick();
};

void TestEditorParts::parseTypedDate_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("boxText");
    // clang-format off
    QTest::newRow("no leading zeros") << "2006/5/3" << "2006/05/03";
    QTest::newRow("hyphens") << "2006-5-3" << "2006/05/03";
    QTest::newRow("eight digits") << "20060503" << "2006/05/03";
    QTest::newRow("month and day in the default year") << "5/3" << "2026/05/03";
    QTest::newRow("full-width") << "２００６／０５／０３" << "2006/05/03";
    QTest::newRow("leap day") << "2008/2/29" << "2008/02/29";
    QTest::newRow("no leap day") << "2006/2/29" << "";
    QTest::newRow("month 13") << "2006/13/01" << "";
    QTest::newRow("two-digit year") << "06/05/03" << "";
    QTest::newRow("trailing junk") << "2006/05/03x" << "";
    // clang-format on
}

void TestEditorParts::parseTypedDate()
{
    QFETCH(QString, typed);
    QFETCH(QString, boxText);
    QCOMPARE(DateBoxText(ParseTypedDate(typed, 2026)), boxText);
}

void TestEditorParts::parseTypedTime_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("boxText");
    // clang-format off
    QTest::newRow("9:5") << "9:5" << "09:05";
    QTest::newRow("midnight") << "0:0" << "00:00";
    QTest::newRow("seconds dropped") << "10:15:45" << "10:15";
    QTest::newRow("full-width") << "１０：３０" << "10:30";
    QTest::newRow("hour 24") << "24:00" << "";
    QTest::newRow("minute 60") << "10:60" << "";
    QTest::newRow("hour only") << "9" << "";
    // clang-format on
}

void TestEditorParts::parseTypedTime()
{
    QFETCH(QString, typed);
    QFETCH(QString, boxText);
    QCOMPARE(TimeBoxText(ParseTypedTime(typed)), boxText);
}

void TestEditorParts::ensureClassFromCombo_data()
{
    QTest::addColumn<int>("selectIndex"); // -1: type instead of choosing
    QTest::addColumn<QString>("typed");
    QTest::addColumn<qint64>("classId");
    QTest::addColumn<int>("classRows");
    QTest::addColumn<int>("comboCount");

    // The combo offers 仕事 (ID 3) and 私用 (ID 7); the table holds those two.
    // clang-format off
    QTest::newRow("blanks only") << -1 << "   " << qint64(0) << 2 << 2;
    QTest::newRow("typed name of an item") << -1 << "仕事" << qint64(3) << 2 << 2;
    QTest::newRow("typed with blanks around") << -1 << " 私用 " << qint64(7) << 2 << 2;
    QTest::newRow("typed over a chosen item") << 0 << "私用" << qint64(7) << 2 << 2;
    QTest::newRow("new name over a chosen item") << 0 << "出張" << qint64(8) << 3 << 3;
    QTest::newRow("apostrophe kept") << -1 << "it's mine" << qint64(8) << 3 << 3;
    // clang-format on
}

void TestEditorParts::ensureClassFromCombo()
{
    QFETCH(int, selectIndex);
    QFETCH(QString, typed);
    QFETCH(qint64, classId);
    QFETCH(int, classRows);
    QFETCH(int, comboCount);

    TestEnvironment env;
    StoreClass(env.db(), 3, QStringLiteral("仕事"), 1);
    StoreClass(env.db(), 7, QStringLiteral("私用"), 2);
    QComboBox combo;
    combo.setEditable(true);
    FillClassCombo(env.db(), &combo, QStringLiteral("SELECT * FROM MSTCLASS ORDER BY SORTKEY"));
    combo.setCurrentIndex(selectIndex);
    if (selectIndex < 0 || !typed.isEmpty())
        combo.setEditText(typed);

    QCOMPARE(EnsureClassFromCombo(env.db(), &combo), classId);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), classRows);
    QCOMPARE(combo.count(), comboCount);
    if (classId != 0)
        QCOMPARE(combo.currentData().toLongLong(), classId);
    if (classRows == 3)
        QCOMPARE(env.count(QStringLiteral("MSTCLASS"),
                           QStringLiteral("ID = 8 AND SORTKEY = 0 AND CLASS = ") + QuoteText(typed.trimmed())),
                 1);
}

void TestEditorParts::ensureClassOnEmptyTable()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("DELETE FROM MSTCLASS"));
    QComboBox combo;
    combo.setEditable(true);
    combo.setEditText(QStringLiteral("家族"));
    QCOMPARE(EnsureClassFromCombo(env.db(), &combo), qint64(1));
    QCOMPARE(env.scalar(QStringLiteral("SELECT ID AS V FROM MSTCLASS WHERE CLASS = '家族'")), qint64(1));
}

void TestEditorParts::linkLabelHoverAndClick()
{
    QWidget window;
    auto* first = new QLabel(QStringLiteral("カレンダー"), &window);
    auto* second = new QLabel(QStringLiteral("分類の編集"), &window);
    second->move(0, 40);
    int firstClicks = 0;
    auto* links = new LinkLabelGroup(&window);
    links->add(first, [&] { ++firstClicks; });
    links->add(second, nullptr);
    // At rest before the pointer ever came near (showing may put the pointer over one).
    QCOMPARE(first->palette().color(QPalette::WindowText), LinkLabelGroup::restColor());
    QVERIFY(!first->font().underline());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QColor highlight = first->palette().color(QPalette::Active, QPalette::Highlight);
    QVERIFY(highlight != LinkLabelGroup::restColor());

    QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
    QApplication::sendEvent(first, &enter);
    QCOMPARE(first->palette().color(QPalette::WindowText), highlight);
    QVERIFY(first->font().underline());
    QCOMPARE(second->palette().color(QPalette::WindowText), LinkLabelGroup::restColor());

    QEnterEvent enterSecond(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
    QApplication::sendEvent(second, &enterSecond);
    QCOMPARE(first->palette().color(QPalette::WindowText), LinkLabelGroup::restColor());
    QVERIFY(!first->font().underline());
    QVERIFY(second->font().underline());

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(second, &leave);
    QCOMPARE(second->palette().color(QPalette::WindowText), LinkLabelGroup::restColor());
    QVERIFY(!second->font().underline());

    QTest::mouseClick(first, Qt::LeftButton);
    QTest::mouseClick(first, Qt::RightButton);
    first->setEnabled(false);
    // A link that cannot be used looks disabled, not like one at rest.
    QVERIFY(first->palette().color(QPalette::Disabled, QPalette::WindowText) != LinkLabelGroup::restColor());
    QTest::mouseClick(first, Qt::LeftButton);
    QTest::mouseClick(second, Qt::LeftButton); // a link without an action is harmless
    QCOMPARE(firstClicks, 1);
}

VERDALY_TEST(TestEditorParts)
#include "TestEditorParts.moc"
