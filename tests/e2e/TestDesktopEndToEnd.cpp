// The real program on a real X server with a window manager, driven from outside as a user
// and the desktop would: the hot keys pressed while another program has the focus, one of
// them held by another X client; thirty notes typed into and one dragged, then the program
// killed outright or told to stop and started again: every note must come back with its
// text, its colour and its place; and a second copy on the same folder is refused.
#include "common/Clock.h"
#include "notes/StickyNoteColors.h"
#include "support/DesktopSession.h"
#include "support/TestKit.h"

#include <QRegularExpression>
#include <QtTest>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <csignal>
#include <cstdlib>

namespace {

// A note as the desktop shows it, or as its row says it is to be shown.
struct SeenNote
{
    QString window;
    QPoint place;
    int colour = -1;
    QString text;
};

// The notes as sorted lines, so that two sets compare whatever order they were found in.
QStringList Described(const QList<SeenNote>& notes, bool withText)
{
    QStringList lines;
    for (const SeenNote& note : notes) {
        lines << QStringLiteral("(%1,%2) colour %3 %4")
                     .arg(note.place.x())
                     .arg(note.place.y())
                     .arg(note.colour)
                     .arg(withText ? note.text : QString());
    }
    lines.sort();
    return lines;
}

QStringList Args(std::initializer_list<QVariant> values)
{
    QStringList list;
    for (const QVariant& value : values)
        list << value.toString();
    return list;
}

} // namespace

