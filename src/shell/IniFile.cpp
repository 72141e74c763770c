#include "shell/IniFile.h"

#include "shell/ShellLog.h"

#include <QFile>
#include <QSaveFile>
#include <QStringList>

namespace {

QStringList ReadLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QString text = QString::fromUtf8(file.readAll());
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
}

bool IsSectionHeader(const QString& line, QString* name)
{
    const QString t = line.trimmed();
    if (!t.startsWith(QLatin1Char('[')) || !t.endsWith(QLatin1Char(']')))
        return false;
    *name = t.mid(1, t.size() - 2).trimmed();
    return true;
}

// Splits "key=value"; answers false for lines that are not assignments.
bool SplitAssignment(const QString& line, QString* key, QString* value)
{
    const int eq = line.indexOf(QLatin1Char('='));
    if (eq <= 0)
        return false;
    *key = line.left(eq).trimmed();
    *value = line.mid(eq + 1).trimmed();
    return true;
}

} // namespace

QString ReadIniValue(const QString& file, const QString& section, const QString& key)
{
    const QStringList lines = ReadLines(file);
    bool inSection = false;
    for (const QString& line : lines) {
        QString name;
        if (IsSectionHeader(line, &name)) {
            inSection = name.compare(section, Qt::CaseInsensitive) == 0;
            continue;
        }
        QString k, v;
        if (inSection && SplitAssignment(line, &k, &v) && k.compare(key, Qt::CaseInsensitive) == 0) {
            // A value never reaches past a NUL; anything after one is not part of it.
            const int nul = v.indexOf(QChar(0));
            return nul >= 0 ? v.left(nul) : v;
        }
    }
    return {};
}

bool WriteIniValue(const QString& file, const QString& section, const QString& key, const QString& value)
{
    QStringList lines = ReadLines(file);
    const QString assignment = key + QLatin1Char('=') + value;
    int sectionLine = -1;
    int lastLineOfSection = -1;
    bool written = false;
    for (int i = 0; i < lines.size() && !written; ++i) {
        QString name;
        if (IsSectionHeader(lines.at(i), &name)) {
            if (sectionLine >= 0)
                break;
            if (name.compare(section, Qt::CaseInsensitive) == 0) {
                sectionLine = i;
                lastLineOfSection = i;
            }
            continue;
        }
        if (sectionLine < 0)
            continue;
        QString k, v;
        if (SplitAssignment(lines.at(i), &k, &v) && k.compare(key, Qt::CaseInsensitive) == 0) {
            lines[i] = assignment;
            written = true;
        } else if (!lines.at(i).trimmed().isEmpty()) {
            lastLineOfSection = i;
        }
    }
    if (!written) {
        if (sectionLine < 0) {
            if (!lines.isEmpty() && !lines.last().trimmed().isEmpty())
                lines << QString();
            lines << QLatin1Char('[') + section + QLatin1Char(']') << assignment;
        } else {
            lines.insert(lastLineOfSection + 1, assignment);
        }
    }
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Text)) {
        qCWarning(lcShell) << "cannot write" << file << out.errorString();
        return false;
    }
    out.write((lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8());
    if (!out.commit()) {
        qCWarning(lcShell) << "cannot save" << file << out.errorString();
        return false;
    }
    return true;
}
