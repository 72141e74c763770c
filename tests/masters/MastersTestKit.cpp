#include "MastersTestKit.h"

#include "masters/FrmEdit.h"
#include "store/DatabaseConnection.h"
#include "store/SqlText.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

QPushButton* button(QWidget* dialog, const char* name)
{
    return control<QPushButton>(dialog, name);
}

QStringList lineTexts(const QListWidget* list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->item(i)->text();
    return texts;
}

QList<qint64> lineIds(const QListWidget* list)
{
    QList<qint64> ids;
    for (int i = 0; i < list->count(); ++i)
        ids << list->item(i)->data(Qt::UserRole).toLongLong();
    return ids;
}

void armEdit(const std::shared_ptr<EditScript>& script)
{
    QTimer::singleShot(0, qApp, [script] {
        FrmEdit* edit = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* candidate = qobject_cast<FrmEdit*>(widget); candidate && candidate->isVisible())
                edit = candidate;
        }
        if (!edit)
            return;
        script->opened = true;
        script->title = edit->windowTitle();
        auto* text = control<QLineEdit>(edit, "TxtEdit");
        script->initialText = text->text();
        text->setText(script->typed);
        button(edit, script->pressOk ? "ComOK" : "ComCancel")->click();
        if (edit->isVisible()) {
            script->refused = true;
            edit->reject();
        }
    });
}

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

WriteLog::WriteLog(DatabaseConnection& db, const QString& table, const QString& keyColumn) : m_db(db)
{
    m_db.ExecuteSql(QStringLiteral("CREATE TEMP TABLE IF NOT EXISTS WRITELOG (N INTEGER PRIMARY KEY, LINE TEXT)"));
    const QString body = QStringLiteral("CREATE TEMP TRIGGER WRITELOG_%1_%2 AFTER %2 ON %1 BEGIN "
                                        "INSERT INTO WRITELOG (LINE) VALUES ('%2 ' || %3.%4); END");
    m_db.ExecuteSql(body.arg(table, QStringLiteral("INSERT"), QStringLiteral("NEW"), keyColumn));
    m_db.ExecuteSql(body.arg(table, QStringLiteral("UPDATE"), QStringLiteral("NEW"), keyColumn));
    m_db.ExecuteSql(body.arg(table, QStringLiteral("DELETE"), QStringLiteral("OLD"), keyColumn));
}

QStringList WriteLog::lines() const
{
    QStringList lines;
    for (const Row& row : m_db.ReadRows(QStringLiteral("SELECT LINE FROM WRITELOG ORDER BY N")))
        lines << row.text(QStringLiteral("LINE"));
    return lines;
}

void addClass(DatabaseConnection& db, qint64 id, const QString& name, int sortKey)
{
    db.ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS,SORTKEY) VALUES (%1, %2, %3)")
                      .arg(id)
                      .arg(QuoteText(name))
                      .arg(sortKey));
}

void addEntry(DatabaseConnection& db, qint64 id, const QString& data, qint64 classId)
{
    db.ExecuteSql(QStringLiteral("INSERT INTO TRNSCHTSK (ID,DATA,BUSINESS,STARTDT,ENDDT,CLASS,FROMTOKBN,UPDTIME) "
                                 "VALUES (%1, %2, 'entry', '20261122', '20261122', %3, %4, '2026/11/22 09:30:00')")
                      .arg(id)
                      .arg(QuoteText(data))
                      .arg(classId)
                      .arg(QuoteText(data == QLatin1String("1") ? QStringLiteral("A1") : QStringLiteral("T1"))));
}

QStringList classRows(DatabaseConnection& db)
{
    QStringList rows;
    for (const Row& row : db.ReadRows(QStringLiteral("SELECT * FROM MSTCLASS ORDER BY ID")))
        rows << QStringLiteral("%1:%2:%3")
                    .arg(row.number(QStringLiteral("ID")))
                    .arg(row.text(QStringLiteral("CLASS")))
                    .arg(row.number(QStringLiteral("SORTKEY")));
    return rows;
}

QStringList priorityNames(DatabaseConnection& db)
{
    QStringList names;
    for (const Row& row : db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1")))
        names << row.text(QStringLiteral("DATAS1"));
    return names;
}
