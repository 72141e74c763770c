#pragma once

#include <QString>

class QWidget;

// A window's normal place and outer size (frame included), kept in twips in the settings
// file under the window's own section, and whether it was maximised. What is saved is
// exactly what is restored, so a window comes back where and as big as it was, however
// often the program starts. A minimised window is never saved, so the last normal
// placement survives.
void SaveWindowPlacement(const QWidget& window, const QString& iniPath, const QString& section);

// Applies each of Top, Left, Height and Width that the file holds; a missing or empty key
// (or one that is not a number) leaves that value as designed. The window is kept on its
// screen. The outer size only becomes exact once the window manager has framed the
// window: that correction is made by the window itself after its first show.
void RestoreWindowPlacement(QWidget& window, const QString& iniPath, const QString& section);

// Shrinks and moves the window, as needed, so that all of it is on its screen.
void KeepOnScreen(QWidget& window);
