
#include "masters/FrmEdit.h"
#include "support/TestKit.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

class TestFrmEdit final : public QObject
{
    Q_OBJECT

private slots:
    void loadsFromHandOver_data();
    void loadsFromHandOver();
    void okHandsTextBack_data();
    void okHandsTextBack();
    void cancelHandsNothingBack_data();
    void cancelHandsNothingBack();
    void refusesEmptyText_data();
    void refusesEmptyText();
    void focusSelectsWholeText();
    void runEditDialogClearsStaleOk();
};

void TestFrmEdit::loadsFromHandOver_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("check");
    QTest::addColumn<bool>("checkShown");
    // clang-format off
    QTest::newRow("priority checked") << "Priority" << true << true;
    QTest::newRow("priority unchecked") << "Priority" << false << false;
    // clang-format on
    // Only "Priority" exchanges the check box; another kind leaves it as built.
    // clang-format off
    QTest::newRow("class ignores check") << "Class" << true << false;
    // clang-format on
}

void TestFrmEdit::loadsFromHandOver()
{
    QFETCH(QString, kind);
    QFETCH(bool, check);
    QFETCH(bool, checkShown);
    TestEnvironment env;
    EditHandOver handOver{kind, QStringLiteral("優先度 - 編集"), QStringLiteral("高い"), check, false};
    FrmEdit dialog(env.services, handOver);
    dialog.show();
    QCOMPARE(dialog.windowTitle(), QStringLiteral("優先度 - 編集"));
    QCOMPARE(Control<QLineEdit>(&dialog, "TxtEdit")->text(), QStringLiteral("高い"));
    auto* box = Control<QCheckBox>(&dialog, "ChkCheck");
    QVERIFY(!box->isVisible());
    QCOMPARE(box->isChecked(), checkShown);
    QCOMPARE(Control<QPushButton>(&dialog, "ComOK")->text(), QStringLiteral("OK"));
    QCOMPARE(Control<QPushButton>(&dialog, "ComCancel")->text(), QStringLiteral("キャンセル"));
}

void TestFrmEdit::okHandsTextBack_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("boxChecked");
    QTest::addColumn<bool>("checkAfter");
    // clang-format off
    QTest::newRow("class japanese") << "Class" << "打ち合わせ" << true << false;
    QTest::newRow("class apostrophe") << "Class" << "it's mine" << false << false;
    QTest::newRow("priority takes the box") << "Priority" << "最優先" << true << true;
    QTest::newRow("priority box cleared") << "Priority" << "低" << false << false;
    QTest::newRow("blanks around kept") << "Class" << " 会議 " << false << false;
    // clang-format on
}

void TestFrmEdit::okHandsTextBack()
{
    QFETCH(QString, kind);
    QFETCH(QString, typed);
    QFETCH(bool, boxChecked);
    QFETCH(bool, checkAfter);
    TestEnvironment env;
    EditHandOver handOver{kind, QStringLiteral("分類 - 新規"), QString(), false, false};
    FrmEdit dialog(env.services, handOver);
    dialog.show();
    Control<QLineEdit>(&dialog, "TxtEdit")->setText(typed);
    Control<QCheckBox>(&dialog, "ChkCheck")->setChecked(boxChecked);
    Click(&dialog, "ComOK");
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(handOver.EditOK);
    QCOMPARE(handOver.EditText, typed);
    QCOMPARE(handOver.EditCheck, checkAfter);
    QVERIFY(env.prompter.shown.isEmpty());
}

void TestFrmEdit::cancelHandsNothingBack_data()
{
    QTest::addColumn<QString>("how");
    // clang-format off
    QTest::newRow("cancel button") << "cancel";
    QTest::newRow("close box") << "close";
    QTest::newRow("escape") << "escape";
    // clang-format on
}

