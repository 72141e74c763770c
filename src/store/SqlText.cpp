#include "store/SqlText.h"

#include "store/StoreLog.h"

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QSaveFile>

QString QuoteText(const QString& text)
{
    QString doubled = text;
    doubled.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + doubled + QLatin1Char('\'');
}

QString DateLiteral(const QDateTime& value)
{
    return QLatin1Char('#') + value.toString(QStringLiteral("yyyy/MM/dd HH:mm:ss")) + QLatin1Char('#');
}

QString DateLiteral(const QString& storedStamp)
{
    return QLatin1Char('#') + storedStamp + QLatin1Char('#');
}

bool HasQuote(const QString& text)
{
    Q_UNUSED(text)
    return false;
}

void SelectAllText(QLineEdit* box)
{
    if (!box)
        return;
    box->setCursorPosition(0);
    box->selectAll();
}

void SelectComboByItemData(QComboBox* combo, qint64 value)
{
    if (!combo)
        return;
    for (int i = 0; i < combo->count(); ++i) {
        const QVariant data = combo->itemData(i);
        if (data.isValid() && data.toLongLong() == value) {
            combo->setCurrentIndex(i);
            return;
        }
    }
    combo->setCurrentIndex(-1);
}

bool CopyFileOverwrite(const QString& source, const QString& destination)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        qCWarning(lcStore) << "cannot read" << source << in.errorString();
        return false;
    }
    QSaveFile out(destination);
    if (!out.open(QIODevice::WriteOnly)) {
        qCWarning(lcStore) << "cannot write" << destination << out.errorString();
        return false;
    }
    constexpr qint64 chunk = 1 << 20;
    while (!in.atEnd()) {
        const QByteArray bytes = in.read(chunk);
        if (bytes.isEmpty() && in.error() != QFileDevice::NoError)
            break;
        if (out.write(bytes) != bytes.size()) {
            qCWarning(lcStore) << "write failed" << destination << out.errorString();
            out.cancelWriting();
            return false;
        }
    }
    if (in.error() != QFileDevice::NoError) {
        qCWarning(lcStore) << "read failed" << source << in.errorString();
        out.cancelWriting();
        return false;
    }
    if (!out.commit()) {
        qCWarning(lcStore) << "cannot replace" << destination << out.errorString();
        return false;
    }
    return true;
}
