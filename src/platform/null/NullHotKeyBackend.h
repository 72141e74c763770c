#pragma once

#include "common/HotKeyBackend.h"

// For desktops that give a program no keys while another one has the focus (no X
// server, a headless run): every combination is unavailable, and says so.
class NullHotKeyBackend final : public HotKeyBackend
{
    Q_OBJECT
public:
    using HotKeyBackend::HotKeyBackend;

    bool isAvailable() const override { return false; }
    HotKeyStatus registerHotKey(int identifier, int virtualKey, int modifiers) override;
    void unregisterHotKey(int identifier) override { Q_UNUSED(identifier) }
    HotKeyStatus probe(int virtualKey, int modifiers) override;
};
