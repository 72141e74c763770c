#pragma once

#include <QObject>

// What became of one attempt to take a combination.
enum class HotKeyStatus
{
    Registered,  // the program holds it now
    Taken,       // another program holds it
    NoSuchKey,   // the keyboard has no key for the stored key code
    Unavailable, // this desktop has no global hot keys at all
};

// The desktop's global hot-key service. Keys are the stored key codes (virtual-key
// numbers); modifiers are in registration form: 1 Alt, 2 Ctrl, 4 Shift, summed.
// Production picks the backend of the platform the program runs on; tests use a fake.
class HotKeyBackend : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    // False where the desktop gives no program keys while others have the focus.
    virtual bool isAvailable() const = 0;
    // Takes the combination under identifier until unregisterHotKey(identifier).
    virtual HotKeyStatus registerHotKey(int identifier, int virtualKey, int modifiers) = 0;
    virtual void unregisterHotKey(int identifier) = 0;
    // Whether the combination could be taken now, without keeping it.
    virtual HotKeyStatus probe(int virtualKey, int modifiers) = 0;
    // The stored key code of the key with this native scan code, read without Shift
    // under the current keyboard layout; 0 when it has none or the backend cannot tell.
    virtual int virtualKeyFromScanCode(quint32 scanCode) const
    {
        Q_UNUSED(scanCode)
        return 0;
    }

signals:
    // A held combination was pressed. Delivered from the event loop, never from inside
    // the native event handling, so the receiver may open modal dialogs.
    void activated(int virtualKey, int modifiers);
};
