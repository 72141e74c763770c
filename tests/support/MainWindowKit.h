#pragma once

// The main window as the user meets it, for tests: started on a test environment's
// database, and its pop-up menus answered the way a person would choose from them.

#include "support/FakeServices.h"

#include <QPointer>
#include <QString>

#include <memory>

class FrmMain;
class QTimer;

// Builds the main window on env's data folder, runs its start-up and shows it. Rows the
// test needs are stored before; the window opens its own connection, as the program does.
std::unique_ptr<FrmMain> StartMainWindow(TestEnvironment& env);

// Chooses the item named item (its objectName) in the next pop-up menu that opens while
// this object lives, by clicking it; an empty name, or a name the menu lacks, closes the
// menu without a choice. Remembers which menu it was.
class MenuAnswer final
{
public:
    explicit MenuAnswer(const QString& item);
    ~MenuAnswer();
    MenuAnswer(const MenuAnswer&) = delete;
    MenuAnswer& operator=(const MenuAnswer&) = delete;

    bool opened() const { return m_state->opened; }
    QString menu() const { return m_state->menu; }

private:
    struct State
    {
        bool opened = false;
        QString menu;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
    QPointer<QTimer> m_timer;
};

// Clicks a control of the main window found by its objectName (a link or a panel label)
// with the given button, the way the user does; the right button asks for its context menu.
void ClickControl(FrmMain& main, const QString& name, Qt::MouseButton button = Qt::LeftButton);
