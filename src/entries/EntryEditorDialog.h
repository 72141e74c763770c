#pragma once

#include <QDialog>

struct AppServices;

// What the schedule and task editors share as dialogs: an editor whose row vanished
// before it opened closes at once without a word, and typed dates without a year take
// this year from the program's clock.
class QComboBox;

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
    // The class editor from the class link, then the class box filled anew; the chosen
    // class (or the typed name) stays when it still exists.
    void EditClasses(QComboBox* classBox);

    AppServices& m_app;
    bool m_closeAtOnce = false;
};
