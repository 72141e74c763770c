#include "store/JetDialect.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

QString RewriteUnquoted(QString segment)
{
    static const QRegularExpression dateLiteral(QStringLiteral("#([0-9][0-9/: ]*[0-9])#"));
    static const QRegularExpression deleteStar(QStringLiteral("\\bDELETE\\s+\\*\\s+FROM\\b"),
                                               QRegularExpression::CaseInsensitiveOption);
    segment.replace(dateLiteral, QStringLiteral("'\\1'"));
    segment.replace(deleteStar, QStringLiteral("DELETE FROM"));
    return segment;
}

} // namespace

QString RewriteJetSql(const QString& sql)
{
    QString out;
    out.reserve(sql.size() + 8);
    int segmentStart = 0;
    bool inQuote = false;
    for (int i = 0; i < sql.size(); ++i) {
        if (sql.at(i) != QLatin1Char('\''))
            continue;
        if (!inQuote) {
            out += RewriteUnquoted(sql.mid(segmentStart, i - segmentStart));
            segmentStart = i;
            inQuote = true;
        } else {
            // A doubled quote inside a string re-enters the string at once: two toggles.
            out += sql.mid(segmentStart, i + 1 - segmentStart);
            segmentStart = i + 1;
            inQuote = false;
        }
    }
    const QString rest = sql.mid(segmentStart);
    out += inQuote ? rest : RewriteUnquoted(rest);
    return out;
}

QStringList SplitSqlScript(const QString& script)
{
    QStringList statements;
    QString current;
    bool inQuote = false;
    const QStringList lines = script.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        if (!inQuote && line.trimmed().startsWith(QLatin1String("--")))
            continue;
        for (const QChar c : line) {
            if (c == QLatin1Char('\''))
                inQuote = !inQuote;
            if (c == QLatin1Char(';') && !inQuote) {
                if (!current.trimmed().isEmpty())
                    statements << current.trimmed();
                current.clear();
            } else {
                current += c;
            }
        }
        current += QLatin1Char('\n');
    }
    if (!current.trimmed().isEmpty())
        statements << current.trimmed();
    return statements;
}
