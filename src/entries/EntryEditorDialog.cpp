#include "entries/EntryEditorDialog.h"

#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/UserAction.h"
#include "entries/ClassCombo.h"
#include "masters/FrmClass.h"
#include "store/SqlText.h"

#include <QComboBox>

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

void EntryEditorDialog::EditClasses(QComboBox* classBox)
{
    FrmClass editor(m_app, this);
    if (editor.exec() != QDialog::Accepted)
        return;
    const int index = classBox->currentIndex();
    const bool selected = index >= 0 && classBox->itemText(index) == classBox->currentText();
    const qint64 selectedId = selected ? classBox->itemData(index).toLongLong() : -1;
    const QString typed = classBox->currentText();
    RunUserAction(m_app, this, [this, classBox] {
        FillClassCombo(m_app.db(), classBox, QStringLiteral("SELECT * ") + QStringLiteral("FROM MSTCLASS "));
    });
    if (selected)
        SelectComboByItemData(classBox, selectedId);
    else
        classBox->setEditText(typed);
}