class TestDesktopEndToEnd final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QString why;
        QVERIFY2(m_desktop.startDisplay(&why, QStringLiteral("1024x768"), true), qPrintable(why));
        // Another X client holds Ctrl+Alt+J on the root window, as a desktop tool would.
        m_otherClient = xcb_connect(m_desktop.display().toLatin1().constData(), nullptr);
        QVERIFY(!xcb_connection_has_error(m_otherClient));
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_otherClient)).data->root;
        xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(m_otherClient);
        xcb_keycode_t* codes = xcb_key_symbols_get_keycode(symbols, 0x006a /* j */);
        QVERIFY(codes && codes[0] != XCB_NO_SYMBOL);
        xcb_generic_error_t* error = xcb_request_check(
            m_otherClient, xcb_grab_key_checked(m_otherClient, 1, root, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, codes[0],
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        std::free(codes);
        xcb_key_symbols_free(symbols);
        QVERIFY(!error);
    }
    void cleanupTestCase()
    {
        if (m_otherClient)
            xcb_disconnect(m_otherClient);
    }

    void notesComeBack_data()
    {
        QTest::addColumn<int>("ending");
        QTest::newRow("kill -9") << int(SIGKILL);
        QTest::newRow("SIGTERM") << int(SIGTERM);
    }
    void notesComeBack()
    {
        QFETCH(int, ending);
        TestEnvironment data;
        // The hot keys as the settings dialog leaves them: Ctrl+Alt+K for a schedule, Ctrl+Alt+J
        // for a task, Ctrl+Alt+P for a note (virtual keys 75, 74, 80; mask Ctrl 2 + Alt 4).
        SetGeneral(data.db(), 82020, {{"DATAN1", 75}, {"DATAN2", 6}});
        SetGeneral(data.db(), 82030, {{"DATAN1", 74}, {"DATAN2", 6}});
        SetGeneral(data.db(), 82040, {{"DATAN1", 80}, {"DATAN2", 6}});
        data.services.connection.reset();
        QProcess calendar;
        start(calendar, data.services.dataDir);
        if (QTest::currentTestFailed())
            return;
        const qint64 pid = calendar.processId();
        // The start reports the combination another program holds.
        QByteArray log;
        QVERIFY2(
            WaitUntil([&] { return (log += calendar.readAllStandardError()).contains("another program holds it"); },
                      20000, 100),
            log.constData());
        QVERIFY(QString::fromUtf8(log).contains(QStringLiteral("[Ctrl] + [Alt] + J for タスク入力")));

        // Another program in front; the hot key still reaches the calendar.
        QProcess other;
        other.setProcessEnvironment(m_desktop.environment());
        other.start(QStringLiteral("xmessage"), {"-name", "otherprogram", "another program"});
        QString otherWindow;
        QVERIFY(WaitUntil(
            [&] {
                return !(otherWindow = search({"--classname", "otherprogram"})).isEmpty();
            },
            20000, 100));
        xdotool(Args({"windowactivate", "--sync", otherWindow}));
        QCOMPARE(xdotool(Args({"getactivewindow"})), otherWindow);
        xdotool(Args({"key", "ctrl+alt+k"}));
        QString editor;
        QVERIFY2(WaitUntil(
                     [&] {
                         return !(editor = search(Args({"--pid", pid, "--name", "^スケジュール$"}))).isEmpty();
                     },
                     20000, 100),
                 "no schedule editor");
        xdotool(Args({"windowactivate", "--sync", editor}));
        xdotool(Args({"type", "--delay", 40, "hotkey"}));
        xdotool(Args({"key", "Return"}));
        QVERIFY2(WaitUntil(
                     [&] {
                         return search({"--name", "^スケジュール$"}).isEmpty();
                     },
                     20000, 100),
                 "the editor stayed open");
        QCOMPARE(Lines(*OpenDatabaseConnection(data.path(), QString()), QStringLiteral("SELECT * FROM TRNSCHTSK"),
                       {"BUSINESS", "STARTDT", "DATA"}),
                 QStringList({QStringLiteral("hotkey|%1|1").arg(SystemClock().today().toString("yyyyMMdd"))}));
        other.terminate();
        other.waitForFinished(5000);

        for (int i = 1; i <= 30; ++i) {
            xdotool(Args({"key", "ctrl+alt+p"}));
            QTRY_COMPARE_WITH_TIMEOUT(windows(pid, QStringLiteral("^付箋$")).size(), i, 10000);
        }
        // One note dragged by its text, in small steps as a hand moves.
        const QString dragged = windows(pid, QStringLiteral("^付箋$")).front();
        xdotool(Args({"windowraise", dragged}));
        const QPoint at = geometryOf(dragged).topLeft();
        const QPoint by(at.x() < 400 ? 137 : -137, at.y() < 300 ? 111 : -111);
        const QPoint draggedTo = at + by;
        QStringList steps = Args({"mousemove", "--window", dragged, 60, 40, "mousedown", 1});
        for (int step = 0; step < 8; ++step)
            steps << Args({"mousemove_relative", "--", by.x() / 8, by.y() / 8, "sleep", 0.05});
        xdotool(steps << Args({"mousemove_relative", "--", by.x() % 8, by.y() % 8, "mouseup", 1}));
        QTRY_COMPARE_WITH_TIMEOUT(geometryOf(dragged).topLeft(), draggedTo, 5000);

        QList<SeenNote> before = seeNotes(pid);
        // Typing into several notes; the end comes two seconds after the last keystroke.
        const QStringList typed{QStringLiteral("it's the first note"), QStringLiteral("Buy milk\nand eggs"),
                                QStringLiteral("call Tom's office at 3"),
                                QStringLiteral("x'; DELETE FROM TRNGENERAL; --"),
                                QStringLiteral("last words before the end")};
        for (int i = 0; i < typed.size(); ++i) {
            SeenNote& note = before[i * 6 + 1];
            xdotool(Args({"windowactivate", "--sync", note.window}));
            // Line by line: a line break is the Return key ("type" takes every word after it).
            const QStringList lines = typed[i].split(QLatin1Char('\n'));
            for (int line = 0; line < lines.size(); ++line) {
                if (line > 0)
                    xdotool(Args({"key", "Return"}));
                xdotool(Args({"type", "--delay", 15, lines[line]}));
            }
            note.text = typed[i];
        }
        QTest::qWait(2000);
        ::kill(static_cast<pid_t>(pid), ending);
        QVERIFY(calendar.waitForFinished(15000));
        QCOMPARE(calendar.exitStatus(), ending == SIGTERM ? QProcess::NormalExit : QProcess::CrashExit);

        QProcess again;
        start(again, data.services.dataDir);
        if (QTest::currentTestFailed())
            return;
        QTRY_COMPARE_WITH_TIMEOUT(windows(again.processId(), QStringLiteral("^付箋$")).size(), 30, 20000);
        const QList<SeenNote> after = seeNotes(again.processId());
        // What each reopened note holds, as the program wrote it back at its start (in pixels
        // at the desktop's 96 dpi).
        QList<SeenNote> stored;
        data.open();
        for (const Row& row :
             data.db().ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 AND DATAS3 = '1'"))) {
            stored << SeenNote{QString(),
                               QPoint(static_cast<int>(row.number(QStringLiteral("DATAN2")) / 15),
                                      static_cast<int>(row.number(QStringLiteral("DATAN3")) / 15)),
                               row.text(QStringLiteral("DATAS2")).toInt(), row.text(QStringLiteral("MEMO1"))};
        }
        data.services.connection.reset();

        // A second copy on the same folder says so and ends; the first runs on.
        QProcess second;
        second.setProcessEnvironment(m_desktop.environment());
        second.start(VerdalyProgram(), {QStringLiteral("--data-dir"), data.services.dataDir});
        QStringList box;
        QVERIFY2(WaitUntil([&] { return !(box = m_desktop.visibleWindows(second.processId())).isEmpty(); }, 20000, 100),
                 "the second copy showed no message");
        // The box may not take keys the moment it is mapped: press Return until it ends. It is
        // activated and pressed as a person would; a key sent to its window directly left the
        // later keys of this display unheard.
        QVERIFY2(WaitUntil(
                     [&] {
                         xdotool(Args({"windowactivate", "--sync", box.first(), "key", "Return"}));
                         return second.waitForFinished(1000);
                     },
                     20000, 100),
                 "the second copy did not end");
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(again.state(), QProcess::Running);
        again.terminate();
        QVERIFY(again.waitForFinished(15000));
        QCOMPARE(again.exitCode(), 0);

        QCOMPARE(Described(stored, true), Described(before, true));
        QCOMPARE(Described(after, false), Described(stored, false));
    }

private:
    QString xdotool(const QStringList& arguments) { return m_desktop.run(QStringLiteral("xdotool"), arguments); }
    // The first visible window xdotool finds with these search options.
    QString search(const QStringList& options)
    {
        return xdotool(QStringList{"search", "--onlyvisible"} + options).section(QLatin1Char('\n'), 0, 0);
    }
    // The program's windows whose title matches the pattern: "^付箋$" for the notes, "/"
    // for the calendar (its title is the selected day).
    QStringList windows(qint64 pid, const QString& title)
    {
        return xdotool(Args({"search", "--all", "--onlyvisible", "--pid", pid, "--name", title}))
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    QRect geometryOf(const QString& window)
    {
        const QString shell = xdotool(Args({"getwindowgeometry", "--shell", window}));
        const auto value = [&shell](const char* key) {
            return QRegularExpression(QString::fromLatin1(key) + QStringLiteral("=(-?\\d+)"))
                .match(shell)
                .captured(1)
                .toInt();
        };
        return QRect(value("X"), value("Y"), value("WIDTH"), value("HEIGHT"));
    }
    // Every note's place, and its colour read off the screen with the note raised on top.
    QList<SeenNote> seeNotes(qint64 pid)
    {
        QList<SeenNote> seen;
        for (const QString& window : windows(pid, QStringLiteral("^付箋$"))) {
            xdotool(Args({"windowraise", window}));
            QTest::qWait(50);
            SeenNote note{window, geometryOf(window).topLeft(), -1, QString()};
            // The colour strip runs along the top edge, inside the hairline border.
            const QPoint strip = note.place + QPoint(30, 5);
            const QString pixel =
                m_desktop.run(QStringLiteral("import"),
                              Args({"-window", "root", "-crop",
                                    QStringLiteral("1x1+%1+%2").arg(strip.x()).arg(strip.y()), "-depth", 8, "txt:-"}));
            const QString hex = QRegularExpression(QStringLiteral("#([0-9A-Fa-f]{6})")).match(pixel).captured(1);
            // The colour index whose strip shows this pixel (-1 for none of the seven).
            for (const StickyNoteColor& entry : StickyNoteColorsInMenuOrder()) {
                if (entry.color.rgb() == (hex.toUInt(nullptr, 16) | 0xFF000000u))
                    note.colour = entry.index;
            }
            seen << note;
        }
        return seen;
    }
    void start(QProcess& calendar, const QString& dataDir)
    {
        calendar.setProcessEnvironment(m_desktop.environment());
        calendar.start(VerdalyProgram(), {QStringLiteral("--data-dir"), dataDir});
        QVERIFY(calendar.waitForStarted());
        QTRY_VERIFY2_WITH_TIMEOUT(!windows(calendar.processId(), QStringLiteral("/")).isEmpty(), "no calendar", 20000);
    }

    DesktopSession m_desktop;
    xcb_connection_t* m_otherClient = nullptr;
};

VERDALY_TEST(TestDesktopEndToEnd)
#include "TestDesktopEndToEnd.moc"
