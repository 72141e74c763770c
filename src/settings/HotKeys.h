#pragma once

#include <QString>
#include <Qt>

#include <optional>
#include <vector>

class DatabaseConnection;

// Global hot keys as the program keeps them: one row per action, a key code (virtual-key
// number, 0 = none) and a modifier mask as keyboard events report it (1 Shift, 2 Ctrl,
// 4 Alt, summed).

// The five actions, in the order of their rows.
enum class HotKeyAction
{
    ShowCalendar = 0,
    NewSchedule = 1,
    NewTask = 2,
    NewStickyNote = 3,
    ScheduleList = 4,
};
constexpr int HotKeyActionCount = 5;

struct HotKeyBinding
{
    int key = 0;
    int mask = 0;
    bool operator==(const HotKeyBinding& other) const { return key == other.key && mask == other.mask; }
};

// "A", "F16", "Num0", "Del", ...; an empty text for a code without a name.
QString KeyName(int keyCode);
// "[Ctrl] + [Alt] + K": the modifiers of mask, then the key's name.
QString HotKeyText(int keyCode, int mask);
// The mask in the form the hot-key service registers: Shift 4, Ctrl 2, Alt 1.
int ShiftToHotKeyModifiers(int mask);
// (registration modifiers x 256) OR key code: names one combination to the service.
int HotKeyIdentifier(int keyCode, int mask);
// The mask of Qt's keyboard modifiers.
int MaskFromModifiers(Qt::KeyboardModifiers modifiers);

// What a key press in the capture field makes of the binding. A modifier alone changes
// nothing (nullopt); Delete or Backspace alone clears it; any other key with fewer than two
// modifiers is taken with Ctrl + Alt, so every binding has at least two.
std::optional<HotKeyBinding> CaptureHotKey(int keyCode, int mask);

struct HotKeyRow
{
    qint64 code = 0;
    QString name;
    HotKeyBinding binding;
};
// The action rows in the order that gives each its action. Raises DatabaseError.
std::vector<HotKeyRow> ReadHotKeyRows(DatabaseConnection& db);
