#pragma once

#include <QString>
#include <QStringList>

struct AppServices;

// The notifier program, BalloonNotify, lies beside the calendar's own executable.
QString NotifierProgram(const QString& programDir);

// Its switches, each value one argument of its own so that blanks and switch-like words
// inside the title, the text or the path reach it intact:
// /t TITLE /c TEXT /i i, then /a PATH when a sound is to be played.
QStringList NotifierArguments(const QString& title, const QString& text, bool withSound, const QString& soundFile);

// The same as one line, for showing and logging:
// ".../BalloonNotify /t 会議 /c 3F /i i /a /x/a.wav", or ".../BalloonNotify /t 会議 /c 3F /i i ".
QString NotifierCommandLine(const QString& programDir, const QString& title, const QString& text, bool withSound,
                            const QString& soundFile);

// Starts the notifier without waiting for it. Answers false (and logs) when it could not
// be started, so the caller can tell the user some other way.
bool ShowBalloon(AppServices& app, const QString& title, const QString& text, bool withSound, const QString& soundFile);
