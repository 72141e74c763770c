#include "NotifyCommandLine.h"

NotifyCommand ParseNotifyCommandLine(const QStringList& words)
{
    NotifyCommand command;
    QString* target = nullptr;
    bool seenTitle = false;
    bool seenText = false;
    for (const QString& word : words) {
        const QString lower = word.toLower();
        if (lower == QLatin1String("/t")) {
            target = &command.title;
            seenTitle = true;
        } else if (lower == QLatin1String("/c")) {
            target = &command.text;
            seenText = true;
        } else if (lower == QLatin1String("/i")) {
            target = &command.icon;
        } else if (lower == QLatin1String("/a")) {
            target = &command.sound;
        } else if (target) {
            if (!target->isEmpty())
                *target += QLatin1Char(' ');
            *target += word;
        } else {
            command.error = QStringLiteral("unexpected word before any switch: %1").arg(word);
            return command;
        }
    }
    if (!seenTitle || !seenText) {
        command.error = QStringLiteral("usage: BalloonNotify /t title /c text /i icon [/a sound.wav]");
        return command;
    }
    command.valid = true;
    return command;
}
