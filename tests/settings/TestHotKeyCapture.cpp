// The hot-key field of the settings dialog, driven from the keyboard.
#include "settings/FrmSetting.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

class TestHotKeyCapture final : public QObject
{
    Q_OBJECT

private slots:
    void pressedCombinationIsShownAndSaved_data();
    void pressedCombinationIsShownAndSaved();
};

void TestHotKeyCapture::pressedCombinationIsShownAndSaved_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("shown");  // "-": unchanged from the stored Shift+Ctrl+K
    QTest::addColumn<QString>("stored"); // DATAN1|DATAN2 after OK
    const int ctrl = Qt::ControlModifier, alt = Qt::AltModifier, shift = Qt::ShiftModifier, pad = Qt::KeypadModifier;
    // clang-format off
    QTest::newRow("ctrl+alt+K") << int(Qt::Key_K) << (ctrl | alt) << "[Ctrl] + [Alt] + K" << "75|6";
    QTest::newRow("ctrl+K gains alt") << int(Qt::Key_K) << ctrl << "[Ctrl] + [Alt] + K" << "75|6";
    QTest::newRow("shift+K loses shift") << int(Qt::Key_K) << shift << "[Ctrl] + [Alt] + K" << "75|6";
    QTest::newRow("shift+ctrl+K kept") << int(Qt::Key_K) << (shift | ctrl) << "[Shift] + [Ctrl] + K" << "75|3";
    QTest::newRow("all three+Del") << int(Qt::Key_Delete) << (shift | ctrl | alt) << "[Shift] + [Ctrl] + [Alt] + Del" << "46|7";
    QTest::newRow("shift+Del is a key") << int(Qt::Key_Delete) << shift << "[Ctrl] + [Alt] + Del" << "46|6";
    QTest::newRow("keypad 0") << int(Qt::Key_0) << (ctrl | alt | pad) << "[Ctrl] + [Alt] + Num0" << "96|6";
    QTest::newRow("F16") << int(Qt::Key_F16) << (ctrl | alt) << "[Ctrl] + [Alt] + F16" << "127|6";
    QTest::newRow("F17 has no name") << int(Qt::Key_F17) << (ctrl | alt) << "[Ctrl] + [Alt] + " << "128|6";
    QTest::newRow("arrow") << int(Qt::Key_Left) << (ctrl | alt) << "[Ctrl] + [Alt] + ←" << "37|6";
    // Keys the dialog would otherwise act on belong to the field while it has the focus.
    QTest::newRow("Esc does not cancel") << int(Qt::Key_Escape) << 0 << "[Ctrl] + [Alt] + Esc" << "27|6";
    QTest::newRow("Return does not press OK") << int(Qt::Key_Return) << 0 << "[Ctrl] + [Alt] + Enter" << "13|6";
    QTest::newRow("ctrl alone") << int(Qt::Key_Control) << ctrl << "-" << "75|3";
    QTest::newRow("Delete clears") << int(Qt::Key_Delete) << 0 << "" << "0|0";
    QTest::newRow("Backspace clears") << int(Qt::Key_Backspace) << 0 << "" << "0|0";
    // clang-format on
}

void TestHotKeyCapture::pressedCombinationIsShownAndSaved()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, shown);
    QFETCH(QString, stored);
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 75, DATAN2 = 3 WHERE CODE = 82020"));
    const QString bindings = QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE IN (82010, 82020) ORDER BY CODE");
    FrmSetting dialog(env.services);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* actions = Control<QComboBox>(&dialog, "CmbHotKey");
    auto* field = Control<QLineEdit>(&dialog, "TxtHotKey");
    actions->setCurrentIndex(1);
    field->setFocus();
    QTest::keyClick(field, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    const QString expected = shown == QLatin1String("-") ? QStringLiteral("[Shift] + [Ctrl] + K") : shown;
    QCOMPARE(field->text(), expected);
    QVERIFY(dialog.isVisible());
    QCOMPARE(Lines(env.db(), bindings, {"DATAN1", "DATAN2"}), QStringList({"0|0", "75|3"})); // nothing before OK

    // Another action and back: the captured binding stays with its own action.
    actions->setCurrentIndex(0);
    QCOMPARE(field->text(), QString());
    actions->setCurrentIndex(1);
    QCOMPARE(field->text(), expected);
    Click(&dialog, "ComOK");
    QVERIFY(dialog.SettingCommitted());
    QCOMPARE(Lines(env.db(), bindings, {"DATAN1", "DATAN2"}), QStringList({"0|0", stored}));
}

VERDALY_TEST(TestHotKeyCapture)
#include "TestHotKeyCapture.moc"
