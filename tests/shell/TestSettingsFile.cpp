// What one run hands to the next in the settings file and the data folder: the window's
// placement in twips, read back however the file was left, and written whole or not at all.
#include "common/Units.h"
#include "shell/DataFolder.h"
#include "shell/WindowPlacement.h"
#include "support/TestKit.h"

#include <QtTest>

#include <csignal>
#include <sys/resource.h>

class TestSettingsFile final : public QObject
{
    Q_OBJECT

private slots:
    // The expected twips of the tables below are those of 96 dpi, 15 to a pixel.
    void initTestCase() { QCOMPARE(Units::LogicalDpi(), 96.0); }

    void units_data()
    {
        QTest::addColumn<double>("dpi");
        QTest::addColumn<int>("pixels");
        QTest::addColumn<int>("twips");
        // clang-format off
        QTest::newRow("96 dpi") << 96.0 << 100 << 1500;
        QTest::newRow("120 dpi") << 120.0 << 100 << 1200;
        QTest::newRow("144 dpi") << 144.0 << 100 << 1000;
        QTest::newRow("144 dpi, odd pixel") << 144.0 << 7 << 70;
        QTest::newRow("96 dpi, negative") << 96.0 << -3 << -45;
        // clang-format on
    }
    void units()
    {
        QFETCH(double, dpi);
        QFETCH(int, pixels);
        QFETCH(int, twips);
        QCOMPARE(Units::PixelsToTwips(pixels, dpi), twips);
        QCOMPARE(Units::TwipsToPixels(twips, dpi), pixels);
        // Twips stored by another screen round to the nearest pixel.
        QCOMPARE(Units::TwipsToPixels(twips + 1440 * 0.4 / dpi, dpi), pixels);
        QCOMPARE(Units::ColorFromStored(0x563412), QColor(0x12, 0x34, 0x56));
        QCOMPARE(Units::ColorToStored(QColor(0x12, 0x34, 0x56)), 0x563412);
    }

