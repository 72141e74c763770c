#include "common/Fonts.h"

#include <QFont>
#include <QStringList>

void RegisterFontSubstitutions()
{
    const QString gothic = QStringLiteral("IPAGothic");
    const QString pgothic = QStringLiteral("IPAPGothic");
    QFont::insertSubstitutions(QStringLiteral("ＭＳ ゴシック"), {gothic, QStringLiteral("Noto Sans Mono CJK JP")});
    QFont::insertSubstitutions(QStringLiteral("MS Gothic"), {gothic});
    QFont::insertSubstitutions(QStringLiteral("ＭＳ Ｐゴシック"), {pgothic, QStringLiteral("Noto Sans CJK JP")});
    QFont::insertSubstitutions(QStringLiteral("MS PGothic"), {pgothic});
    QFont::insertSubstitutions(QStringLiteral("ＭＳ 明朝"), {QStringLiteral("IPAMincho"), gothic});
    QFont::insertSubstitutions(QStringLiteral("ＭＳ Ｐ明朝"), {QStringLiteral("IPAPMincho"), pgothic});
}

QFont FixedPitchJapaneseFont(double pointSize)
{
    QFont font(QStringLiteral("IPAGothic"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    if (pointSize > 0)
        font.setPointSizeF(pointSize);
    return font;
}
