// The settings dialog's hot-key frame: the action list and the field that captures a
// combination from the keyboard.
#include "settings/FrmSetting.h"

#include "common/AppServices.h"
#include "common/HotKeyBackend.h"
#include "platform/VirtualKeys.h"
#include "ui_FrmSetting.h"

#include <QKeyEvent>

void FrmSetting::loadHotKeys()
{
    const std::vector<HotKeyRow> rows = ReadHotKeyRows(m_app.db());
    const QSignalBlocker quiet(m_ui->CmbHotKey);
    m_ui->CmbHotKey->clear();
    m_hotKeys.clear();
    for (const HotKeyRow& row : rows) {
        m_ui->CmbHotKey->addItem(row.name, row.code);
        m_hotKeys.push_back(row.binding);
    }
    m_ui->CmbHotKey->setCurrentIndex(m_hotKeys.empty() ? -1 : 0);
    // The field shows combinations; it is never typed into.
    m_ui->TxtHotKey->setReadOnly(true);
}

int FrmSetting::hotKeyIndex() const
{
    const int index = m_ui->CmbHotKey->currentIndex();
    return index >= 0 && static_cast<size_t>(index) < m_hotKeys.size() ? index : -1;
}

void FrmSetting::CmbHotKey_Click()
{
    const int index = hotKeyIndex();
    m_pendingHotKey = index >= 0 ? m_hotKeys[static_cast<size_t>(index)] : HotKeyBinding{};
    m_ui->TxtHotKey->setText(HotKeyText(m_pendingHotKey.key, m_pendingHotKey.mask));
    m_ui->TxtHotKey->setEnabled(index >= 0);
    showHotKeyNote();
}

void FrmSetting::TxtHotKey_KeyDown(int keyCode, int mask)
{
    const std::optional<HotKeyBinding> captured = CaptureHotKey(keyCode, mask);
    if (!captured)
        return;
    m_pendingHotKey = *captured;
    m_ui->TxtHotKey->setText(HotKeyText(captured->key, captured->mask));
    // Kept at once as well as on leaving the field, so no way of leaving loses it.
    TxtHotKey_LostFocus();
    showHotKeyNote();
}

void FrmSetting::TxtHotKey_LostFocus()
{
    const int index = hotKeyIndex();
    if (index >= 0)
        m_hotKeys[static_cast<size_t>(index)] = m_pendingHotKey;
}

void FrmSetting::showHotKeyNote()
{
    QString note;
    const int index = hotKeyIndex();
    HotKeyBackend* backend = m_app.hotKeys;
    if (!backend || !backend->isAvailable()) {
        note = QStringLiteral("この環境ではホットキーを使用できません。");
    } else if (index >= 0 && m_pendingHotKey.key != 0) {
        for (size_t i = 0; i < m_hotKeys.size() && note.isEmpty(); ++i) {
            if (static_cast<int>(i) != index && m_hotKeys[i] == m_pendingHotKey)
                note = QStringLiteral("「%1」と同じキーです。").arg(m_ui->CmbHotKey->itemText(static_cast<int>(i)));
        }
        if (note.isEmpty()) {
            // The program holds no hot keys while this dialog is up, so whoever holds it is
            // another program.
            switch (backend->probe(m_pendingHotKey.key, ShiftToHotKeyModifiers(m_pendingHotKey.mask))) {
            case HotKeyStatus::Taken:
                note = QStringLiteral("他のプログラムが使用しているため、このキーは使えません。");
                break;
            case HotKeyStatus::NoSuchKey:
                note = QStringLiteral("このキーはキーボードにないため使えません。");
                break;
            case HotKeyStatus::Unavailable:
                note = QStringLiteral("この環境ではホットキーを使用できません。");
                break;
            case HotKeyStatus::Registered:
                break;
            }
        }
    }
    m_ui->LabHotKeyNote->setText(note);
    m_ui->LabHotKeyNote->setVisible(!note.isEmpty());
}

void FrmSetting::writeHotKeys()
{
    DatabaseConnection& db = m_app.db();
    for (size_t i = 0; i < m_hotKeys.size(); ++i) {
        const HotKeyBinding& binding = m_hotKeys[i];
        // A mask without a key is no binding; its row keeps what it had.
        if (binding.mask != 0 && binding.key == 0)
            continue;
        db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL ") + QStringLiteral("SET DATAN1 = ") +
                      QString::number(binding.key) + QStringLiteral(", ") + QStringLiteral("    DATAN2 = ") +
                      QString::number(binding.mask) + QStringLiteral(" ") + QStringLiteral("WHERE CODE = ") +
                      QString::number(m_ui->CmbHotKey->itemData(static_cast<int>(i)).toLongLong()) +
                      QStringLiteral(" "));
    }
}

bool FrmSetting::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_ui->TxtHotKey)
        return QDialog::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        auto* key = static_cast<QKeyEvent*>(event);
        // Plain Tab still moves on, so the keyboard can leave the field.
        const bool plainTab = (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) &&
                              !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
        if (plainTab)
            return false;
        // Every other key is the field's: no dialog shortcut, Enter or Esc acts on it.
        event->accept();
        if (event->type() == QEvent::ShortcutOverride)
            return true;
        int keyCode = VirtualKeys::FromQtKey(key->key(), key->modifiers().testFlag(Qt::KeypadModifier));
        if (keyCode == 0 && m_app.hotKeys)
            keyCode = m_app.hotKeys->virtualKeyFromScanCode(key->nativeScanCode());
        TxtHotKey_KeyDown(keyCode, MaskFromModifiers(key->modifiers()));
        return true;
    }
    case QEvent::FocusOut:
        TxtHotKey_LostFocus();
        return false;
    default:
        return false;
    }
}
