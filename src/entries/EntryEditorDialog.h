#pragma once

#include <QDialog>

struct AppServices;

// What the schedule and task editors share as dialogs: an editor whose row vanished
// before it opened closes at once without a word, and typed dates without a year take
// this year from the program's clock.
class EntryEditorDialog : public QDialog
{
    Q_OBJECT
public:
    // True when loading found nothing to edit; exec() then answers Rejected at once.
    bool closedOnLoad() const { return m_closeAtOnce; }
    int exec() override;

protected:
    EntryEditorDialog(AppServices& app, QWidget* parent);
    void showEvent(QShowEvent* event) override;
    int todayYear() const;

    AppServices& m_app;
    bool m_closeAtOnce = false;
};
