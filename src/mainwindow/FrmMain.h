#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

class QLabel;
class QSystemTrayIcon;
class QTimer;
class SingleInstance;
struct AppServices;

// How a close came about; only a close from the window's own close box may be turned
// into hiding the window in the tray.
enum class UnloadMode
{
    FormControlMenu = 0, // the close box or the window menu
    FormCode = 1,        // the program's own exit (menu, after a restore)
    AppWindows = 2,      // the desktop session ends, or the process is told to stop
};

// The main calendar window. It owns the program: its load starts every part in a fixed
// order and its unload saves and stops them.
class FrmMain final : public QWidget
{
    Q_OBJECT
public:
    explicit FrmMain(AppServices& app, QWidget* parent = nullptr);
    ~FrmMain() override;

    // Start-up. Answers false when another copy is already running (the user has been
    // told; the caller ends the program without showing anything).
    bool Form_Load();
    void Form_QueryUnload(bool& cancel, UnloadMode mode);
    void Form_Unload();

    // Ends the program through the normal close path (exit menu, signals, session end).
    void RequestShutdown(UnloadMode mode);
    bool isUnloaded() const { return m_unloaded; }
    QSystemTrayIcon* trayIcon() const { return m_tray; }

    // Overridable only for tests: whether a tray is there to hide into.
    void setTrayAvailabilityForTesting(int available) { m_trayAvailableOverride = available; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void AddTrayIcon();
    void RemoveTrayIcon();
    bool trayAvailable() const;
    void buildControls();

    AppServices& m_app;
    std::unique_ptr<SingleInstance> m_instance;
    QSystemTrayIcon* m_tray = nullptr;
    QTimer* Timer = nullptr;
    QLabel* m_calendarPlaceholder = nullptr;
    UnloadMode m_pendingMode = UnloadMode::FormControlMenu;
    bool m_modePending = false;
    bool m_unloaded = false;
    int m_trayAvailableOverride = -1;
};
