#pragma once

#include <QString>
#include <QStringList>

// The help page that ships with the program, in the order it is looked for: beside the
// executable (a build tree or a copy kept in one folder: help/index.html), then where an
// install puts it (../share/halvern-verdaly/help/index.html).
QStringList HelpPageCandidates(const QString& appDir);
// The first of them that exists, or an empty text.
QString FindHelpPage(const QString& appDir);
