#pragma once

#include <QColor>
#include <QString>

#include <array>

// The seven note colours. A note keeps its colour as an index; the indexes are fixed by
// the rows already stored, so they are not in the order the menu shows them.
struct StickyNoteColor
{
    int index;
    const char* menuName; // the colour entry's objectName in the note's menu
    QString caption;
    QColor color;
};

constexpr int StickyNoteColorCount = 7;

// The colour entries in menu order: red, blue, yellow, green, orange, grey, black.
const std::array<StickyNoteColor, StickyNoteColorCount>& StickyNoteColorsInMenuOrder();

// The colour of index; every index but 1 to 6 is black, so a damaged row still shows a note.
QColor StickyNoteShapeColor(int index);

// The paper of a note: a light tint of its colour, on which dark text always reads well.
QColor StickyNotePaperColor(int index);
