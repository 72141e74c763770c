#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <array>

// One sticky-note slot. Slot 0 is the hand-over slot: whoever wants a new note fills it
// and asks for the note; slots 1 to 30 are the notes themselves.
struct StickyNoteSlot
{
    bool inUse = false;
    QString text;
    int colorIndex = 0;
    int left = 0; // twips
    int top = 0;  // twips
    QPointer<QWidget> window;
};

constexpr int StickyNoteSlotCount = 31;

// The few values that really are program-wide. Owned by the main window's services.
struct AppState
{
    // False while a dialog opened from the main window is up: links and hot keys wait.
    bool MainWindowIdle = false;
    // Set by a restore just before it ends the program, so the notes are not written back.
    bool RestoreDone = false;
    // The word a pop-up menu item leaves for the handler that popped the menu up.
    QString MenuCommand;
    std::array<StickyNoteSlot, StickyNoteSlotCount> StickyNotes{};
};

// Holds MainWindowIdle false while a dialog opened from the main window (or by a hot key)
// is up, and gives the old value back however the dialog ends, even through a database
// failure, so the links never stay dead.
class MainWindowBusy final
{
public:
    explicit MainWindowBusy(AppState& state) : m_state(state), m_wasIdle(state.MainWindowIdle)
    {
        m_state.MainWindowIdle = false;
    }
    ~MainWindowBusy() { m_state.MainWindowIdle = m_wasIdle; }
    MainWindowBusy(const MainWindowBusy&) = delete;
    MainWindowBusy& operator=(const MainWindowBusy&) = delete;

private:
    AppState& m_state;
    bool m_wasIdle;
};
