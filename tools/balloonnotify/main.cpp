#include "NotifyCommandLine.h"

#include <QCoreApplication>

#include <cstdio>

// The alarm's notifier. For now it reads and checks its command line; the balloon itself
// comes with the alarm delivery.
int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const NotifyCommand command = ParseNotifyCommandLine(QCoreApplication::arguments().mid(1));
    if (!command.valid) {
        std::fprintf(stderr, "%s\n", qPrintable(command.error));
        return 2;
    }
    std::printf("%s\n%s\n", qPrintable(command.title), qPrintable(command.text));
    return 0;
}
