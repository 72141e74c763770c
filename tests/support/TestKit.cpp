#include "support/TestKit.h"

#include "calendarcontrol/HalvernCalendar.h"
#include "notes/FrmPost.h"
#include "notes/StickyNotes.h"
#include "store/SqlText.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTimer>
#include <QToolTip>

StoredEntry Entry(int id, const QString& kind, const QString& startDt, const QString& startTm, const QString& endDt,
                  const QString& endTm, const QString& business)
{
    const QString data = kind.startsWith(QLatin1Char('T')) ? QStringLiteral("2") : QStringLiteral("1");
    return StoredEntry{id, data, business, startDt, startTm, endDt, endTm, {}, 0, QStringLiteral("0"),
                       0,  {},   {},       kind,    {}};
}

namespace {
// Texts are quoted, numbers written as they are.
QString SqlValue(const QVariant& value)
{
    const bool number = value.typeId() == QMetaType::Int || value.typeId() == QMetaType::LongLong ||
                        value.typeId() == QMetaType::Double;
    return number ? value.toString() : QuoteText(value.toString());
}
} // namespace

void StoreRow(DatabaseConnection& db, const QString& table, const Columns& columns)
{
    QStringList names;
    QStringList values;
    for (const auto& [name, value] : columns) {
        names << name;
        values << SqlValue(value);
    }
    db.ExecuteSql(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                      .arg(table, names.join(QLatin1Char(',')), values.join(QLatin1Char(','))));
}

void StoreEntry(DatabaseConnection& db, const StoredEntry& e)
{
    const QStringList names =
        QStringLiteral("ID DATA BUSINESS STARTDT STARTTM ENDDT ENDTM ENDLESS CLASS ALARM PRIORITY "
                       "COMPLETION COMPDT FROMTOKBN COMMENT UPDTIME")
            .split(QLatin1Char(' '));
    const QVariantList values{e.id,      e.data,  e.business, e.startDt,    e.startTm, e.endDt, e.endTm,   e.endless,
                              e.classId, e.alarm, e.priority, e.completion, e.compDt,  e.kind,  e.comment, e.updTime};
    Columns columns;
    for (int i = 0; i < names.size(); ++i)
        columns.append({names.at(i), values.at(i)});
    StoreRow(db, QStringLiteral("TRNSCHTSK"), columns);
}

StoredEntry WithAlarm(StoredEntry entry)
{
    entry.alarm = QStringLiteral("1");
    return entry;
}

void StoreClass(DatabaseConnection& db, int id, const QString& name, int sortKey)
{
    StoreRow(db, QStringLiteral("MSTCLASS"), {{"ID", id}, {"CLASS", name}, {"SORTKEY", sortKey}});
}

void StoreGeneral(DatabaseConnection& db, int code, const Columns& columns)
{
    Columns all{{"CODE", code}};
    all += columns;
    StoreRow(db, QStringLiteral("TRNGENERAL"), all);
}

void SetGeneral(DatabaseConnection& db, int code, const Columns& columns)
{
    QStringList assignments;
    for (const auto& [name, value] : columns)
        assignments << name + QStringLiteral(" = ") + SqlValue(value);
    db.ExecuteSql(
        QStringLiteral("UPDATE TRNGENERAL SET %1 WHERE CODE = %2").arg(assignments.join(QLatin1Char(','))).arg(code));
}

void StoreDayOff(DatabaseConnection& db, int month, int day, const QString& remark)
{
    StoreGeneral(db, 200, {{"DATAN1", month}, {"DATAN2", day}, {"DATAS1", remark}, {"DATAS2", QString()}});
}

void StoreAlarmSettings(DatabaseConnection& db, int advance, bool balloon, bool sound, const QString& soundFile)
{
    SetGeneral(db, 304, {{"DATAN1", advance}});
    SetGeneral(db, 314, {{"DATAN1", balloon ? 1 : 0}});
    SetGeneral(db, 316, {{"DATAN1", sound ? 1 : 0}});
    SetGeneral(db, 315, {{"MEMO1", soundFile}});
}

QByteArray FileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no file>");
}

bool WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

QString Column(DatabaseConnection& db, int id, const char* column)
{
    const Rows rows = db.ReadRows(QStringLiteral("SELECT * FROM TRNSCHTSK WHERE ID = %1").arg(id));
    if (rows.empty())
        return QStringLiteral("<no row>");
    return rows.front().text(QLatin1String(column));
}

QStringList EntryColumns(DatabaseConnection& db, int id, const QStringList& pairs)
{
    QStringList columns;
    for (const QString& pair : pairs) {
        const QString name = pair.section(QLatin1Char('='), 0, 0);
        columns << name + QLatin1Char('=') + Column(db, id, qPrintable(name));
    }
    return columns;
}

