#include "platform/null/NullHotKeyBackend.h"

HotKeyStatus NullHotKeyBackend::registerHotKey(int identifier, int virtualKey, int modifiers)
{
    Q_UNUSED(identifier)
    Q_UNUSED(virtualKey)
    Q_UNUSED(modifiers)
    return HotKeyStatus::Unavailable;
}

HotKeyStatus NullHotKeyBackend::probe(int virtualKey, int modifiers)
{
    Q_UNUSED(virtualKey)
    Q_UNUSED(modifiers)
    return HotKeyStatus::Unavailable;
}
