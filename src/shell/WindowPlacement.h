#pragma once

#include <QString>

class QWidget;

// A window's place and outer size, kept in twips in the settings file under the window's
// own section. A minimised window is never saved, so the last normal placement survives.
void SaveWindowPlacement(const QWidget& window, const QString& iniPath, const QString& section);

// Applies each of Top, Left, Height and Width that the file holds; a missing or empty key
// (or one that is not a number) leaves that value as designed. The outer size only
// becomes exact once the window manager has framed the window: call
// ApplyPendingOuterSize from the window's first show.
void RestoreWindowPlacement(QWidget& window, const QString& iniPath, const QString& section);
void ApplyPendingOuterSize(QWidget& window);
