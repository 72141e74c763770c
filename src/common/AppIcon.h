#pragma once

#include <QIcon>

// The program's icon (window and tray): a small tear-off calendar page, painted
// at every size Qt asks for so it stays crisp on any screen.
QIcon AppIcon();
