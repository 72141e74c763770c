// The real program under a real window manager, started and stopped again and again: the
// window comes back exactly where and as big as it was, maximised or not, and always on
// its screen.
#include "shell/IniFile.h"
#include "support/DesktopSession.h"
#include "support/TestKit.h"

#include <QtTest>

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>

namespace {

const QString Section = QStringLiteral("frmMAIN");

} // namespace

class TestPlacementUnderWindowManager final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QString why;
        QVERIFY2(m_desktop.startDisplay(&why, QStringLiteral("1280x1024"), true), qPrintable(why));
    }
    void restarts_data()
    {
        QTest::addColumn<QByteArray>("ini");      // the file before the first start ("" = none)
        QTest::addColumn<bool>("hugeFont");       // every design row at 72 points
        QTest::addColumn<QString>("firstAction"); // done to the window in the first run
        QTest::addColumn<int>("cycles");
        QTest::addColumn<bool>("maximisedAfter");
        const QByteArray placed("[frmMAIN]\nTop=1800\nLeft=3000\nHeight=6000\nWidth=4500\n");
        // clang-format off
        QTest::newRow("first start, twenty cycles") << QByteArray() << false << "" << 20 << false;
        QTest::newRow("placed window stays placed") << placed << false << "" << 3 << false;
        QTest::newRow("maximised exit keeps the normal placement") << placed << false << "maximise" << 3 << true;
        QTest::newRow("placement off the screen comes back on it") << QByteArray("[frmMAIN]\nTop=30000\nLeft=30000\nHeight=6000\nWidth=4500\n") << false << "" << 2 << false;
        QTest::newRow("huge font still fits the screen") << QByteArray() << true << "" << 2 << false;
        // clang-format on
    }
    void restarts()
    {
        QFETCH(QByteArray, ini);
        QFETCH(bool, hugeFont);
        QFETCH(QString, firstAction);
        QFETCH(int, cycles);
        QFETCH(bool, maximisedAfter);

        TestEnvironment env;
        if (hugeFont)
            env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET FSIZE = 72"));
        env.services.connection.reset();
        const QString iniPath = env.services.iniPath();
        if (!ini.isEmpty())
            QVERIFY(WriteFile(iniPath, ini));
        const QRect screen(0, 0, 1280, 1024);
        QStringList firstSaved;
        for (int cycle = 0; cycle < cycles; ++cycle) {
            bool maximised = false;
            QRect frame;
            runOnce(env.services.dataDir, cycle == 0 ? firstAction : QString(), cycle > 0 && maximisedAfter, &maximised,
                    &frame);
            if (QTest::currentTestFailed())
                return;
            const QStringList saved =
                QString::fromUtf8(FileBytes(iniPath)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
            const QString where = QStringLiteral("cycle %1: %2").arg(cycle).arg(saved.join(QLatin1Char(' ')));
            QVERIFY2(screen.contains(frame), qPrintable(where + QStringLiteral(" frame ") + QDebug::toString(frame)));
            if (cycle > 0)
                QCOMPARE(maximised, maximisedAfter);
            // One section: the four values, and the maximised mark when it was maximised.
            QCOMPARE(saved.size(), (cycle == 0 ? maximised : maximisedAfter) ? 6 : 5);
            if (cycle == 0) {
                firstSaved = saved;
                if (!ini.isEmpty() && !hugeFont && !ini.contains("30000"))
                    QCOMPARE(saved.mid(0, 5).join(QLatin1Char('\n')).toUtf8() + '\n', ini);
            } else {
                QVERIFY2(saved == firstSaved,
                         qPrintable(where + QStringLiteral(" | first: ") + firstSaved.join(QLatin1Char(' '))));
            }
        }
        const QRect saved(ReadIniValue(iniPath, Section, QStringLiteral("Left")).toInt() / 15,
                          ReadIniValue(iniPath, Section, QStringLiteral("Top")).toInt() / 15,
                          ReadIniValue(iniPath, Section, QStringLiteral("Width")).toInt() / 15,
                          ReadIniValue(iniPath, Section, QStringLiteral("Height")).toInt() / 15);
        QVERIFY(screen.contains(saved));
    }

private:
    // Starts the program, lets it settle, acts on its window, then stops it as the desktop would.
    void runOnce(const QString& dataDir, const QString& action, bool expectMaximised, bool* wasMaximised, QRect* frame)
    {
        QProcess program;
        program.setProcessEnvironment(m_desktop.environment());
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(VerdalyProgram(), {QStringLiteral("--data-dir"), dataDir});
        QVERIFY(program.waitForStarted());
        // The calendar by its title (the selected day): the tray icon is a window of the
        // program's too, and may be found first.
        QString window;
        QVERIFY2(WaitUntil(
                     [&] {
                         window =
                             m_desktop
                                 .run(QStringLiteral("xdotool"), {"search", "--all", "--onlyvisible", "--pid",
                                                                  QString::number(program.processId()), "--name", "/"})
                                 .section(QLatin1Char('\n'), 0, 0);
                         return !window.isEmpty();
                     },
                     20000, 100),
                 "no window appeared");
        QTest::qWait(1500); // the frame arrives and the size is made exact
        const auto maximised = [&] {
            return m_desktop
                .run(QStringLiteral("xprop"), {QStringLiteral("-id"), window, QStringLiteral("_NET_WM_STATE")})
                .contains(QLatin1String("_NET_WM_STATE_MAXIMIZED_VERT"));
        };
        if (action == QLatin1String("maximise")) {
            // Maximised the way a taskbar asks the manager to (a key for the manager may be
            // lost while a busy machine has not yet given the window the focus).
            QVERIFY(askManagerToMaximise(window.toUInt()));
            QVERIFY(WaitUntil(maximised, 10000, 100));
            QTest::qWait(500);
        }
        // A busy machine may take a while to hand the maximised state to the manager; a window
        // that should come back maximised is given that while, one that should not is read now.
        *wasMaximised = expectMaximised ? WaitUntil(maximised, 10000, 100) : maximised();
        // The frame window is the client's parent's parent under a reparenting manager; the
        // extents give it from the client's own geometry.
        const QString info = m_desktop.run(QStringLiteral("xwininfo"), {QStringLiteral("-id"), window});
        const QString extents = m_desktop.run(QStringLiteral("xprop"),
                                              {QStringLiteral("-id"), window, QStringLiteral("_NET_FRAME_EXTENTS")});
        const auto field = [&info](const char* name) {
            const QRegularExpression re(QString::fromLatin1(name) + QStringLiteral(":\\s*(-?\\d+)"));
            return re.match(info).captured(1).toInt();
        };
        const QStringList e = extents.section(QLatin1Char('='), 1).split(QLatin1Char(','));
        const int l = e.value(0).trimmed().toInt(), r = e.value(1).trimmed().toInt();
        const int t = e.value(2).trimmed().toInt(), b = e.value(3).trimmed().toInt();
        *frame = QRect(field("Absolute upper-left X") - l, field("Absolute upper-left Y") - t, field("Width") + l + r,
                       field("Height") + t + b);
        program.terminate();
        QVERIFY(program.waitForFinished(15000));
        QCOMPARE(program.exitCode(), 0);
    }

    bool askManagerToMaximise(xcb_window_t window)
    {
        xcb_connection_t* x = xcb_connect(m_desktop.display().toLatin1().constData(), nullptr);
        const auto atom = [x](const char* name) {
            xcb_intern_atom_reply_t* reply =
                xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, std::strlen(name), name), nullptr);
            xcb_atom_t value = XCB_ATOM_NONE;
            if (reply)
                value = reply->atom;
            std::free(reply);
            return value;
        };
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = atom("_NET_WM_STATE");
        message.data.data32[0] = 1; // add
        message.data.data32[1] = atom("_NET_WM_STATE_MAXIMIZED_VERT");
        message.data.data32[2] = atom("_NET_WM_STATE_MAXIMIZED_HORZ");
        message.data.data32[3] = 2; // from a pager or taskbar
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
        xcb_generic_error_t* error = xcb_request_check(
            x, xcb_send_event_checked(x, 0, root,
                                      XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                                      reinterpret_cast<const char*>(&message)));
        const bool sent = !xcb_connection_has_error(x) && !error;
        std::free(error);
        xcb_disconnect(x);
        return sent;
    }

    DesktopSession m_desktop;
};

VERDALY_TEST(TestPlacementUnderWindowManager)
#include "TestPlacementUnderWindowManager.moc"
