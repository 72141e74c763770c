// The hot keys the running program holds: which rows are taken from the desktop, what a
// press does, and when a press is dropped.
#include "platform/HotKeyBackendFactory.h"
#include "settings/GlobalHotKeys.h"
#include "support/TestKit.h"

#include <QtTest>

class TestGlobalHotKeys final : public QObject
{
    Q_OBJECT

private slots:
    void pressRunsItsAction_data();
    void pressRunsItsAction();
    void headlessDesktopHasNoHotKeys();
};

void TestGlobalHotKeys::pressRunsItsAction_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("idle");
    QTest::addColumn<bool>("heldElsewhere"); // Ctrl+Alt+D belongs to another program
    QTest::addColumn<QList<int>>("ran");
    // Rows: A, K, C and D with Ctrl+Alt, the list Shift+Ctrl+F1 (registered as Ctrl+Shift).
    QTest::newRow("show calendar") << 65 << 3 << true << false << QList<int>{0};
    QTest::newRow("new schedule") << 75 << 3 << true << false << QList<int>{1};
    QTest::newRow("new task") << 67 << 3 << true << false << QList<int>{2};
    QTest::newRow("new sticky note") << 68 << 3 << true << false << QList<int>{3};
    QTest::newRow("schedule list") << 112 << 6 << true << false << QList<int>{4};
    QTest::newRow("other modifiers") << 65 << 2 << true << false << QList<int>{};
    QTest::newRow("held elsewhere") << 68 << 3 << true << true << QList<int>{};
    QTest::newRow("a dialog is up") << 75 << 3 << false << false << QList<int>{};
}

void TestGlobalHotKeys::pressRunsItsAction()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(bool, idle);
    QFETCH(bool, heldElsewhere);
    QFETCH(QList<int>, ran);
    TestEnvironment env;
    const QList<QPair<int, int>> bindings = {{65, 6}, {75, 6}, {67, 6}, {68, 6}, {112, 3}};
    for (int i = 0; i < bindings.size(); ++i) {
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1, DATAN2 = %2 WHERE CODE = %3")
                                .arg(bindings[i].first)
                                .arg(bindings[i].second)
                                .arg(82010 + 10 * i));
    }
    // A sixth row has no action: its combination is not taken from anyone.
    StoreGeneral(env.db(), 82060, {{"DATAS1", "extra"}, {"DATAN1", 90}, {"DATAN2", 6}});
    if (heldElsewhere) {
        env.hotKeys.heldElsewhere.insert({68, 3});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("D for 付箋新規作成.*another program")));
    }
    QList<int> actual;
    GlobalHotKeys::Actions actions;
    for (int i = 0; i < HotKeyActionCount; ++i)
        actions[static_cast<size_t>(i)] = [&actual, i] { actual.append(i); };
    GlobalHotKeys hotKeys(env.services, actions);
    hotKeys.RegisterHotKeys();
    // Identifiers: registration modifiers x 256 OR the key; Ctrl+Alt is 3, Shift+Ctrl 6.
    QCOMPARE(env.hotKeys.registered.value(843), FakeHotKeyBackend::Combination(75, 3));
    QCOMPARE(env.hotKeys.registered.value(6 * 256 + 112), FakeHotKeyBackend::Combination(112, 6));
    QCOMPARE(env.hotKeys.registered.size(), heldElsewhere ? 4 : 5);
    QCOMPARE(hotKeys.statuses().at(3), heldElsewhere ? HotKeyStatus::Taken : HotKeyStatus::Registered);

    env.services.state.MainWindowIdle = idle;
    env.hotKeys.press(key, modifiers);
    QCOMPARE(actual, ran);
    hotKeys.UnregisterHotKeys();
    QVERIFY(env.hotKeys.registered.isEmpty());
}

void TestGlobalHotKeys::headlessDesktopHasNoHotKeys()
{
    // The tests run on the offscreen platform: no X server to take keys from.
    const std::unique_ptr<HotKeyBackend> backend = CreateHotKeyBackend();
    QVERIFY(!backend->isAvailable());
    QCOMPARE(backend->registerHotKey(843, 75, 3), HotKeyStatus::Unavailable);
    QCOMPARE(backend->probe(75, 3), HotKeyStatus::Unavailable);
}

VERDALY_TEST(TestGlobalHotKeys)
#include "TestGlobalHotKeys.moc"
