#include "platform/VirtualKeys.h"

#include <Qt>

namespace VirtualKeys {
namespace {

struct KeyRow
{
    int virtualKey;
    int qtKey; // 0: no Qt key produces it
    bool keypad;
    quint32 keysym; // 0: no X key produces it
};

// Keys that come in runs (letters, digits, keypad digits, function keys) are computed
// in the functions below; this table holds the rest.
constexpr KeyRow Table[] = {
    {3, Qt::Key_Cancel, false, 0xff69},    {8, Qt::Key_Backspace, false, 0xff08}, {9, Qt::Key_Tab, false, 0xff09},
    {12, Qt::Key_Clear, false, 0xff0b},    {13, Qt::Key_Return, false, 0xff0d},   {13, Qt::Key_Enter, true, 0},
    {13, Qt::Key_Enter, false, 0},         {Shift, Qt::Key_Shift, false, 0},      {Control, Qt::Key_Control, false, 0},
    {Alt, Qt::Key_Alt, false, 0},          {19, Qt::Key_Pause, false, 0xff13},    {20, Qt::Key_CapsLock, false, 0xffe5},
    {27, Qt::Key_Escape, false, 0xff1b},   {32, Qt::Key_Space, false, 0x0020},    {33, Qt::Key_PageUp, false, 0xff55},
    {34, Qt::Key_PageDown, false, 0xff56}, {35, Qt::Key_End, false, 0xff57},      {36, Qt::Key_Home, false, 0xff50},
    {37, Qt::Key_Left, false, 0xff51},     {38, Qt::Key_Up, false, 0xff52},       {39, Qt::Key_Right, false, 0xff53},
    {40, Qt::Key_Down, false, 0xff54},     {41, Qt::Key_Select, false, 0xff60},   {43, Qt::Key_Execute, false, 0xff62},
    {44, Qt::Key_Print, false, 0xff61},    {45, Qt::Key_Insert, false, 0xff63},   {46, Qt::Key_Delete, false, 0xffff},
    {47, Qt::Key_Help, false, 0xff6a},     {106, Qt::Key_Asterisk, true, 0xffaa}, {107, Qt::Key_Plus, true, 0xffab},
    {108, Qt::Key_Comma, true, 0xffac},    {109, Qt::Key_Minus, true, 0xffad},    {110, Qt::Key_Period, true, 0xffae},
    {111, Qt::Key_Slash, true, 0xffaf},    {144, Qt::Key_NumLock, false, 0xff7f},
};

constexpr int FunctionKeys = 24; // F1 (112) to F24 (135)

} // namespace

int FromQtKey(int qtKey, bool keypad)
{
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
        return 65 + (qtKey - Qt::Key_A);
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
        return (keypad ? 96 : 48) + (qtKey - Qt::Key_0);
    if (qtKey >= Qt::Key_F1 && qtKey < Qt::Key_F1 + FunctionKeys)
        return 112 + (qtKey - Qt::Key_F1);
    // An exact match first, so the keypad's operators win over the main keys' glyphs;
    // keypad navigation keys (NumLock off) are the plain navigation keys.
    for (const KeyRow& row : Table) {
        if (row.qtKey == qtKey && row.keypad == keypad)
            return row.virtualKey;
    }
    for (const KeyRow& row : Table) {
        if (row.qtKey == qtKey && !row.keypad)
            return row.virtualKey;
    }
    return 0;
}

quint32 ToKeysym(int virtualKey)
{
    if (virtualKey >= 65 && virtualKey <= 90)
        return static_cast<quint32>(0x61 + (virtualKey - 65)); // lower-case letters
    if (virtualKey >= 48 && virtualKey <= 57)
        return static_cast<quint32>(virtualKey);
    if (virtualKey >= 96 && virtualKey <= 105)
        return static_cast<quint32>(0xffb0 + (virtualKey - 96));
    if (virtualKey >= 112 && virtualKey < 112 + FunctionKeys)
        return static_cast<quint32>(0xffbe + (virtualKey - 112));
    for (const KeyRow& row : Table) {
        if (row.virtualKey == virtualKey && row.keysym != 0)
            return row.keysym;
    }
    return 0;
}

int FromKeysym(quint32 keysym)
{
    if (keysym >= 0x61 && keysym <= 0x7a)
        return 65 + static_cast<int>(keysym - 0x61);
    if (keysym >= 0x41 && keysym <= 0x5a)
        return 65 + static_cast<int>(keysym - 0x41);
    if (keysym >= 0x30 && keysym <= 0x39)
        return static_cast<int>(keysym);
    if (keysym >= 0xffb0 && keysym <= 0xffb9)
        return 96 + static_cast<int>(keysym - 0xffb0);
    if (keysym >= 0xffbe && keysym < 0xffbe + FunctionKeys)
        return 112 + static_cast<int>(keysym - 0xffbe);
    for (const KeyRow& row : Table) {
        if (row.keysym == keysym)
            return row.virtualKey;
    }
    return 0;
}

} // namespace VirtualKeys
