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

namespace {

// The lines of a section (its header excluded) as [first, last) line indexes; first is -1
// when there is no such section.
QPair<int, int> SectionLines(const QStringList& lines, const QString& section)
{
    int first = -1;
    for (int i = 0; i < lines.size(); ++i) {
        QString name;
        if (!IsSectionHeader(lines.at(i), &name))
            continue;
        if (first >= 0)
            return {first, i};
        if (name.compare(section, Qt::CaseInsensitive) == 0)
            first = i + 1;
    }
    return {first, static_cast<int>(lines.size())};
}

bool WriteLines(const QString& file, const QStringList& lines)
{
    const QByteArray bytes = (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
    QSaveFile out(file);
    // Unbuffered, so that a failed write shows here and not only at the final flush.
    if (!out.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        qCWarning(lcShell) << "cannot write" << file << out.errorString();
        return false;
    }
    if (out.write(bytes) != bytes.size() || !out.flush()) {
        qCWarning(lcShell) << "cannot write" << file << out.errorString();
        out.cancelWriting();
        return false;
    }
    if (!out.commit()) {
        qCWarning(lcShell) << "cannot save" << file << out.errorString();
        return false;
    }
    return true;
}

} // namespace

bool WriteIniSection(const QString& file, const QString& section, const IniValues& values)
{
    QStringList lines = ReadLines(file);
    QStringList body;
    for (const auto& [key, value] : values)
        body << key + QLatin1Char('=') + value;
    const auto [first, last] = SectionLines(lines, section);
    if (first < 0) {
        if (!lines.isEmpty() && !lines.last().trimmed().isEmpty())
            lines << QString();
        lines << QLatin1Char('[') + section + QLatin1Char(']') << body;
    } else {
        // Blank lines and comments that end the section stay where they are.
        int end = last;
        while (end > first && (lines.at(end - 1).trimmed().isEmpty() || lines.at(end - 1).startsWith(QLatin1Char(';'))))
            --end;
        lines = lines.mid(0, first) + body + lines.mid(end);
    }
    return WriteLines(file, lines);
}

bool WriteIniValue(const QString& file, const QString& section, const QString& key, const QString& value)
{
    const QStringList lines = ReadLines(file);
    const auto [first, last] = SectionLines(lines, section);
    IniValues values;
    bool written = false;
    for (int i = qMax(first, 0); first >= 0 && i < last; ++i) {
        QString k, v;
        if (!SplitAssignment(lines.at(i), &k, &v))
            continue;
        if (k.compare(key, Qt::CaseInsensitive) == 0) {
            values.append({key, value});
            written = true;
        } else {
            values.append({k, v});
        }
    }
    if (!written)
        values.append({key, value});
    return WriteIniSection(file, section, values);
}
