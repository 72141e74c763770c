#include "settings/HotKeys.h"

#include "store/DatabaseConnection.h"

namespace {

struct NamedKey
{
    int code;
    const char* name;
};

// Names of the keys that are not letters, digits or numbered.
const NamedKey KeyNames[] = {
    {1, "Mouse L"},  {2, "Mouse R"},    {3, "Cancel"}, {4, "Mouse C"},    {8, "BS"},      {9, "Tab"},
    {12, "Clear"},   {13, "Enter"},     {19, "Pause"}, {20, "Caps Lock"}, {27, "Esc"},    {32, "Space"},
    {33, "Page Up"}, {34, "Page Down"}, {35, "End"},   {36, "Home"},      {41, "Select"}, {42, "PrintScreen"},
    {43, "Execute"}, {44, "Snapshot"},  {45, "Ins"},   {46, "Del"},       {47, "Help"},   {106, "*"},
    {107, "+"},      {108, "Enter"},    {109, "-"},    {110, "."},        {111, "/"},     {144, "NumLock"},
};

} // namespace

QString KeyName(int keyCode)
{
    if (keyCode >= 65 && keyCode <= 90)
        return QString(QChar(keyCode));
    if (keyCode >= 48 && keyCode <= 57)
        return QString(QChar(keyCode));
    if (keyCode >= 96 && keyCode <= 105)
        return QStringLiteral("Num") + QString::number(keyCode - 96);
    if (keyCode >= 112 && keyCode <= 127)
        return QStringLiteral("F") + QString::number(keyCode - 111);
    switch (keyCode) {
    case 37:
        return QStringLiteral("←");
    case 38:
        return QStringLiteral("↑");
    case 39:
        return QStringLiteral("→");
    case 40:
        return QStringLiteral("↓");
    default:
        break;
    }
    for (const NamedKey& key : KeyNames) {
        if (key.code == keyCode)
            return QString::fromLatin1(key.name);
    }
    return QString();
}

QString HotKeyText(int keyCode, int mask)
{
    QString prefix;
    // Masks outside 1..7 have no prefix at all.
    if (mask >= 1 && mask <= 7) {
        if (mask & 1)
            prefix += QStringLiteral("[Shift] + ");
        if (mask & 2)
            prefix += QStringLiteral("[Ctrl] + ");
        if (mask & 4)
            prefix += QStringLiteral("[Alt] + ");
    }
    return prefix + KeyName(keyCode);
}

int ShiftToHotKeyModifiers(int mask)
{
    int modifiers = 0;
    if (mask & 1)
        modifiers += 4;
    if (mask & 2)
        modifiers += 2;
    if (mask & 4)
        modifiers += 1;
    return modifiers;
}

int HotKeyIdentifier(int keyCode, int mask)
{
    return ((ShiftToHotKeyModifiers(mask) * 256) | keyCode) & 0xFFFF;
}

int MaskFromModifiers(Qt::KeyboardModifiers modifiers)
{
    int mask = 0;
    if (modifiers & Qt::ShiftModifier)
        mask |= 1;
    if (modifiers & Qt::ControlModifier)
        mask |= 2;
    if (modifiers & Qt::AltModifier)
        mask |= 4;
    return mask;
}

std::optional<HotKeyBinding> CaptureHotKey(int keyCode, int mask)
{
    if (keyCode == 0 || keyCode == 16 || keyCode == 17 || keyCode == 18)
        return std::nullopt;
    if ((keyCode == 46 || keyCode == 8) && mask == 0)
        return HotKeyBinding{};
    if (mask == 0 || mask == 1 || mask == 2 || mask == 4)
        mask = 6;
    return HotKeyBinding{keyCode, mask};
}

std::vector<HotKeyRow> ReadHotKeyRows(DatabaseConnection& db)
{
    const Rows rows =
        db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL ") +
                    QStringLiteral("WHERE 82000 <= CODE AND CODE < 82999 ") + QStringLiteral("ORDER BY CODE"));
    std::vector<HotKeyRow> result;
    result.reserve(rows.size());
    for (const Row& row : rows) {
        HotKeyRow hotKey;
        hotKey.code = row.number(QStringLiteral("CODE"));
        hotKey.name = row.text(QStringLiteral("DATAS1"));
        // Key codes and masks are 16-bit values; anything else stored there is no key.
        hotKey.binding.key = static_cast<int>(row.number(QStringLiteral("DATAN1")) & 0xFFFF);
        hotKey.binding.mask = static_cast<int>(row.number(QStringLiteral("DATAN2")) & 0xFFFF);
        result.push_back(hotKey);
    }
    return result;
}
