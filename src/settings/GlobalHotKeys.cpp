#include "settings/GlobalHotKeys.h"

#include "common/AppServices.h"
#include "settings/SettingsLog.h"

GlobalHotKeys::GlobalHotKeys(AppServices& app, Actions actions, QObject* parent)
    : QObject(parent), m_app(app), m_actions(std::move(actions)), m_backend(app.hotKeys)
{
    if (m_backend)
        connect(m_backend, &HotKeyBackend::activated, this, &GlobalHotKeys::HotKeyPressed);
}

GlobalHotKeys::~GlobalHotKeys()
{
    UnregisterHotKeys();
}

void GlobalHotKeys::RegisterHotKeys()
{
    UnregisterHotKeys();
    const std::vector<HotKeyRow> rows = ReadHotKeyRows(m_app.db());
    for (const HotKeyRow& row : rows) {
        // A row beyond the actions has nothing to do: its keys are left to other programs.
        if (m_bindings.size() >= m_actions.size())
            break;
        const HotKeyBinding binding = row.binding;
        HotKeyStatus status = HotKeyStatus::Unavailable;
        if (binding.key != 0 && m_backend) {
            status = m_backend->registerHotKey(HotKeyIdentifier(binding.key, binding.mask), binding.key,
                                               ShiftToHotKeyModifiers(binding.mask));
            if (status != HotKeyStatus::Registered) {
                qCWarning(lcSettings).noquote()
                    << "hot key" << HotKeyText(binding.key, binding.mask) << "for" << row.name << "not registered:"
                    << (status == HotKeyStatus::Taken       ? "another program holds it"
                        : status == HotKeyStatus::NoSuchKey ? "the keyboard has no such key"
                                                            : "this desktop has no hot keys");
            }
        }
        m_bindings.push_back(binding);
        m_statuses.push_back(status);
    }
}

void GlobalHotKeys::UnregisterHotKeys()
{
    for (size_t i = 0; i < m_bindings.size(); ++i) {
        const HotKeyBinding& binding = m_bindings[i];
        if (binding.key != 0 && m_statuses[i] == HotKeyStatus::Registered && m_backend)
            m_backend->unregisterHotKey(HotKeyIdentifier(binding.key, binding.mask));
    }
    m_bindings.clear();
    m_statuses.clear();
}

void GlobalHotKeys::HotKeyPressed(int virtualKey, int modifiers)
{
    const int pressed = virtualKey * 65536 | modifiers;
    const size_t count = std::min(m_bindings.size(), m_actions.size());
    for (size_t i = 0; i < count; ++i) {
        const HotKeyBinding& binding = m_bindings[i];
        if (binding.key == 0 || pressed != (binding.key * 65536 | ShiftToHotKeyModifiers(binding.mask)))
            continue;
        // While a dialog of the main window is up, its modal loop owns the program.
        if (!m_app.state.MainWindowIdle || !m_actions[i])
            return;
        m_actions[i]();
        return;
    }
}
