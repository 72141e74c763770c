// "Help": the program's own help page opened in the desktop's browser, and the version.
#include "mainwindow/FrmMain.h"
#include "mainwindow/OnlineHelp.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QLabel>
#include <QtTest>

class TestHelpMenu : public QObject
{
    Q_OBJECT

private slots:
    void onlineHelp_data();
    void onlineHelp();
    void theBuildShipsTheHelpPage();
    void version();
};

void TestHelpMenu::onlineHelp_data()
{
    QTest::addColumn<QString>("page"); // where the page is, under the temporary root; "" none
    QTest::addColumn<bool>("browserOpens");
    QTest::addColumn<bool>("opened");     // the page was handed to the browser
    QTest::addColumn<QString>("message"); // what the user is told ("" nothing)
    QTest::newRow("beside the program") << "bin/help/index.html" << true << true << "";
    QTest::newRow("installed") << "share/halvern-verdaly/help/index.html" << true << true << "";
    QTest::newRow("missing") << "" << true << false << "ヘルプのページが見つかりません。";
    QTest::newRow("no browser") << "bin/help/index.html" << false << true << "ブラウザを起動できませんでした。";
}

void TestHelpMenu::onlineHelp()
{
    QFETCH(QString, page);
    QFETCH(bool, browserOpens);
    QFETCH(bool, opened);
    QFETCH(QString, message);
    TestEnvironment env;
    QTemporaryDir root;
    QDir(root.path()).mkpath(QStringLiteral("bin"));
    const QString pagePath = page.isEmpty() ? QString() : QDir(root.path()).filePath(page);
    if (!page.isEmpty()) {
        QDir().mkpath(QFileInfo(pagePath).path());
        QFile file(pagePath);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<html lang=\"ja\"></html>");
    }
    env.services.programDir = QDir(root.path()).filePath(QStringLiteral("bin"));
    env.urlOpener.opens = browserOpens;
    auto main = StartMainWindow(env);

    MenuAnswer menu(QStringLiteral("MnuOnline"));
    ClickControl(*main, QStringLiteral("LabHelp"));
    QCOMPARE(menu.menu(), QStringLiteral("MnuHelp"));

    if (opened) {
        QCOMPARE(env.urlOpener.opened.size(), 1);
        QCOMPARE(QFileInfo(env.urlOpener.opened.front().toLocalFile()).canonicalFilePath(),
                 QFileInfo(pagePath).canonicalFilePath());
    } else {
        QVERIFY(env.urlOpener.opened.isEmpty());
    }
    if (message.isEmpty()) {
        QVERIFY(env.prompter.shown.isEmpty());
    } else {
        QCOMPARE(env.prompter.shown.size(), 1);
        QVERIFY2(env.prompter.shown.front().text.startsWith(message), qPrintable(env.prompter.shown.front().text));
        // The user learns which file it is about.
        const QString named = opened ? pagePath : HelpPageCandidates(env.services.programDir).front();
        QVERIFY(env.prompter.shown.front().text.contains(QDir::cleanPath(named)));
    }
    QVERIFY(env.services.state.MainWindowIdle);
}

void TestHelpMenu::theBuildShipsTheHelpPage()
{
    const QString page = FindHelpPage(qEnvironmentVariable("VERDALY_BIN_DIR"));
    QVERIFY2(!page.isEmpty(), "the build puts no help page beside the program");
    QFile file(page);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString html = QString::fromUtf8(file.readAll());
    QVERIFY(html.contains(QStringLiteral("lang=\"ja\"")));
    // Where the data lives.
    QVERIFY(html.contains(QStringLiteral("QMCalendar.mdb")));
}

void TestHelpMenu::version()
{
    TestEnvironment env;
    auto main = StartMainWindow(env);
    bool idleWhileOpen = true;
    QString title;
    MenuAnswer menu(QStringLiteral("MnuVersion"));
    ModalAnswer dialog([&](QWidget* window) {
        idleWhileOpen = env.services.state.MainWindowIdle;
        title = Control<QLabel>(window, "LabTitle")->text();
        Click(window, "ComOK");
    });
    ClickControl(*main, QStringLiteral("LabHelp"));
    QVERIFY(dialog.opened());
    QVERIFY(!dialog.stayedOpen()); // its OK closes it
    QCOMPARE(dialog.title(), QStringLiteral("バージョン情報"));
    QVERIFY(title.endsWith(QStringLiteral(" 1.2")));
    QVERIFY(!idleWhileOpen);
    QVERIFY(env.services.state.MainWindowIdle);
}

VERDALY_TEST(TestHelpMenu)
#include "TestHelpMenu.moc"
