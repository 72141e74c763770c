// The hot keys on a real X server with a window manager: pressed while another program has
// the focus, and a combination another X client holds reported.
#include "common/Clock.h"
#include "support/TestKit.h"
#include "support/VirtualDesktop.h"

#include <QProcess>
#include <QtTest>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <cstdlib>

class TestHotKeysEndToEnd final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void hotKeyOpensTodaysSchedule();

private:
    // Runs xdotool with the blank-separated words of arguments; answers what it printed.
    QString xdotool(const QString& arguments);
    bool waitForWindow(const QString& search, QString* window = nullptr, bool gone = false);
    void grabElsewhere(xcb_keysym_t keysym, uint16_t modifiers);

    VirtualDesktop m_desktop;
    xcb_connection_t* m_otherClient = nullptr;
};

namespace {

bool WaitUntil(const std::function<bool()>& condition, int timeoutMs = 20000)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < timeoutMs) {
        if (condition())
            return true;
        QTest::qWait(100);
    }
    return condition();
}

} // namespace

void TestHotKeysEndToEnd::initTestCase()
{
    const QString failed = m_desktop.start(QStringLiteral("1024x768"), true);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
}

void TestHotKeysEndToEnd::cleanupTestCase()
{
    if (m_otherClient)
        xcb_disconnect(m_otherClient);
}

QString TestHotKeysEndToEnd::xdotool(const QString& arguments)
{
    return m_desktop.run(QStringLiteral("xdotool"), arguments.split(QLatin1Char(' ')));
}

bool TestHotKeysEndToEnd::waitForWindow(const QString& search, QString* window, bool gone)
{
    return WaitUntil([&] {
        const QString found =
            xdotool(QStringLiteral("search --onlyvisible ") + search).section(QLatin1Char('\n'), 0, 0);
        if (window)
            *window = found;
        return found.isEmpty() == gone;
    });
}

// Another X client takes a combination on the root window, as a desktop tool would.
void TestHotKeysEndToEnd::grabElsewhere(xcb_keysym_t keysym, uint16_t modifiers)
{
    m_otherClient = xcb_connect(m_desktop.display().toLatin1().constData(), nullptr);
    QVERIFY(!xcb_connection_has_error(m_otherClient));
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_otherClient)).data->root;
    xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(m_otherClient);
    xcb_keycode_t* codes = xcb_key_symbols_get_keycode(symbols, keysym);
    QVERIFY(codes && codes[0] != XCB_NO_SYMBOL);
    xcb_generic_error_t* error =
        xcb_request_check(m_otherClient, xcb_grab_key_checked(m_otherClient, 1, root, modifiers, codes[0],
                                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    std::free(codes);
    xcb_key_symbols_free(symbols);
    QVERIFY(!error);
}

void TestHotKeysEndToEnd::hotKeyOpensTodaysSchedule()
{
    // The rows as the settings dialog leaves them: Ctrl+Alt+K for a schedule, Ctrl+Alt+J for a task.
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 75, DATAN2 = 6 WHERE CODE = 82020"));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 74, DATAN2 = 6 WHERE CODE = 82030"));
    env.services.connection.reset();
    const QString databasePath = env.path();
    // Another program holds Ctrl+Alt+J before the calendar starts: the start reports it.
    grabElsewhere(0x006a /* j */, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1);
    QProcess calendar;
    calendar.setProcessEnvironment(m_desktop.environment());
    calendar.start(VerdalyProgram(), {QStringLiteral("--data-dir"), env.services.dataDir});
    QVERIFY(calendar.waitForStarted());
    const QString restarted = QString::number(calendar.processId());
    QString main;
    // The calendar's title is the selected day ("2026/11/22 (日)"); the tray icon has none.
    QVERIFY2(waitForWindow(QStringLiteral("--pid %1 --name ^[0-9]{4}/").arg(restarted), &main), "no calendar window");
    QByteArray log;
    QVERIFY2(WaitUntil([&] { return (log += calendar.readAllStandardError()).contains("another program holds it"); }),
             log.constData());
    QVERIFY(QString::fromUtf8(log).contains(QStringLiteral("[Ctrl] + [Alt] + J for タスク入力")));

    // Another program in front; the hot key still reaches the calendar.
    QProcess other;
    other.setProcessEnvironment(m_desktop.environment());
    other.start(QStringLiteral("xmessage"), {"-name", "otherprogram", "another program"});
    QString otherWindow;
    QVERIFY(waitForWindow(QStringLiteral("--classname otherprogram"), &otherWindow));
    xdotool(QStringLiteral("windowactivate --sync ") + otherWindow);
    QCOMPARE(xdotool(QStringLiteral("getactivewindow")), otherWindow);
    xdotool(QStringLiteral("key ctrl+alt+k"));
    QString editor;
    QVERIFY2(waitForWindow(QStringLiteral("--pid %1 --name ^スケジュール$").arg(restarted), &editor),
             "no schedule editor");
    xdotool(QStringLiteral("windowactivate --sync ") + editor);
    xdotool(QStringLiteral("type --delay 40 hotkey"));
    xdotool(QStringLiteral("key Return"));
    QVERIFY2(waitForWindow(QStringLiteral("--name ^スケジュール$"), nullptr, true), "the editor stayed open");
    QCOMPARE(Lines(*OpenDatabaseConnection(databasePath, QString()), QStringLiteral("SELECT * FROM TRNSCHTSK"),
                   {"BUSINESS", "STARTDT", "DATA"}),
             QStringList({QStringLiteral("hotkey|%1|1").arg(SystemClock().today().toString("yyyyMMdd"))}));

    other.terminate();
    other.waitForFinished(5000);
    calendar.terminate();
    QVERIFY(calendar.waitForFinished(15000));
    QCOMPARE(calendar.exitCode(), 0);
}

VERDALY_TEST(TestHotKeysEndToEnd)
#include "TestHotKeysEndToEnd.moc"
