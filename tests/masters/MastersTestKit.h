#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

class DatabaseConnection;
class QListWidget;
class QPushButton;

// A control of a dialog, found by its name; a missing control ends the run with its name.
template <class T> T* control(QWidget* dialog, const char* name)
{
    T* found = dialog->findChild<T*>(QString::fromLatin1(name));
    if (!found)
        qFatal("control %s not found in %s", name, qPrintable(dialog->objectName()));
    return found;
}

QPushButton* button(QWidget* dialog, const char* name);
QStringList lineTexts(const QListWidget* list);
QList<qint64> lineIds(const QListWidget* list);

// What the next one-line edit dialog that opens gets typed into it, and what it showed.
// Arm it before the click that should open the dialog; if the dialog does not open, the
// script stays unused (opened == false).
struct EditScript
{
    QString typed;
    bool pressOk = true;

    bool opened = false;
    QString title;
    QString initialText;
    // The dialog refused OK and had to be cancelled to go on.
    bool refused = false;
};
void armEdit(const std::shared_ptr<EditScript>& script);
// Lets a timer armed by armEdit fire even when no dialog opened, so it cannot leak into
// the next test.
void settle();

// Records every row written to a table from now on, through temporary triggers, as
// "INSERT <key>", "UPDATE <key>", "DELETE <key>" lines; keyColumn names the row.
class WriteLog final
{
public:
    WriteLog(DatabaseConnection& db, const QString& table, const QString& keyColumn);
    QStringList lines() const;

private:
    DatabaseConnection& m_db;
};

void addClass(DatabaseConnection& db, qint64 id, const QString& name, int sortKey);
// An entry of kind data ('1' schedule, '2' task) filed under classId.
void addEntry(DatabaseConnection& db, qint64 id, const QString& data, qint64 classId);
// Class names by ID order, as "ID:NAME:SORTKEY".
QStringList classRows(DatabaseConnection& db);
QStringList priorityNames(DatabaseConnection& db);
