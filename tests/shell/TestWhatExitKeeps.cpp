// What one run hands to the next: the settings file, written whole or not at all, and
// the sticky notes that were open, written back as they were read.
#include "common/Units.h"
#include "mainwindow/FrmMain.h"
#include "shell/WindowPlacement.h"
#include "support/TestKit.h"

#include <QtTest>

#include <csignal>
#include <sys/resource.h>

namespace {

QByteArray FileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no file>");
}

// Makes every file write past `bytes` fail, as a full disk does, until it goes out of scope.
class FileSizeLimit final
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = m_old;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};

} // namespace

class TestWhatExitKeeps : public QObject
{
    Q_OBJECT

private slots:
    void settingsFile_data();
    void settingsFile();
    void openNotesSurviveAStartAndAnExit_data();
    void openNotesSurviveAStartAndAnExit();
};

void TestWhatExitKeeps::settingsFile_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("writableBytes"); // how much the disk takes; 0 = no limit
    QTest::addColumn<QByteArray>("after");  // "=" : byte-identical to before
    const QByteArray old("; mine\n[Other]\nA=1\n\n[frmMAIN]\nTop=15\nLeft=30\nHeight=4500\nWidth=3000\nStale=x\n");
    // clang-format off
    QTest::newRow("no file yet") << QByteArray() << 0 << QByteArray("[frmMAIN]\nTop=1500\nLeft=3000\nHeight=3000\nWidth=4500\n");
    QTest::newRow("section replaced whole, the rest kept") << old << 0 << QByteArray("; mine\n[Other]\nA=1\n\n[frmMAIN]\nTop=1500\nLeft=3000\nHeight=3000\nWidth=4500\n");
    QTest::newRow("full disk keeps the old file") << old << 8 << QByteArray("=");
    QTest::newRow("disk full halfway keeps the old file") << old << 60 << QByteArray("=");
    // clang-format on
}

void TestWhatExitKeeps::settingsFile()
{
    QFETCH(QByteArray, before);
    QFETCH(int, writableBytes);
    QFETCH(QByteArray, after);
    if (!qFuzzyCompare(Units::LogicalDpi(), 96.0))
        QSKIP("the expected twips are for 96 dpi");
    QTemporaryDir dir;
    const QString ini = dir.filePath(QStringLiteral("dayvane.ini"));
    if (!before.isEmpty()) {
        QFile file(ini);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(before);
    }
    QWidget window;
    window.setGeometry(200, 100, 300, 200);
    {
        std::unique_ptr<FileSizeLimit> limit;
        if (writableBytes > 0)
            limit = std::make_unique<FileSizeLimit>(static_cast<rlim_t>(writableBytes));
        SaveWindowPlacement(window, ini, QStringLiteral("frmMAIN"));
    }
    QCOMPARE(FileBytes(ini), after == "=" ? before : after);
    // Nothing half-written is left beside it.
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("dayvane.ini")});
}

void TestWhatExitKeeps::openNotesSurviveAStartAndAnExit_data()
{
    QTest::addColumn<QStringList>("notes"); // slot|colour|left|top|text of each open note
    // clang-format off
    QTest::newRow("two notes, apostrophe and two lines") << QStringList{"1|0|300|300|it's", "2|5|4500|600|一行目\n二行目"};
    QTest::newRow("empty note") << QStringList{"1|2|150|150|"};
    // clang-format on
}

void TestWhatExitKeeps::openNotesSurviveAStartAndAnExit()
{
    QFETCH(QStringList, notes);
    TestEnvironment env;
    for (const QString& note : notes) {
        const QStringList f = note.split(QLatin1Char('|'));
        env.db().ExecuteSql(
            QStringLiteral("UPDATE TRNGENERAL SET DATAS2 = '%1', DATAS3 = '1', DATAN2 = %2, "
                           "DATAN3 = %3, MEMO1 = '%4' WHERE CODE = 501 AND DATAN1 = %5")
                .arg(f[1], f[2], f[3], QString(f[4]).replace(QLatin1Char('\''), QLatin1String("''")), f[0]));
    }
    const QStringList columns{QStringLiteral("DATAN1"), QStringLiteral("DATAS2"), QStringLiteral("DATAS3"),
                              QStringLiteral("DATAN2"), QStringLiteral("DATAN3"), QStringLiteral("MEMO1")};
    const QString rowsSql = QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 ORDER BY DATAN1");
    const QStringList before = Lines(env.db(), rowsSql, columns);
    env.services.connection.reset();
    {
        FrmMain main(env.services);
        QVERIFY(main.Form_Load());
        main.Form_Unload();
    }
    env.open();
    QCOMPARE(Lines(env.db(), rowsSql, columns), before);
}

VERDALY_TEST(TestWhatExitKeeps)
#include "TestWhatExitKeeps.moc"
