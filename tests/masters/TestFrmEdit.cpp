#include "masters/FrmEdit.h"
#include "support/TestKit.h"

#include <QtTest>

class TestFrmEdit final : public QObject
{
    Q_OBJECT

private slots:
    void handsBack_data();
    void handsBack();
    void refusesEmptyText_data();
    void refusesEmptyText();
    void runEditDialogClearsStaleOk();
};

void TestFrmEdit::handsBack_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("check");      // handed in
    QTest::addColumn<bool>("checkShown"); // only "Priority" takes the check box over
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("how");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("checkBack");
    using L = QStringList;
    // clang-format off
    QTest::newRow("class leaves the check alone") << "Class" << true << false << L{"TxtEdit=打ち合わせ", "ChkCheck=0"} << "ok" << true << "打ち合わせ" << true;
    QTest::newRow("class apostrophe") << "Class" << false << false << L{"TxtEdit=it's mine"} << "ok" << true << "it's mine" << false;
    QTest::newRow("blanks around kept") << "Class" << false << false << L{"TxtEdit= 会議 "} << "ok" << true << " 会議 " << false;
    QTest::newRow("priority takes the box") << "Priority" << false << false << L{"TxtEdit=最優先", "ChkCheck=1"} << "ok" << true << "最優先" << true;
    QTest::newRow("priority box cleared") << "Priority" << true << true << L{"TxtEdit=低", "ChkCheck=0"} << "ok" << true << "低" << false;
    QTest::newRow("cancel button") << "Priority" << false << false << L{"TxtEdit=変更", "ChkCheck=1"} << "cancel" << false << "高い" << false;
    QTest::newRow("close box") << "Priority" << false << false << L{"TxtEdit=変更", "ChkCheck=1"} << "close" << false << "高い" << false;
    QTest::newRow("escape") << "Priority" << false << false << L{"TxtEdit=変更", "ChkCheck=1"} << "escape" << false << "高い" << false;
    // clang-format on
}

void TestFrmEdit::handsBack()
{
    QFETCH(QString, kind);
    QFETCH(bool, check);
    QFETCH(bool, checkShown);
    QFETCH(QStringList, typed);
    QFETCH(QString, how);
    QFETCH(bool, ok);
    QFETCH(QString, text);
    QFETCH(bool, checkBack);
    TestEnvironment env;
    EditHandOver handOver{kind, QStringLiteral("優先度 - 編集"), QStringLiteral("高い"), check, false};
    FrmEdit dialog(env.services, handOver);
    dialog.show();
    QCOMPARE(dialog.windowTitle(), QStringLiteral("優先度 - 編集"));
    QCOMPARE(Shown(&dialog, "TxtEdit"), QStringLiteral("高い"));
    QVERIFY(!Control(&dialog, "ChkCheck")->isVisible());
    QCOMPARE(Shown(&dialog, "ChkCheck"), checkShown ? QStringLiteral("1") : QStringLiteral("0"));
    TypeAll(&dialog, typed);
    if (how == QLatin1String("ok"))
        Click(&dialog, "ComOK");
    else if (how == QLatin1String("cancel"))
        Click(&dialog, "ComCancel");
    else if (how == QLatin1String("close"))
        dialog.close();
    else
        QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(ok ? QDialog::Accepted : QDialog::Rejected));
    QCOMPARE(handOver.EditOK, ok);
    QCOMPARE(handOver.EditText, text);
    QCOMPARE(handOver.EditCheck, checkBack);
    QVERIFY(env.prompter.shown.isEmpty());
}

void TestFrmEdit::refusesEmptyText_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("empty") << "";
    QTest::newRow("blanks") << "   ";
    QTest::newRow("ideographic blank") << "　";
}

void TestFrmEdit::refusesEmptyText()
{
    QFETCH(QString, typed);
    TestEnvironment env;
    EditHandOver handOver{QStringLiteral("Class"), QStringLiteral("分類 - 編集"), QStringLiteral("旧名"), false, false};
    FrmEdit dialog(env.services, handOver);
    dialog.show();
    Type(&dialog, "TxtEdit", typed);
    Click(&dialog, "ComOK");
    QVERIFY(dialog.isVisible());
    QVERIFY(!handOver.EditOK);
    QCOMPARE(handOver.EditText, QStringLiteral("旧名"));
    QCOMPARE(Shown(&dialog, "TxtEdit"), typed);
    QCOMPARE(env.prompter.texts(), QStringList{"入力されていません"});
    QCOMPARE(env.prompter.shown.front().buttons, PromptButtons::Ok);
    // The dialog is still usable: a real name now goes through.
    Type(&dialog, "TxtEdit", QStringLiteral("新名"));
    Click(&dialog, "ComOK");
    QVERIFY(handOver.EditOK);
    QCOMPARE(handOver.EditText, QStringLiteral("新名"));
}

void TestFrmEdit::runEditDialogClearsStaleOk()
{
    TestEnvironment env;
    EditHandOver handOver{QStringLiteral("Class"), QStringLiteral("分類 - 新規"), QString(), false, true};
    EditAnswer answer(QStringLiteral("無視される"), false);
    QVERIFY(!RunEditDialog(env.services, handOver, nullptr));
    QVERIFY(answer.opened());
    QCOMPARE(answer.title(), QStringLiteral("分類 - 新規"));
    QVERIFY(!handOver.EditOK);
    QVERIFY(handOver.EditText.isEmpty());
}

VERDALY_TEST(TestFrmEdit)
#include "TestFrmEdit.moc"
