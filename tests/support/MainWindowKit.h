#pragma once

// The main window as the user meets it, for tests: started on a test environment's
// database, and its pop-up menus answered the way a person would choose from them.

#include "support/TestKit.h"

#include <QString>

#include <memory>

class FrmMain;

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
    bool opened() const { return m_answer.opened(); }
    QString menu() const { return m_answer.name(); }

private:
    ModalAnswer m_answer;
};

// Clicks a control of the main window found by its objectName (a link or a panel label)
// with the given button, the way the user does; the right button asks for its context menu.
void ClickControl(FrmMain& main, const QString& name, Qt::MouseButton button = Qt::LeftButton);