QStringList Lines(DatabaseConnection& db, const QString& sql, const QStringList& columns)
{
    QStringList lines;
    for (const Row& row : db.ReadRows(sql)) {
        QStringList fields;
        for (const QString& column : columns)
            fields << row.text(column);
        lines << fields.join(QLatin1Char('|'));
    }
    return lines;
}

QStringList LineTexts(const QListWidget* list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->item(i)->text();
    return texts;
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

QString DayToolTip(HalvernCalendar& calendar, const QDate& day)
{
    QToolTip::hideText();
    const QPoint at = calendar.dayRect(day).center();
    QHelpEvent event(QEvent::ToolTip, at, calendar.mapToGlobal(at));
    QApplication::sendEvent(&calendar, &event);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}

void Click(QObject* root, const char* name)
{
    Control<QAbstractButton>(root, name)->click();
}

QString Shown(QObject* root, const QString& name)
{
    QWidget* widget = Control<QWidget>(root, qPrintable(name));
    if (auto* check = qobject_cast<QCheckBox*>(widget))
        return check->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        return combo->currentText();
    if (auto* text = qobject_cast<QPlainTextEdit*>(widget))
        return text->toPlainText();
    return widget->property("text").toString();
}

void Type(QObject* root, const QString& name, const QString& text)
{
    QWidget* widget = Control<QWidget>(root, qPrintable(name));
    if (auto* check = qobject_cast<QCheckBox*>(widget)) {
        check->setChecked(text == QLatin1String("1"));
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        combo->setCurrentIndex(text.isEmpty() ? -1 : combo->findText(text));
        if (combo->currentIndex() < 0)
            combo->setEditText(text);
    } else if (auto* box = qobject_cast<QPlainTextEdit*>(widget)) {
        box->setPlainText(text);
    } else {
        widget->setProperty("text", text);
    }
}

void TypeAll(QObject* root, const QStringList& pairs)
{
    for (const QString& pair : pairs)
        Type(root, pair.section(QLatin1Char('='), 0, 0), pair.section(QLatin1Char('='), 1));
}

QStringList ShownAll(QObject* root, const QStringList& pairs)
{
    QStringList shown;
    for (const QString& pair : pairs) {
        const QString name = pair.section(QLatin1Char('='), 0, 0);
        shown << name + QLatin1Char('=') + Shown(root, name);
    }
    return shown;
}

void FocusIn(QWidget* widget)
{
    QFocusEvent event(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(widget, &event);
}

void FocusOut(QWidget* widget)
{
    QFocusEvent event(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(widget, &event);
}

ModalAnswer::ModalAnswer(std::function<void(QWidget*)> action, bool menu) : m_state(std::make_shared<State>())
{
    auto* timer = new QTimer(qApp);
    m_timer = timer;
    timer->setInterval(5);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, action, menu, state = m_state] {
        QPointer<QWidget> modal = QApplication::activeModalWidget();
        QWidget* popup = QApplication::activePopupWidget();
        // A pop-up date picker is answered like a dialog; a pop-up menu only when asked for.
        if (menu || (!modal && !qobject_cast<QMenu*>(popup)))
            modal = menu ? qobject_cast<QMenu*>(popup) : popup;
        if (!modal || !modal->isVisible())
            return;
        timer->stop();
        state->opened = true;
        state->title = modal->windowTitle();
        state->name = modal->objectName();
        action(modal);
        if (modal && modal->isVisible()) {
            state->stayedOpen = true;
            if (auto* dialog = qobject_cast<QDialog*>(modal.data()))
                dialog->reject();
            else
                modal->close();
        }
    });
    timer->start();
}

ModalAnswer::~ModalAnswer()
{
    delete m_timer.data();
}

EditAnswer::EditAnswer(const QString& text, bool pressOk)
    : m_answer([initial = m_initialText, text, pressOk](QWidget* dialog) {
          auto* edit = Control<QLineEdit>(dialog, "TxtEdit");
          *initial = edit->text();
          edit->setText(text);
          Click(dialog, pressOk ? "ComOK" : "ComCancel");
      })
{}

FrmPost* OpenStickyNote(StickyNotes& notes, const QString& text, int colour, int left, int top)
{
    StickyNoteSlot& handOver = notes.app().state.StickyNotes[0];
    handOver.text = text;
    handOver.colorIndex = colour;
    handOver.left = left;
    handOver.top = top;
    return notes.NewStickyNote();
}

void CloseStickyNoteWindows()
{
    // Collected first: deleting a note deletes its menus, which are top-level widgets too.
    QList<FrmPost*> notes;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* note = qobject_cast<FrmPost*>(widget))
            notes << note;
    }
    qDeleteAll(notes);
}
