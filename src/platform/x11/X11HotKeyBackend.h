#pragma once

#include <memory>

class HotKeyBackend;
class QObject;

// Global hot keys on an X server: passive key grabs on the root window. Answers nullptr
// when the program has no X connection (another platform plugin, or none).
std::unique_ptr<HotKeyBackend> CreateX11HotKeyBackend(QObject* parent = nullptr);
