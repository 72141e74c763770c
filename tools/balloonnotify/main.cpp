// The alarm's notifier: posts one alarm to the desktop's notification service, or shows
// a balloon of its own where there is none, and plays the alarm's sound.
#include "AlarmSound.h"
#include "BalloonWindow.h"
#include "DesktopNotification.h"
#include "NotifierLog.h"
#include "NotifyCommandLine.h"

#include <QApplication>

#include <cstdio>

Q_LOGGING_CATEGORY(lcNotifier, "verdaly.notifier")

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("BalloonNotify"));
    const NotifyCommand command = ParseNotifyCommandLine(QCoreApplication::arguments().mid(1));
    if (!command.valid) {
        std::fprintf(stderr, "%s\n", qPrintable(command.error));
        return 2;
    }

    // The program ends once the balloon is gone and the sound has played.
    bool balloonShown = false;
    AlarmSound sound;
    BalloonWindow* balloon = nullptr;
    const auto quitWhenDone = [&] {
        if (!balloonShown && sound.isFinished())
            QCoreApplication::quit();
    };
    QObject::connect(&sound, &AlarmSound::finished, &app, quitWhenDone, Qt::QueuedConnection);

    QString why;
    if (!PostDesktopNotification(command, &why)) {
        qCInfo(lcNotifier).noquote() << why << "- showing a balloon of our own";
        balloon = new BalloonWindow(command.title, command.text);
        balloonShown = true;
        QObject::connect(
            balloon, &BalloonWindow::closed, &app,
            [&] {
                balloonShown = false;
                quitWhenDone();
            },
            Qt::QueuedConnection);
        balloon->showNearCorner();
    }
    if (!command.sound.isEmpty())
        sound.play(command.sound);
    if (!balloonShown && sound.isFinished())
        return 0;
    const int code = QApplication::exec();
    delete balloon;
    return code;
}
