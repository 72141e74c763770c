#pragma once

#include "common/AppState.h"

#include <QObject>
#include <QTimer>

#include <array>

class FrmPost;
class QWidget;
struct AppServices;

// The notes on the desktop: opening them into the slot table, and keeping each one's row
// up to date while the program runs, so that a crash, a kill or a power cut loses at most
// the last second of typing.
class StickyNotes final : public QObject
{
    Q_OBJECT
public:
    explicit StickyNotes(AppServices& app, QObject* parent = nullptr);

    AppServices& app() { return m_app; }

    // Opens the note described in slot 0 in the lowest free slot and answers its window;
    // with all 30 slots taken it says so (over `messageParent`) and answers nullptr.
    FrmPost* NewStickyNote(QWidget* messageParent = nullptr);

    // Opens a window for every slot that the start-up marked open but that has none yet,
    // through slot 0 and so into the lowest free slots, in slot order; then writes all 30
    // rows, so that each row again describes the note now on its slot.
    void ReopenStickyNotes();

    // The exit: closes the notes and writes every row once (unless a restore has just
    // replaced the data); after it nothing more is written.
    void SaveAtExit();

    // A note's text, colour or place changed, or it was closed: its row is written about a
    // second later, as soon as no other action holds a transaction.
    void noteChanged(int slot);

    // Milliseconds between a change and its write, and between two looks at a busy database.
    static constexpr int SaveDelayMs = 1000;
    static constexpr int BusyRetryMs = 200;

    bool hasPendingChanges() const;

private:
    void writePending();

    AppServices& m_app;
    QTimer m_timer;
    std::array<bool, StickyNoteSlotCount> m_dirty{};
    bool m_stopped = false;
};
