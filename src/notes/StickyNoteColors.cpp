#include "notes/StickyNoteColors.h"

const std::array<StickyNoteColor, StickyNoteColorCount>& StickyNoteColorsInMenuOrder()
{
    static const std::array<StickyNoteColor, StickyNoteColorCount> colors{{
        {5, "MnuRed", QStringLiteral("レッド"), QColor(192, 0, 0)},
        {1, "MnuBlue", QStringLiteral("ブルー"), QColor(0, 0, 192)},
        {6, "MnuYellow", QStringLiteral("イエロー"), QColor(192, 192, 0)},
        {3, "MnuGreen", QStringLiteral("グリーン"), QColor(0, 128, 0)},
        {4, "MnuOrange", QStringLiteral("オレンジ"), QColor(255, 128, 0)},
        {2, "MnuGray", QStringLiteral("グレー"), QColor(192, 192, 192)},
        {0, "MnuBlack", QStringLiteral("ブラック"), QColor(0, 0, 0)},
    }};
    return colors;
}

QColor StickyNoteShapeColor(int index)
{
    if (index < 1 || index > 6)
        return QColor(0, 0, 0);
    for (const StickyNoteColor& entry : StickyNoteColorsInMenuOrder()) {
        if (entry.index == index)
            return entry.color;
    }
    return QColor(0, 0, 0);
}

QColor StickyNotePaperColor(int index)
{
    // Three tenths of the colour on white: every tint stays light enough for black text
    // (the darkest, black's, is a mid-light grey), yet the seven notes tell apart at a glance.
    const QColor shape = StickyNoteShapeColor(index);
    const auto tint = [](int channel) { return 255 - (255 - channel) * 3 / 10; };
    return QColor(tint(shape.red()), tint(shape.green()), tint(shape.blue()));
}
