// What one run hands to the next: the settings file, written whole or not at all.
#include "common/Units.h"
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

VERDALY_TEST(TestWhatExitKeeps)
#include "TestWhatExitKeeps.moc"
