#pragma once

#include "common/HotKeyBackend.h"
#include "settings/HotKeys.h"

#include <QObject>
#include <QPointer>

#include <array>
#include <functional>
#include <vector>

struct AppServices;

// The hot keys the program holds while it runs: read from their rows, taken from the
// desktop's hot-key service, and each press turned into its action. An action runs only
// while the main window is idle (no dialog of it is up); otherwise the press is dropped.
class GlobalHotKeys final : public QObject
{
    Q_OBJECT
public:
    using Action = std::function<void()>;
    using Actions = std::array<Action, HotKeyActionCount>;

    GlobalHotKeys(AppServices& app, Actions actions, QObject* parent = nullptr);
    ~GlobalHotKeys() override;

    // Reads the rows and takes every combination with a key. One that cannot be had is
    // logged and stays stored. Raises DatabaseError when the rows cannot be read.
    void RegisterHotKeys();
    // Gives every combination back.
    void UnregisterHotKeys();

    // The rows as last registered, and what became of each (indices like the rows).
    const std::vector<HotKeyBinding>& bindings() const { return m_bindings; }
    const std::vector<HotKeyStatus>& statuses() const { return m_statuses; }

private:
    void HotKeyPressed(int virtualKey, int modifiers);

    AppServices& m_app;
    Actions m_actions;
    QPointer<HotKeyBackend> m_backend;
    std::vector<HotKeyBinding> m_bindings;
    std::vector<HotKeyStatus> m_statuses;
};
