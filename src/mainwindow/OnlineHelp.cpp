#include "mainwindow/OnlineHelp.h"

#include <QDir>
#include <QFileInfo>

QStringList HelpPageCandidates(const QString& appDir)
{
    const QDir dir(appDir);
    return {QDir::cleanPath(dir.filePath(QStringLiteral("help/index.html"))),
            QDir::cleanPath(dir.filePath(QStringLiteral("../share/halvern-verdaly/help/index.html")))};
}

QString FindHelpPage(const QString& appDir)
{
    for (const QString& path : HelpPageCandidates(appDir)) {
        if (QFileInfo(path).isFile())
            return path;
    }
    return QString();
}
