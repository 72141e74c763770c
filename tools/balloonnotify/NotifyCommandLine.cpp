#include "NotifyCommandLine.h"

namespace {

bool IsSwitch(const QString& word, const char* name)
{
    return word.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

// One value per switch, in the calendar's own order: switch-like words are values here.
bool ParseOneValueEach(const QStringList& words, NotifyCommand& command)
{
    const qsizetype n = words.size();
    if (n != 6 && n != 8)
        return false;
    if (!IsSwitch(words.at(0), "/t") || !IsSwitch(words.at(2), "/c") || !IsSwitch(words.at(4), "/i"))
        return false;
    if (n == 8 && !IsSwitch(words.at(6), "/a"))
        return false;
    command.title = words.at(1);
    command.text = words.at(3);
    command.icon = words.at(5);
    if (n == 8)
        command.sound = words.at(7);
    return true;
}

} // namespace

QString NotifyUsage()
{
    return QStringLiteral("usage: BalloonNotify /t TITLE /c TEXT [/i ICON] [/a SOUND.wav]");
}

NotifyCommand ParseNotifyCommandLine(const QStringList& words)
{
    NotifyCommand command;
    if (!ParseOneValueEach(words, command)) {
        QString* target = nullptr;
        bool seenTitle = false;
        bool seenText = false;
        for (const QString& word : words) {
            if (IsSwitch(word, "/t")) {
                target = &command.title;
                seenTitle = true;
            } else if (IsSwitch(word, "/c")) {
                target = &command.text;
                seenText = true;
            } else if (IsSwitch(word, "/i")) {
                target = &command.icon;
            } else if (IsSwitch(word, "/a")) {
                target = &command.sound;
            } else if (target) {
                if (!target->isEmpty())
                    *target += QLatin1Char(' ');
                *target += word;
            } else {
                command.error = QStringLiteral("unexpected word before any switch: %1\n%2").arg(word, NotifyUsage());
                return command;
            }
        }
        if (!seenTitle || !seenText) {
            command.error = NotifyUsage();
            return command;
        }
    }
    if (command.icon.isEmpty())
        command.icon = QStringLiteral("i");
    command.valid = true;
    return command;
}
