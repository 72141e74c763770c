#pragma once

#include <QtGlobal>

// The one table that ties the three ways of naming a key together: the key codes kept in
// the database (virtual-key numbers, 65 = A), Qt's key numbers (what the capture field
// sees) and X keysyms (what the X server grabs).
namespace VirtualKeys {

constexpr int Shift = 16;
constexpr int Control = 17;
constexpr int Alt = 18;

// The stored key code of a Qt key; keypad tells the numeric keypad's digits and
// operators from the main keys. 0 when the key has no stored code.
int FromQtKey(int qtKey, bool keypad);
// The X keysym that produces the stored key code; 0 when there is none.
quint32 ToKeysym(int virtualKey);
// The stored key code of an X keysym (either case of a letter); 0 when there is none.
int FromKeysym(quint32 keysym);

} // namespace VirtualKeys
