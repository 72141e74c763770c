#include "entries/TypedDateTime.h"

#include <QRegularExpression>

namespace {

// Full-width digits, slashes and colons become their plain forms.
QString Plain(const QString& text)
{
    return text.normalized(QString::NormalizationForm_KC).trimmed();
}

} // namespace

QDate ParseTypedDate(const QString& text, int defaultYear)
{
    const QString plain = Plain(text);
    static const QRegularExpression full(QStringLiteral(R"(^(\d{4})[/.\-](\d{1,2})[/.\-](\d{1,2})$)"));
    static const QRegularExpression packed(QStringLiteral(R"(^(\d{4})(\d{2})(\d{2})$)"));
    static const QRegularExpression monthDay(QStringLiteral(R"(^(\d{1,2})[/.\-](\d{1,2})$)"));
    QRegularExpressionMatch m = full.match(plain);
    if (!m.hasMatch())
        m = packed.match(plain);
    if (m.hasMatch())
        return QDate(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    m = monthDay.match(plain);
    if (m.hasMatch())
        return QDate(defaultYear, m.captured(1).toInt(), m.captured(2).toInt());
    return QDate();
}

QTime ParseTypedTime(const QString& text)
{
    const QString plain = Plain(text);
    static const QRegularExpression form(QStringLiteral(R"(^(\d{1,2}):(\d{1,2})(?::(\d{1,2}))?$)"));
    const QRegularExpressionMatch m = form.match(plain);
    if (!m.hasMatch())
        return QTime();
    const int second = m.captured(3).isEmpty() ? 0 : m.captured(3).toInt();
    if (second > 59)
        return QTime();
    return QTime(m.captured(1).toInt(), m.captured(2).toInt());
}

QString DateBoxText(const QDate& date)
{
    return date.isValid() ? date.toString(QStringLiteral("yyyy/MM/dd")) : QString();
}

QString TimeBoxText(const QTime& time)
{
    return time.isValid() ? time.toString(QStringLiteral("HH:mm")) : QString();
}
