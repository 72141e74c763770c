#pragma once

#include <QString>
#include <QStringList>

// The notifier's command line: /t title /c text /i icon [/a sound.wav]. The words between
// two switches are joined by single blanks.
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