void TestFrmEdit::cancelHandsNothingBack()
{
    QFETCH(QString, how);
    TestEnvironment env;
    EditHandOver handOver{QStringLiteral("Priority"), QStringLiteral("優先度 - 編集"), QStringLiteral("中"), false,
                          false};
    FrmEdit dialog(env.services, handOver);
    dialog.show();
    Control<QLineEdit>(&dialog, "TxtEdit")->setText(QStringLiteral("変更"));
    Control<QCheckBox>(&dialog, "ChkCheck")->setChecked(true);
    if (how == QLatin1String("cancel"))
        Click(&dialog, "ComCancel");
    else if (how == QLatin1String("close"))
        dialog.close();
    else
        QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(!handOver.EditOK);
    QCOMPARE(handOver.EditText, QStringLiteral("中"));
    QVERIFY(!handOver.EditCheck);
}

void TestFrmEdit::refusesEmptyText_data()
{
    QTest::addColumn<QString>("typed");
    // clang-format off
    QTest::newRow("empty") << "";
    QTest::newRow("blanks") << "   ";
    QTest::newRow("ideographic blank") << "　";
    // clang-format on
}

void TestFrmEdit::refusesEmptyText()
{
    QFETCH(QString, typed);
    TestEnvironment env;
    EditHandOver handOver{QStringLiteral("Class"), QStringLiteral("分類 - 編集"), QStringLiteral("旧名"), false, false};
    FrmEdit dialog(env.services, handOver);
    dialog.show();
    Control<QLineEdit>(&dialog, "TxtEdit")->setText(typed);
    Click(&dialog, "ComOK");
    QVERIFY(dialog.isVisible());
    QVERIFY(!handOver.EditOK);
    QCOMPARE(handOver.EditText, QStringLiteral("旧名"));
    QCOMPARE(Control<QLineEdit>(&dialog, "TxtEdit")->text(), typed);
    QCOMPARE(env.prompter.shown.size(), 1);
    const Prompt& shown = env.prompter.shown.front();
    QCOMPARE(shown.text, QStringLiteral("入力されていません"));
    QCOMPARE(shown.icon, PromptIcon::None);
    QCOMPARE(shown.buttons, PromptButtons::Ok);

    // The dialog is still usable: a real name now goes through.
    Control<QLineEdit>(&dialog, "TxtEdit")->setText(QStringLiteral("新名"));
    Click(&dialog, "ComOK");
    QVERIFY(handOver.EditOK);
    QCOMPARE(handOver.EditText, QStringLiteral("新名"));
    QCOMPARE(env.prompter.shown.size(), 1);
}

void TestFrmEdit::focusSelectsWholeText()
{
    TestEnvironment env;
    EditHandOver handOver{QStringLiteral("Class"), QStringLiteral("分類 - 編集"), QStringLiteral("仕事関係"), false,
                          false};
    FrmEdit dialog(env.services, handOver);
    dialog.show();
    auto* text = Control<QLineEdit>(&dialog, "TxtEdit");
    text->deselect();
    text->setCursorPosition(2);
    Control<QPushButton>(&dialog, "ComCancel")->setFocus();
    text->setFocus(Qt::TabFocusReason);
    // Offscreen windows may not be active; deliver the focus change directly then.
    if (!text->hasFocus()) {
        QFocusEvent focusIn(QEvent::FocusIn, Qt::TabFocusReason);
        QCoreApplication::sendEvent(text, &focusIn);
    }
    QCOMPARE(text->selectedText(), QStringLiteral("仕事関係"));
}

void TestFrmEdit::runEditDialogClearsStaleOk()
{
    TestEnvironment env;
    EditHandOver handOver{QStringLiteral("Class"), QStringLiteral("分類 - 新規"), QString(), false, true};
    auto script = std::make_unique<EditAnswer>(QStringLiteral("無視される"), false);
    QVERIFY(!RunEditDialog(env.services, handOver, nullptr));
    QVERIFY(script->opened());
    QCOMPARE(script->title(), QStringLiteral("分類 - 新規"));
    QVERIFY(!handOver.EditOK);
    QVERIFY(handOver.EditText.isEmpty());
}

VERDALY_TEST(TestFrmEdit)
#include "TestFrmEdit.moc"