    // A window designed at (10, 20) 150 x 120 takes what the file says and keeps the rest;
    // what it then saves replaces its section whole, or leaves the file as it was.
    void placementFile_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<int>("writableBytes"); // how much the disk takes; 0 = no limit
        QTest::addColumn<QRect>("restored");
        QTest::addColumn<QByteArray>("after"); // "=" : byte-identical to before
        const QByteArray old(
            "; mine\n[Other]\nA=1\n\n[frmMAIN]\nTop=1500\nLeft=3000\nHeight=3000\nWidth=4500\nStale=x\n");
        const QRect designed(10, 20, 150, 120);
        const QByteArray kept("[frmMAIN]\nTop=300\nLeft=150\nHeight=1800\nWidth=2250\n");
        // clang-format off
        QTest::newRow("no file") << QByteArray() << 0 << designed << kept;
        QTest::newRow("all four, the rest of the file kept") << old << 0 << QRect(200, 100, 300, 200) << QByteArray("; mine\n[Other]\nA=1\n\n[frmMAIN]\nTop=1500\nLeft=3000\nHeight=3000\nWidth=4500\n");
        QTest::newRow("full disk keeps the old file") << old << 8 << QRect(200, 100, 300, 200) << QByteArray("=");
        QTest::newRow("disk full halfway keeps the old file") << old << 60 << QRect(200, 100, 300, 200) << QByteArray("=");
        QTest::newRow("only top and left keep the designed size") << QByteArray("[frmMAIN]\nTop=1500\nLeft=3000\n") << 0 << QRect(200, 100, 150, 120) << QByteArray("[frmMAIN]\nTop=1500\nLeft=3000\nHeight=1800\nWidth=2250\n");
        QTest::newRow("fraction read as a whole number") << QByteArray("[frmMAIN]\nTop=1500.4\nLeft=2999.6\nWidth=3000\n") << 0 << QRect(200, 100, 200, 120) << QByteArray("[frmMAIN]\nTop=1500\nLeft=3000\nHeight=1800\nWidth=3000\n");
        QTest::newRow("not a number is ignored") << QByteArray("[frmMAIN]\nTop=abc\nLeft=150\nHeight=zz\n") << 0 << designed << kept;
        QTest::newRow("value cut at NUL") << QByteArray("[frmMAIN]\nTop=1500\0zz\n", 22) << 0 << QRect(10, 100, 150, 120) << QByteArray("[frmMAIN]\nTop=1500\nLeft=150\nHeight=1800\nWidth=2250\n");
        QTest::newRow("empty value") << QByteArray("[frmMAIN]\nTop=\nLeft=150\n") << 0 << designed << kept;
        QTest::newRow("key of another section") << QByteArray("[Other]\nTop=1500\n[frmMAIN]\nLeft=150\n") << 0 << designed << QByteArray("[Other]\nTop=1500\n[frmMAIN]\nTop=300\nLeft=150\nHeight=1800\nWidth=2250\n");
        QTest::newRow("section and key in any case") << QByteArray("[FRMMAIN]\ntop = 1500\n") << 0 << QRect(10, 100, 150, 120) << QByteArray("[FRMMAIN]\nTop=1500\nLeft=150\nHeight=1800\nWidth=2250\n");
        // clang-format on
    }
    void placementFile()
    {
        QFETCH(QByteArray, before);
        QFETCH(int, writableBytes);
        QFETCH(QRect, restored);
        QFETCH(QByteArray, after);
        QTemporaryDir dir;
        const QString ini = dir.filePath(QStringLiteral("dayvane.ini"));
        if (!before.isEmpty()) {
            QFile file(ini);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(before);
        }
        QWidget window;
        window.setGeometry(10, 20, 150, 120);
        RestoreWindowPlacement(window, ini, QStringLiteral("frmMAIN"));
        QCOMPARE(window.frameGeometry(), restored);
        // A full disk: every write past writableBytes fails while the placement is saved.
        rlimit unlimited{};
        getrlimit(RLIMIT_FSIZE, &unlimited);
        rlimit limit = unlimited;
        if (writableBytes > 0)
            limit.rlim_cur = static_cast<rlim_t>(writableBytes);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        SaveWindowPlacement(window, ini, QStringLiteral("frmMAIN"));
        setrlimit(RLIMIT_FSIZE, &unlimited);
        std::signal(SIGXFSZ, handler);
        QCOMPARE(FileBytes(ini), after == "=" ? before : after);
        // Nothing half-written is left beside it.
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("dayvane.ini")});
    }

    void dataFolder_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("databaseBesideProgram");
        QTest::addColumn<QString>("expected"); // "ARG", "EXE" or "USER"
        // clang-format off
        QTest::newRow("given folder beats a portable install") << QStringList{"--data-dir", "ARG"} << true << "ARG";
        QTest::newRow("portable install") << QStringList{} << true << "EXE";
        QTest::newRow("dangling option") << QStringList{"--data-dir"} << false << "USER";
        // clang-format on
    }
    void dataFolder()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, databaseBesideProgram);
        QFETCH(QString, expected);
        QStandardPaths::setTestModeEnabled(true);
        QTemporaryDir dir;
        const QString exeDir = dir.filePath(QStringLiteral("bin"));
        const QString argDir = dir.filePath(QStringLiteral("given/nested"));
        QDir().mkpath(exeDir);
        if (databaseBesideProgram) {
            QFile db(QDir(exeDir).filePath(QStringLiteral("QMCalendar.mdb")));
            QVERIFY(db.open(QIODevice::WriteOnly));
        }
        QStringList args{QStringLiteral("verdaly")};
        for (const QString& a : arguments)
            args << QString(a).replace(QStringLiteral("ARG"), argDir);
        const QString resolved = ResolveDataDir(args, exeDir);
        const QString want = expected == QStringLiteral("ARG") ? argDir
                             : expected == QStringLiteral("EXE")
                                 ? exeDir
                                 : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        QCOMPARE(resolved, QDir::cleanPath(want));
        QVERIFY(QFileInfo(resolved).isDir());
    }
};

VERDALY_TEST(TestSettingsFile)
#include "TestSettingsFile.moc"
