#pragma once

#include <QString>
#include <QStringList>

// The notifier's command line: /t TITLE /c TEXT /i ICON [/a SOUND.wav].
//
// The calendar hands each value as one argument, so blanks and switch-like words inside a
// title survive. A line typed by hand may split a value into several words; the words
// between two switches are then joined with single blanks.
struct NotifyCommand
{
    QString title;
    QString text;
    QString icon;
    QString sound;
    bool valid = false;
    QString error;
};

NotifyCommand ParseNotifyCommandLine(const QStringList& words);

// The usage line printed for a command line that cannot be read.
QString NotifyUsage();
