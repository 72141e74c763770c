#pragma once

#include "store/DatabaseConnection.h"

#include <QApplication>
#include <QFocusEvent>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <functional>

// Finds a control of a dialog by its name; a missing control ends the run loudly.
template <typename T> T* Control(QWidget* dialog, const char* name)
{
    T* widget = dialog->findChild<T*>(QLatin1String(name));
    if (!widget)
        qFatal("control %s not found", name);
    return widget;
}

// What the widget sees when the user tabs into or out of it.
inline void FocusIn(QWidget* widget)
{
    QFocusEvent event(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(widget, &event);
}
inline void FocusOut(QWidget* widget)
{
    QFocusEvent event(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(widget, &event);
}

// Runs action on the next modal dialog that comes up (it must close it).
inline void WhenModalOpens(std::function<void(QWidget*)> action)
{
    auto* timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, action] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        timer->stop();
        timer->deleteLater();
        action(modal);
    });
    timer->start();
}

// One TRNSCHTSK row with every column given.
struct StoredEntry
{
    int id = 1;
    QString data = QStringLiteral("1");
    QString business;
    QString startDt;
    QString startTm;
    QString endDt;
    QString endTm;
    QString endless;
    int classId = 0;
    QString alarm = QStringLiteral("0");
    int priority = 0;
    QString completion;
    QString compDt;
    QString kind;
    QString comment;
    QString updTime = QStringLiteral("2006/05/01 12:00:00");
};

void StoreEntry(DatabaseConnection& db, const StoredEntry& entry);
void StoreClass(DatabaseConnection& db, int id, const QString& name, int sortKey);
// The first row of a statement, as text by column.
QString Column(DatabaseConnection& db, int id, const char* column);
