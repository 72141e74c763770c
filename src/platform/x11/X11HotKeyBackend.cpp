#include "platform/x11/X11HotKeyBackend.h"

#include "common/HotKeyBackend.h"
#include "platform/PlatformLog.h"
#include "platform/VirtualKeys.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPointer>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <cstdlib>
#include <map>
#include <vector>

namespace {

// Registration modifiers (1 Alt, 2 Ctrl, 4 Shift) as X modifier bits.
uint16_t XModifiers(int modifiers)
{
    uint16_t mask = 0;
    if (modifiers & 1)
        mask |= XCB_MOD_MASK_1;
    if (modifiers & 2)
        mask |= XCB_MOD_MASK_CONTROL;
    if (modifiers & 4)
        mask |= XCB_MOD_MASK_SHIFT;
    return mask;
}

constexpr uint8_t BadAccess = 10;
constexpr xcb_keysym_t NumLockKeysym = 0xff7f;

// The keyboard mapping as the server has it now, freed when done.
class KeySymbols final
{
public:
    explicit KeySymbols(xcb_connection_t* connection) : m_symbols(xcb_key_symbols_alloc(connection)) {}
    ~KeySymbols()
    {
        if (m_symbols)
            xcb_key_symbols_free(m_symbols);
    }
    KeySymbols(const KeySymbols&) = delete;
    KeySymbols& operator=(const KeySymbols&) = delete;

    std::vector<xcb_keycode_t> keycodes(xcb_keysym_t keysym) const
    {
        std::vector<xcb_keycode_t> codes;
        if (!m_symbols || keysym == 0)
            return codes;
        xcb_keycode_t* found = xcb_key_symbols_get_keycode(m_symbols, keysym);
        if (!found)
            return codes;
        for (xcb_keycode_t* code = found; *code != XCB_NO_SYMBOL; ++code)
            codes.push_back(*code);
        std::free(found);
        return codes;
    }
    xcb_keysym_t keysym(xcb_keycode_t keycode, int column) const
    {
        return m_symbols ? xcb_key_symbols_get_keysym(m_symbols, keycode, column) : 0;
    }

private:
    xcb_key_symbols_t* m_symbols;
};

class X11HotKeyBackend final : public HotKeyBackend, public QAbstractNativeEventFilter
{
public:
    X11HotKeyBackend(xcb_connection_t* connection, QObject* parent)
        : HotKeyBackend(parent), m_connection(connection),
          m_root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root)
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    ~X11HotKeyBackend() override
    {
        if (QCoreApplication::instance())
            QCoreApplication::instance()->removeNativeEventFilter(this);
        for (const auto& entry : m_grabs)
            ungrab(entry.second);
        xcb_flush(m_connection);
    }

    bool isAvailable() const override { return true; }

    HotKeyStatus registerHotKey(int identifier, int virtualKey, int modifiers) override
    {
        unregisterHotKey(identifier);
        Grab grab;
        grab.virtualKey = virtualKey;
        grab.modifiers = modifiers;
        grab.xModifiers = XModifiers(modifiers);
        grab.keycodes = KeySymbols(m_connection).keycodes(VirtualKeys::ToKeysym(virtualKey));
        const HotKeyStatus status = take(grab);
        if (status == HotKeyStatus::Registered)
            m_grabs[identifier] = grab;
        return status;
    }

    void unregisterHotKey(int identifier) override
    {
        const auto found = m_grabs.find(identifier);
        if (found == m_grabs.end())
            return;
        ungrab(found->second);
        m_grabs.erase(found);
        xcb_flush(m_connection);
    }

    HotKeyStatus probe(int virtualKey, int modifiers) override
    {
        Grab grab;
        grab.xModifiers = XModifiers(modifiers);
        grab.keycodes = KeySymbols(m_connection).keycodes(VirtualKeys::ToKeysym(virtualKey));
        // A combination the program holds itself is not taken by anyone else.
        for (const auto& entry : m_grabs) {
            if (entry.second.virtualKey == virtualKey && entry.second.modifiers == modifiers)
                return HotKeyStatus::Registered;
        }
        const HotKeyStatus status = take(grab);
        if (status == HotKeyStatus::Registered) {
            ungrab(grab);
            xcb_flush(m_connection);
        }
        return status;
    }

