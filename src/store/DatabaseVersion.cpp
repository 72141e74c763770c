#include "store/DatabaseVersion.h"

#include "common/Clock.h"
#include "store/DatabaseConnection.h"
#include "store/SqlText.h"
#include "store/StoreLog.h"

namespace {

const QString InsertGeneral = QStringLiteral(
    "INSERT INTO TRNGENERAL (CODE,DATAS1,DATAS2,DATAS3,DATAS4,DATAS5,DATAN1,DATAN2,DATAN3,DATAN4,DATAN5,MEMO1,UPDTIME) "
    "VALUES ( ");

} // namespace

void CheckDatabaseVersion(DatabaseConnection& db, const Clock& clock)
{
    const Rows rows = db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 10 "));
    if (rows.empty())
        return;
    const qint64 version = rows.front().number(QStringLiteral("DATAN1"));
    if (version == 10) {
        qCInfo(lcStore) << "upgrading database from version 10";
        UpgradeToVersion11(db, clock);
        UpgradeToVersion12(db, clock);
    } else if (version == 11) {
        qCInfo(lcStore) << "upgrading database from version 11";
        UpgradeToVersion12(db, clock);
    }
    AddEraTitleChoice(db, clock);
}

void AddEraTitleChoice(DatabaseConnection& db, const Clock& clock)
{
    // The era title ("令和8年11月") came after version 12 and changes no layout, so it is a
    // choice row added once to any database that lacks it rather than a new version.
    if (!db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 80607 ")).empty())
        return;
    db.ExecuteSql(InsertGeneral + QStringLiteral("80607, ") + QuoteText(QStringLiteral("gge年m月")) +
                  QStringLiteral(", '', '', '', '', 80607, 0, 0, 0, 0, '', ") + DateLiteral(clock.now()) +
                  QStringLiteral(" ) "));
}

void UpgradeToVersion11(DatabaseConnection& db, const Clock& clock)
{
    const QString stamp = DateLiteral(clock.now());
    const struct
    {
        int code;
        const char* name;
    } hotKeys[] = {
        {82010, "カレンダー表示"}, {82020, "スケジュール入力"}, {82030, "タスク入力"},
        {82040, "付箋新規作成"},   {82050, "スケジュール一覧"},
    };
    for (const auto& key : hotKeys) {
        db.ExecuteSql(InsertGeneral + QString::number(key.code) + QStringLiteral(", ") +
                      QuoteText(QString::fromUtf8(key.name)) + QStringLiteral(", '', '', '', '', 0, 0, 0, 0, 0, '', ") +
                      stamp + QStringLiteral(" ) "));
    }
    db.ExecuteSql(QStringLiteral(
        "INSERT INTO TRNCOLOR (CODE,SETNUM,SPOT,SETBCOLOR,SETFONT,SETFCOLOR,BACKCOLOR,FOREFONT,FSIZE,FBOLD,FITALIC,"
        "FORECOLOR,DBACKCOLOR,DFOREFONT,DFSIZE,DFBOLD,DFITALIC,DFORECOLOR,UPDTIME) "
        "SELECT 135, 0, '祝日',SETBCOLOR,SETFONT,SETFCOLOR,BACKCOLOR,FOREFONT,FSIZE,FBOLD,FITALIC,FORECOLOR,"
        "DBACKCOLOR,DFOREFONT,DFSIZE,DFBOLD,DFITALIC,DFORECOLOR,UPDTIME FROM TRNCOLOR WHERE CODE = 130 AND SETNUM = "
        "0 "));
    db.ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET SPOT = '休日' WHERE CODE = 130 AND SETNUM = 0 "));
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 11 WHERE CODE = 10 "));
}

void UpgradeToVersion12(DatabaseConnection& db, const Clock& clock)
{
    const QString stamp = DateLiteral(clock.now());
    for (int code : {314, 315, 316}) {
        db.ExecuteSql(InsertGeneral + QString::number(code) +
                      QStringLiteral(", '', '', '', '', '', 0, 0, 0, 0, 0, '', ") + stamp + QStringLiteral(" ) "));
    }
    db.ExecuteSql(InsertGeneral + QStringLiteral("80907, ") + QuoteText(QStringLiteral("０分前")) +
                  QStringLiteral(", '', '', '', '', 0, 0, 0, 0, 0, '', ") + stamp + QStringLiteral(" ) "));
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 12 WHERE CODE = 10 "));
}
