#pragma once

#include <functional>

class QWidget;
struct AppServices;

// Runs one user action (a button, a menu command, a timer tick). A database failure inside
// it rolls back the transactions the action began, tells the user what the engine said,
// and leaves the window as it was, with everything typed still in it. Answers whether
// the action ran to its end. Without report the failure is only logged (for a retry of
// something the user has already been told about).
bool RunUserAction(AppServices& app, QWidget* parent, const std::function<void()>& action, bool report = true);