    int virtualKeyFromScanCode(quint32 scanCode) const override
    {
        if (scanCode == 0 || scanCode > 255)
            return 0;
        return VirtualKeys::FromKeysym(KeySymbols(m_connection).keysym(static_cast<xcb_keycode_t>(scanCode), 0));
    }

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override
    {
        Q_UNUSED(result)
        if (eventType != "xcb_generic_event_t" || !message)
            return false;
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        if ((event->response_type & 0x7f) != XCB_KEY_PRESS)
            return false;
        const auto* press = static_cast<const xcb_key_press_event_t*>(message);
        const uint16_t pressed = press->state & (XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1);
        for (const auto& entry : m_grabs) {
            const Grab& grab = entry.second;
            if (grab.xModifiers != pressed)
                continue;
            for (xcb_keycode_t code : grab.keycodes) {
                if (code != press->detail)
                    continue;
                // The action may open a modal dialog; it must not run inside Qt's own
                // event handling, so it is queued.
                const int virtualKey = grab.virtualKey;
                const int modifiers = grab.modifiers;
                QPointer<X11HotKeyBackend> self(this);
                QMetaObject::invokeMethod(
                    this,
                    [self, virtualKey, modifiers] {
                        if (self)
                            emit self->activated(virtualKey, modifiers);
                    },
                    Qt::QueuedConnection);
                return true;
            }
        }
        return false;
    }

private:
    struct Grab
    {
        int virtualKey = 0;
        int modifiers = 0;
        uint16_t xModifiers = 0;
        std::vector<xcb_keycode_t> keycodes;
    };

    // The server matches a grab's modifiers exactly, so each combination is grabbed once
    // for every state of the lock keys.
    std::vector<uint16_t> lockVariants()
    {
        const uint16_t numLock = numLockMask();
        return {0, numLock, XCB_MOD_MASK_LOCK, static_cast<uint16_t>(numLock | XCB_MOD_MASK_LOCK)};
    }

    HotKeyStatus take(const Grab& grab)
    {
        if (grab.keycodes.empty())
            return HotKeyStatus::NoSuchKey;
        const std::vector<uint16_t> variants = lockVariants();
        std::vector<xcb_void_cookie_t> cookies;
        for (xcb_keycode_t code : grab.keycodes) {
            for (uint16_t variant : variants) {
                cookies.push_back(xcb_grab_key_checked(m_connection, 1, m_root, grab.xModifiers | variant, code,
                                                       XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
            }
        }
        bool refused = false;
        for (const xcb_void_cookie_t& cookie : cookies) {
            if (xcb_generic_error_t* error = xcb_request_check(m_connection, cookie)) {
                // BadAccess: another client grabbed it first. Anything else is as good as taken.
                if (error->error_code != BadAccess)
                    qCWarning(lcPlatform) << "X refused a key grab with error" << error->error_code;
                std::free(error);
                refused = true;
            }
        }
        if (!refused)
            return HotKeyStatus::Registered;
        // Whatever part of it was granted is given back: half a combination is none.
        ungrab(grab);
        xcb_flush(m_connection);
        return HotKeyStatus::Taken;
    }

    void ungrab(const Grab& grab)
    {
        const std::vector<uint16_t> variants = lockVariants();
        for (xcb_keycode_t code : grab.keycodes) {
            for (uint16_t variant : variants)
                xcb_ungrab_key(m_connection, code, m_root, grab.xModifiers | variant);
        }
    }

    // The modifier bit Num Lock sets; the usual Mod2 when the mapping cannot be read.
    uint16_t numLockMask()
    {
        uint16_t mask = XCB_MOD_MASK_2;
        const std::vector<xcb_keycode_t> numLockCodes = KeySymbols(m_connection).keycodes(NumLockKeysym);
        xcb_get_modifier_mapping_reply_t* reply =
            xcb_get_modifier_mapping_reply(m_connection, xcb_get_modifier_mapping(m_connection), nullptr);
        if (!reply)
            return mask;
        const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(reply);
        const int perModifier = reply->keycodes_per_modifier;
        for (int modifier = 0; modifier < 8; ++modifier) {
            for (int i = 0; i < perModifier; ++i) {
                const xcb_keycode_t code = codes[modifier * perModifier + i];
                for (xcb_keycode_t numLock : numLockCodes) {
                    if (code != 0 && code == numLock)
                        mask = static_cast<uint16_t>(1u << modifier);
                }
            }
        }
        std::free(reply);
        return mask;
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    std::map<int, Grab> m_grabs;
};

} // namespace

std::unique_ptr<HotKeyBackend> CreateX11HotKeyBackend(QObject* parent)
{
    auto* application = qGuiApp;
    if (!application)
        return nullptr;
    auto* x11 = application->nativeInterface<QNativeInterface::QX11Application>();
    // Under another platform plugin the interface may exist without a connection.
    if (!x11 || !x11->connection())
        return nullptr;
    return std::make_unique<X11HotKeyBackend>(x11->connection(), parent);
}
