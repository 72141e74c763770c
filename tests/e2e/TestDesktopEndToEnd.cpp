// The real program on a real X server and window manager, driven from outside: started and stopped
// again and again, its window comes back where and as big as it was, and on the screen; hot keys
// pressed while another program has the focus (one held by another client); thirty notes typed
// into and one dragged, the program killed or stopped and started again: every note comes back
// with its text, colour and place; and a second copy on the same folder is refused.
#include "common/Clock.h"
#include "notes/StickyNoteColors.h"
#include "shell/IniFile.h"
#include "support/DesktopSession.h"
#include "support/TestKit.h"

#include <QtTest>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <csignal>
#include <cstdlib>

namespace {

// A note as the desktop shows it, or as its row says it is to be shown.
struct SeenNote
{
    QString window, text;
    QPoint place;
    int colour = -1;
};

// The notes as sorted lines, so that two sets compare whatever order they were found in.
QStringList Described(const QList<SeenNote>& notes, bool withText)
{
    QStringList lines;
    for (const SeenNote& note : notes)
        lines << QString("(%1,%2) colour %3 ").arg(note.place.x()).arg(note.place.y()).arg(note.colour) +
                     (withText ? note.text : QString());
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
        QVERIFY2(m_desktop.startDisplay(&why, "1280x1024", true), qPrintable(why));
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

    void restarts_data()
    {
        QTest::addColumn<QByteArray>("ini"); // the file before the first start ("" = none)
        QTest::addColumn<QString>("first");  // "huge font": every design row at 72 points; or done in the first run
        QTest::addColumn<int>("cycles");
        QTest::addColumn<bool>("maximisedAfter");
        const QByteArray placed("[frmMAIN]\nTop=1800\nLeft=3000\nHeight=6000\nWidth=4500\n");
        // clang-format off
        QTest::newRow("first start, twenty cycles") << QByteArray() << "" << 20 << false;
        QTest::newRow("placed window stays placed") << placed << "" << 3 << false;
        QTest::newRow("maximised exit keeps the normal placement") << placed << "maximise" << 3 << true;
        QTest::newRow("placement off the screen comes back on it") << QByteArray("[frmMAIN]\nTop=30000\nLeft=30000\nHeight=6000\nWidth=4500\n") << "" << 2 << false;
        QTest::newRow("huge font still fits the screen") << QByteArray() << "huge font" << 2 << false;
        // clang-format on
    }
    void restarts()
    {
        QFETCH(QByteArray, ini);
        QFETCH(QString, first);
        QFETCH(int, cycles);
        QFETCH(bool, maximisedAfter);

        TestEnvironment env;
        if (first == "huge font")
            env.db().ExecuteSql("UPDATE TRNCOLOR SET FSIZE = 72");
        env.services.connection.reset();
        const QString iniPath = env.services.iniPath();
        if (!ini.isEmpty())
            QVERIFY(WriteFile(iniPath, ini));
        const QRect screen(0, 0, 1280, 1024);
        QStringList firstSaved;
        for (int cycle = 0; cycle < cycles; ++cycle) {
            bool maximised = false;
            QRect frame;
            runOnce(env.services.dataDir, cycle == 0 ? first : QString(), cycle > 0 && maximisedAfter, &maximised,
                    &frame);
            if (QTest::currentTestFailed())
                return;
            const QStringList saved = QString::fromUtf8(FileBytes(iniPath)).split('\n', Qt::SkipEmptyParts);
            const QString where = QString("cycle %1: %2").arg(cycle).arg(saved.join(' '));
            QVERIFY2(screen.contains(frame), qPrintable(where + " frame " + QDebug::toString(frame)));
            if (cycle > 0)
                QCOMPARE(maximised, maximisedAfter);
            // One section: the four values, and the maximised mark when it was maximised.
            QCOMPARE(saved.size(), (cycle == 0 ? maximised : maximisedAfter) ? 6 : 5);
            if (cycle == 0) {
                firstSaved = saved;
                if (!ini.isEmpty() && first != "huge font" && !ini.contains("30000"))
                    QCOMPARE(saved.mid(0, 5).join('\n').toUtf8() + '\n', ini);
            } else {
                QVERIFY2(saved == firstSaved, qPrintable(where + " | first: " + firstSaved.join(' ')));
            }
        }
        const auto pixels = [&iniPath](const char* key) { return ReadIniValue(iniPath, "frmMAIN", key).toInt() / 15; };
        QVERIFY(screen.contains(QRect(pixels("Left"), pixels("Top"), pixels("Width"), pixels("Height"))));
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
        for (const auto& [code, key] : {std::pair{82020, 75}, std::pair{82030, 74}, std::pair{82040, 80}})
            SetGeneral(data.db(), code, {{"DATAN1", key}, {"DATAN2", 6}});
        data.services.connection.reset();
        QProcess calendar;
        QVERIFY2(start(calendar, data.services.dataDir), "no calendar");
        const qint64 pid = calendar.processId();
        // The start reports the combination another program holds.
        QByteArray log;
        const auto held = [&] { return (log += calendar.readAllStandardError()).contains("another program holds it"); };
        QVERIFY2(WaitUntil(held, 20000, 100), log.constData());
        QVERIFY(QString::fromUtf8(log).contains("[Ctrl] + [Alt] + J for タスク入力"));

        // Another program in front; the hot key still reaches the calendar.
        QProcess other;
        other.setProcessEnvironment(m_desktop.environment());
        other.start("xmessage", {"-name", "otherprogram", "another program"});
        const QString otherWindow = waitForWindow({"--classname", "otherprogram"});
        QVERIFY2(!otherWindow.isEmpty(), "the other program showed no window");
        xdotool(Args({"windowactivate", "--sync", otherWindow}));
        QCOMPARE(xdotool(Args({"getactivewindow"})), otherWindow);
        xdotool(Args({"key", "ctrl+alt+k"}));
        const QString editor = waitForWindow(Args({"--pid", pid, "--name", "^スケジュール$"}));
        QVERIFY2(!editor.isEmpty(), "no schedule editor");
        xdotool(Args({"windowactivate", "--sync", editor}));
        xdotool(Args({"type", "--delay", 40, "hotkey"}));
        xdotool(Args({"key", "Return"}));
        const auto editorClosed = [&] { return search({"--name", "^スケジュール$"}).isEmpty(); };
        QVERIFY2(WaitUntil(editorClosed, 20000, 100), "the editor stayed open");
        QCOMPARE(Lines(*OpenDatabaseConnection(data.path(), QString()), "SELECT * FROM TRNSCHTSK",
                       {"BUSINESS", "STARTDT", "DATA"}),
                 QStringList({QString("hotkey|%1|1").arg(SystemClock().today().toString("yyyyMMdd"))}));
        other.terminate();
        other.waitForFinished(5000);

        for (int i = 1; i <= 30; ++i) {
            xdotool(Args({"key", "ctrl+alt+p"}));
            QTRY_COMPARE_WITH_TIMEOUT(windows(pid, "^付箋$").size(), i, 10000);
        }
        // One note dragged by its text, in small steps as a hand moves.
        const QString dragged = windows(pid, "^付箋$").front();
        xdotool(Args({"windowraise", dragged}));
        const QPoint at = geometryOf(dragged).topLeft();
        const QPoint by(at.x() < 400 ? 137 : -137, at.y() < 300 ? 111 : -111);
        QStringList steps = Args({"mousemove", "--window", dragged, 60, 40, "mousedown", 1});
        for (int step = 0; step < 8; ++step)
            steps << Args({"mousemove_relative", "--", by.x() / 8, by.y() / 8, "sleep", 0.05});
        xdotool(steps << Args({"mousemove_relative", "--", by.x() % 8, by.y() % 8, "mouseup", 1}));
        QTRY_COMPARE_WITH_TIMEOUT(geometryOf(dragged).topLeft(), at + by, 5000);

        QList<SeenNote> before = seeNotes(pid);
        // Typing into several notes; the end comes two seconds after the last keystroke.
        const QStringList typed{"it's the first note", "Buy milk\nand eggs", "call Tom's office at 3",
                                "x'; DELETE FROM TRNGENERAL; --", "last words before the end"};
        for (int i = 0; i < typed.size(); ++i) {
            SeenNote& note = before[i * 6 + 1];
            xdotool(Args({"windowactivate", "--sync", note.window}));
            // Line by line: a line break is the Return key ("type" takes every word after it).
            const QStringList lines = typed[i].split('\n');
            for (int line = 0; line < lines.size(); ++line)
                xdotool((line > 0 ? Args({"key", "Return"}) : QStringList()) +
                        Args({"type", "--delay", 15, lines[line]}));
            note.text = typed[i];
        }
        QTest::qWait(2000);
        ::kill(static_cast<pid_t>(pid), ending);
        QVERIFY(calendar.waitForFinished(15000));
        QCOMPARE(calendar.exitStatus(), ending == SIGTERM ? QProcess::NormalExit : QProcess::CrashExit);

        QProcess again;
        QVERIFY2(start(again, data.services.dataDir), "no calendar after the restart");
        QTRY_COMPARE_WITH_TIMEOUT(windows(again.processId(), "^付箋$").size(), 30, 20000);
        const QList<SeenNote> after = seeNotes(again.processId());
        // What each reopened note holds, as the program wrote it back at its start (pixels at 96 dpi).
        QList<SeenNote> stored;
        data.open();
        for (const Row& row : data.db().ReadRows("SELECT * FROM TRNGENERAL WHERE CODE = 501 AND DATAS3 = '1'")) {
            const QPoint place(static_cast<int>(row.number("DATAN2") / 15),
                               static_cast<int>(row.number("DATAN3") / 15));
            stored << SeenNote{QString(), row.text("MEMO1"), place, row.text("DATAS2").toInt()};
        }
        data.services.connection.reset();

        // A second copy on the same folder says so and ends; the first runs on.
        QProcess second;
        second.setProcessEnvironment(m_desktop.environment());
        second.start(VerdalyProgram(), {"--data-dir", data.services.dataDir});
        const QString box = waitForWindow(Args({"--pid", second.processId()}));
        QVERIFY2(!box.isEmpty(), "the second copy showed no message");
        // The box may not take keys the moment it is mapped: press Return until it ends. It is
        // activated and pressed as a person would; a key sent to its window directly left the
        // later keys of this display unheard.
        const auto pressReturn = [&] {
            xdotool(Args({"windowactivate", "--sync", box, "key", "Return"}));
            return second.waitForFinished(1000);
        };
        QVERIFY2(WaitUntil(pressReturn, 20000, 100), "the second copy did not end");
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(again.state(), QProcess::Running);
        again.terminate();
        QVERIFY(again.waitForFinished(15000));
        QCOMPARE(again.exitCode(), 0);

        QCOMPARE(Described(stored, true), Described(before, true));
        QCOMPARE(Described(after, false), Described(stored, false));
    }

private:
    QString xdotool(const QStringList& arguments) { return m_desktop.run("xdotool", arguments); }
    // The first visible window xdotool finds with these search options; the same, waited for.
    QString search(const QStringList& options)
    {
        return xdotool(QStringList{"search", "--all", "--onlyvisible"} + options).section('\n', 0, 0);
    }
    QString waitForWindow(const QStringList& options)
    {
        QString found;
        WaitUntil([&] { return !(found = search(options)).isEmpty(); }, 20000, 100);
        return found;
    }
    // The program's windows whose title matches the pattern: "^付箋$" for the notes, "/"
    // for the calendar (its title is the selected day).
    QStringList windows(qint64 pid, const QString& title)
    {
        return xdotool(Args({"search", "--all", "--onlyvisible", "--pid", pid, "--name", title}))
            .split('\n', Qt::SkipEmptyParts);
    }
    QRect geometryOf(const QString& window)
    {
        QMap<QString, int> g;
        for (const QString& line : xdotool(Args({"getwindowgeometry", "--shell", window})).split('\n'))
            g.insert(line.section('=', 0, 0), line.section('=', 1).toInt());
        return QRect(g["X"], g["Y"], g["WIDTH"], g["HEIGHT"]);
    }
    // Every note's place, and its colour read off the screen with the note raised on top.
    QList<SeenNote> seeNotes(qint64 pid)
    {
        QList<SeenNote> seen;
        for (const QString& window : windows(pid, "^付箋$")) {
            xdotool(Args({"windowraise", window}));
            QTest::qWait(50);
            SeenNote note{window, QString(), geometryOf(window).topLeft()};
            // The colour strip runs along the top edge, inside the hairline border.
            const QPoint strip = note.place + QPoint(30, 5);
            const QString pixel = m_desktop.run(
                "import", Args({"-window", "root", "-crop", QString("1x1+%1+%2").arg(strip.x()).arg(strip.y()),
                                "-depth", 8, "txt:-"}));
            const QString hex = QRegularExpression("#([0-9A-Fa-f]{6})").match(pixel).captured(1);
            // The colour index whose strip shows this pixel (-1 for none of the seven).
            for (const StickyNoteColor& entry : StickyNoteColorsInMenuOrder())
                if (entry.color.rgb() == (hex.toUInt(nullptr, 16) | 0xFF000000u))
                    note.colour = entry.index;
            seen << note;
        }
        return seen;
    }
    // Starts the calendar on the folder; answers whether its window came up.
    bool start(QProcess& calendar, const QString& dataDir)
    {
        calendar.setProcessEnvironment(m_desktop.environment());
        calendar.start(VerdalyProgram(), {"--data-dir", dataDir});
        return calendar.waitForStarted() &&
               WaitUntil([&] { return !windows(calendar.processId(), "/").isEmpty(); }, 20000, 100);
    }

    // Starts the program, lets it settle, acts on its window, then stops it as the desktop would.
    void runOnce(const QString& dataDir, const QString& action, bool expectMaximised, bool* wasMaximised, QRect* frame)
    {
        QProcess program;
        program.setProcessEnvironment(m_desktop.environment());
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(VerdalyProgram(), {"--data-dir", dataDir});
        QVERIFY(program.waitForStarted());
        const QString window = waitForWindow(Args({"--pid", program.processId(), "--name", "/"}));
        QVERIFY2(!window.isEmpty(), "no window appeared");
        QTest::qWait(1500); // the frame arrives and the size is made exact
        const auto maximised = [&] {
            return m_desktop.run("xprop", {"-id", window, "_NET_WM_STATE"}).contains("_NET_WM_STATE_MAXIMIZED_VERT");
        };
        if (action == "maximise") {
            // Maximised the way a taskbar asks the manager to: a key for the manager may be lost
            // while a busy machine has not yet given the window the focus.
            m_desktop.run("wmctrl", {"-i", "-r", window, "-b", "add,maximized_vert,maximized_horz"});
            QVERIFY(WaitUntil(maximised, 10000, 100));
            QTest::qWait(500);
        }
        // A busy machine may take a while to hand the maximised state to the manager; a window
        // that should come back maximised is given that while, one that should not is read now.
        *wasMaximised = expectMaximised ? WaitUntil(maximised, 10000, 100) : maximised();
        // The frame window is the client's parent's parent under a reparenting manager; the
        // extents give it from the client's own geometry.
        const QString info = m_desktop.run("xwininfo", {"-id", window});
        const auto field = [&info](const char* name) {
            return QRegularExpression(QString(name) + ":\\s*(-?\\d+)").match(info).captured(1).toInt();
        };
        // _NET_FRAME_EXTENTS reads "left, right, top, bottom".
        const QStringList e =
            m_desktop.run("xprop", {"-id", window, "_NET_FRAME_EXTENTS"}).section('=', 1).remove(' ').split(',');
        *frame =
            QRect(field("Absolute upper-left X"), field("Absolute upper-left Y"), field("Width"), field("Height")) +
            QMargins(e.value(0).toInt(), e.value(2).toInt(), e.value(1).toInt(), e.value(3).toInt());
        program.terminate();
        QVERIFY(program.waitForFinished(15000));
        QCOMPARE(program.exitCode(), 0);
    }

    DesktopSession m_desktop;
    xcb_connection_t* m_otherClient = nullptr;
};

VERDALY_TEST(TestDesktopEndToEnd)
#include "TestDesktopEndToEnd.moc"
