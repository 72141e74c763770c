#pragma once

#include <memory>

class HotKeyBackend;
class QObject;

// The hot-key backend of the desktop the program runs on: X11 when it talks to an X
// server, otherwise one that says hot keys are unavailable. Needs the QGuiApplication.
std::unique_ptr<HotKeyBackend> CreateHotKeyBackend(QObject* parent = nullptr);
