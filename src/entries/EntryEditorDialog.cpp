#include "entries/EntryEditorDialog.h"

#include "common/AppServices.h"
#include "common/Clock.h"

#include <QMetaObject>

EntryEditorDialog::EntryEditorDialog(AppServices& app, QWidget* parent) : QDialog(parent), m_app(app) {}

int EntryEditorDialog::exec()
{
    if (m_closeAtOnce) {
        setResult(QDialog::Rejected);
        return QDialog::Rejected;
    }
    return QDialog::exec();
}

void EntryEditorDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (m_closeAtOnce)
        QMetaObject::invokeMethod(this, &QDialog::reject, Qt::QueuedConnection);
}

int EntryEditorDialog::todayYear() const
{
    return m_app.clock->today().year();
}
