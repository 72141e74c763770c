#pragma once

// The one kit every test program uses: the fakes and the temporary database (FakeServices.h),
// one way to put rows in, one way to find a control, one way to answer a modal dialog, and
// the registration of a test class with the shared test main.

#include "support/FakeServices.h"

#include <QList>
#include <QPair>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <functional>
#include <memory>

class QListWidget;
class QObject;
class QTimer;

// Each test class ends its .cpp with VERDALY_TEST(Class); the folder's program runs them all.
int RegisterTestClass(const char* name, std::function<QObject*()> make);
#define VERDALY_TEST(Class)                                                                                            \
    static const int Class##Registered = RegisterTestClass(#Class, [] { return static_cast<QObject*>(new Class); });

// One TRNSCHTSK row, its columns in the table's order.
struct StoredEntry
{
    int id = 1;
    QString data = QStringLiteral("1"), business = QStringLiteral("entry"), startDt, startTm, endDt, endTm, endless;
    int classId = 0;
    QString alarm = QStringLiteral("0");
    int priority = 0;
    QString completion, compDt, kind, comment, updTime = QStringLiteral("2006/05/01 12:00:00");
};
// The usual entry: kind, span and subject; tasks (kind T*) get DATA '2', the rest '1'.
StoredEntry Entry(int id, const QString& kind, const QString& startDt, const QString& startTm = QString(),
                  const QString& endDt = QString(), const QString& endTm = QString(),
                  const QString& business = QStringLiteral("entry"));

using Columns = QList<QPair<QString, QVariant>>;
// Any row: texts are quoted, numbers written as they are.
void StoreRow(DatabaseConnection& db, const QString& table, const Columns& columns);
void StoreEntry(DatabaseConnection& db, const StoredEntry& entry);
// The same entry with its alarm set.
StoredEntry WithAlarm(StoredEntry entry);
void StoreClass(DatabaseConnection& db, int id, const QString& name, int sortKey = 0);
// A TRNGENERAL row of code with the given DATA/MEMO columns.
void StoreGeneral(DatabaseConnection& db, int code, const Columns& columns = {});
// Sets columns of the TRNGENERAL rows of code that are already there (the options).
void SetGeneral(DatabaseConnection& db, int code, const Columns& columns);
// A day-off on this month and day of every year, with its remark.
void StoreDayOff(DatabaseConnection& db, int month, int day, const QString& remark = QString());

// The alarm options: advance in minutes (304), balloon (314), sound (316) and its file (315).
void StoreAlarmSettings(DatabaseConnection& db, int advance, bool balloon = false, bool sound = false,
                        const QString& soundFile = QString());

// The whole file, or "<no file>" when it cannot be read.
QByteArray FileBytes(const QString& path);
bool WriteFile(const QString& path, const QByteArray& bytes);

// One column of the entry with this ID, as text ("<no row>" when it is gone).
QString Column(DatabaseConnection& db, int id, const char* column);
// "COL=value" of the entry with this ID for each "COL=..." of pairs, for comparing with pairs.
QStringList EntryColumns(DatabaseConnection& db, int id, const QStringList& pairs);
// Every row of a statement as "a|b|c" lines of the named columns.
QStringList Lines(DatabaseConnection& db, const QString& sql, const QStringList& columns);
QStringList LineTexts(const QListWidget* list);

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

class HalvernCalendar;
// The tooltip the grid shows for a day under the pointer ("" for none).
QString DayToolTip(HalvernCalendar& calendar, const QDate& day);

// A control found by its objectName; a missing control ends the run at once with its name.
template <typename T = QWidget> T* Control(QObject* root, const char* name)
{
    T* found = root->findChild<T*>(QString::fromLatin1(name));
    if (!found)
        qFatal("control %s not found in %s", name, qPrintable(root->objectName()));
    return found;
}
void Click(QObject* root, const char* name);
// What a person sees in the named box: a line, combo or text box's text, or "1"/"0" for a
// check box.
QString Shown(QObject* root, const QString& name);
// Types into the named box as a person would: a combo box picks the item of that text when
// there is one (none for ""), else takes the text typed; a check box takes "1" or "0".
void Type(QObject* root, const QString& name, const QString& text);
// "Name=text" pairs: Type() each in turn, or Shown() each for comparing with the list.
void TypeAll(QObject* root, const QStringList& pairs);
QStringList ShownAll(QObject* root, const QStringList& pairs);
// What the widget gets when the user tabs into or out of it.
void FocusIn(QWidget* widget);
void FocusOut(QWidget* widget);

// Answers the next modal dialog (or, told so, the next pop-up menu) that comes up while this
// object lives: action gets it and should close it. One the action leaves open is closed
// (stayedOpen()), so a refused OK cannot hang the run.
class ModalAnswer final
{
public:
    explicit ModalAnswer(std::function<void(QWidget*)> action, bool menu = false);
    ~ModalAnswer();
    ModalAnswer(const ModalAnswer&) = delete;
    ModalAnswer& operator=(const ModalAnswer&) = delete;

    bool opened() const { return m_state->opened; }
    bool stayedOpen() const { return m_state->stayedOpen; }
    QString title() const { return m_state->title; }
    QString name() const { return m_state->name; }

private:
    struct State
    {
        bool opened = false;
        bool stayedOpen = false;
        QString title;
        QString name;
    };
    std::shared_ptr<State> m_state;
    QPointer<QTimer> m_timer;
};

// Types text into the next one-line edit dialog (its TxtEdit) and presses OK or Cancel;
// keeps the text the dialog showed when it opened.
class EditAnswer final
{
public:
    explicit EditAnswer(const QString& text, bool pressOk = true);
    bool opened() const { return m_answer.opened(); }
    QString title() const { return m_answer.title(); }
    QString initialText() const { return *m_initialText; }

private:
    std::shared_ptr<QString> m_initialText = std::make_shared<QString>();
    ModalAnswer m_answer;
};

class FrmPost;
class StickyNotes;
// Opens a note the way every caller does, through the hand-over slot 0 (place in twips;
// 0, 0 leaves it where the desktop puts it). Answers nullptr when all 30 slots are taken.
FrmPost* OpenStickyNote(StickyNotes& notes, const QString& text, int colour, int left = 0, int top = 0);
// Deletes every note window still open, so that the next test starts with none.
void CloseStickyNoteWindows();
