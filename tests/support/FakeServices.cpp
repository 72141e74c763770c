#include "support/FakeServices.h"

#include "store/StartingDatabase.h"

#include <QtTest>

TestEnvironment::TestEnvironment(bool withDatabase)
{
    QStandardPaths::setTestModeEnabled(true);
    services.dataDir = dir.path();
    services.clock = &clock;
    services.prompter = &prompter;
    services.random = &random;
    services.datePicker = &datePicker;
    services.urlOpener = &urlOpener;
    services.launcher = &launcher;
    services.colorPicker = &colorPicker;
    services.fontPicker = &fontPicker;
    services.filePicker = &filePicker;
    services.hotKeys = &hotKeys;
    if (withDatabase) {
        QString error;
        if (!CreateStartingDatabase(services.databasePath(), &error))
            qFatal("cannot build the starting database: %s", qPrintable(error));
        open();
    }
}

void TestEnvironment::open()
{
    services.connection = OpenDatabaseConnection(services.databasePath(), QString());
}

qint64 TestEnvironment::scalar(const QString& sql)
{
    const Rows rows = db().ReadRows(sql);
    if (rows.empty())
        return -1;
    return rows.front().number(QStringLiteral("V"));
}

int TestEnvironment::count(const QString& table, const QString& where)
{
    QString sql = QStringLiteral("SELECT COUNT(*) AS V FROM ") + table;
    if (!where.isEmpty())
        sql += QStringLiteral(" WHERE ") + where;
    return static_cast<int>(scalar(sql));
}

void DowngradeDatabase(DatabaseConnection& db, int version)
{
    if (version <= 11) {
        db.ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE IN (314, 315, 316, 80907)"));
    }
    if (version <= 10) {
        db.ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE 82000 <= CODE AND CODE < 82999"));
        db.ExecuteSql(QStringLiteral("DELETE FROM TRNCOLOR WHERE CODE = 135"));
        db.ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET SPOT = '祝日・休日' WHERE CODE = 130"));
    }
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = 10").arg(version));
}
