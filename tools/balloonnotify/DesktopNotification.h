#pragma once

#include <QString>

struct NotifyCommand;

// Posts the alarm to the desktop's notification service on the session bus. Answers
// false, with the reason, when there is no bus, no service, or the service refused it.
bool PostDesktopNotification(const NotifyCommand& command, QString* why);
