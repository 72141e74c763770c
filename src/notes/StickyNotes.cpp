#include "notes/StickyNotes.h"

#include "common/AppServices.h"
#include "common/Prompter.h"
#include "notes/FrmPost.h"
#include "notes/NotesLog.h"
#include "notes/StickyNoteStore.h"
#include "store/DatabaseError.h"

#include <vector>

StickyNotes::StickyNotes(AppServices& app, QObject* parent) : QObject(parent), m_app(app)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &StickyNotes::writePending);
}

FrmPost* StickyNotes::NewStickyNote(QWidget* messageParent)
{
    auto& table = m_app.state.StickyNotes;
    for (int i = 1; i < StickyNoteSlotCount; ++i) {
        StickyNoteSlot& slot = table[static_cast<size_t>(i)];
        if (slot.inUse)
            continue;
        auto* note = new FrmPost(*this, i);
        slot.window = note;
        slot.inUse = true;
        note->show();
        noteChanged(i);
        return note;
    }
    if (m_app.prompter) {
        m_app.prompter->inform(messageParent, QStringLiteral("これ以上付箋を表示することはできません。"),
                               PromptIcon::Warning);
    }
    return nullptr;
}

void StickyNotes::ReopenStickyNotes()
{
    auto& table = m_app.state.StickyNotes;
    // Take the waiting notes out of the table first: each reopens on the lowest free
    // slot, which may be one that another waiting note still holds.
    std::vector<StickyNoteSlot> waiting;
    for (size_t i = 1; i < table.size(); ++i) {
        StickyNoteSlot& slot = table[i];
        if (slot.inUse && !slot.window) {
            waiting.push_back(slot);
            slot.inUse = false;
            slot.text.clear();
        }
    }
    if (waiting.empty())
        return;
    for (const StickyNoteSlot& note : waiting) {
        StickyNoteSlot& handOver = table[0];
        handOver.text = note.text;
        handOver.colorIndex = note.colorIndex;
        handOver.left = note.left;
        handOver.top = note.top;
        NewStickyNote();
    }
    try {
        WriteStickyNotes(m_app.db(), table);
        m_dirty.fill(false);
        m_timer.stop();
    } catch (const DatabaseError& error) {
        // The rows still hold the notes as they were; the autosave tries again.
        qCWarning(lcNotes) << "cannot write the reopened notes:" << error.engineMessage();
    }
}

void StickyNotes::SaveAtExit()
{
    // Stopped first: closing the windows reports each note as changed once more, and the
    // write below covers that (or, after a restore, nothing may be written at all).
    m_stopped = true;
    m_dirty.fill(false);
    m_timer.stop();
    auto& table = m_app.state.StickyNotes;
    if (!m_app.state.RestoreDone) {
        SaveStickyNotes(m_app.db(), table);
        return;
    }
    for (size_t i = 1; i < table.size(); ++i) {
        if (table[i].window)
            table[i].window->close();
        table[i].window = nullptr;
    }
}

void StickyNotes::noteChanged(int slot)
{
    if (m_stopped || slot < 1 || slot >= StickyNoteSlotCount)
        return;
    m_dirty[static_cast<size_t>(slot)] = true;
    // Not restarted by every keystroke: steady typing is still written each second.
    if (!m_timer.isActive())
        m_timer.start(SaveDelayMs);
}

bool StickyNotes::hasPendingChanges() const
{
    for (bool dirty : m_dirty) {
        if (dirty)
            return true;
    }
    return false;
}

void StickyNotes::writePending()
{
    if (m_stopped)
        return;
    if (m_app.state.RestoreDone) {
        // The file under us is a restored backup: nothing of this run may overwrite it.
        m_stopped = true;
        m_dirty.fill(false);
        return;
    }
    DatabaseConnection* db = m_app.connection.get();
    // A dialog's open transaction is its own to commit or roll back: a note written inside
    // it would share its fate, so wait until it has ended (a backup's closed file likewise).
    if (!db || !db->isOpen() || db->transactionDepth() > 0) {
        m_timer.start(BusyRetryMs);
        return;
    }
    const auto& table = m_app.state.StickyNotes;
    for (int i = 1; i < StickyNoteSlotCount; ++i) {
        const auto at = static_cast<size_t>(i);
        if (!m_dirty[at])
            continue;
        try {
            db->ExecuteSql(StickyNoteRowSql(i, table[at], table[at].inUse));
            m_dirty[at] = false;
        } catch (const DatabaseError& error) {
            // Kept pending: the next look writes it, and the exit writes every row anyway.
            qCWarning(lcNotes) << "cannot save sticky note" << i << ":" << error.engineMessage();
            m_timer.start(SaveDelayMs);
            return;
        }
    }
}
