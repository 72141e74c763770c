#include "platform/HotKeyBackendFactory.h"

#include "platform/PlatformLog.h"
#include "platform/null/NullHotKeyBackend.h"
#include "platform/x11/X11HotKeyBackend.h"

#include <QGuiApplication>

std::unique_ptr<HotKeyBackend> CreateHotKeyBackend(QObject* parent)
{
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        if (std::unique_ptr<HotKeyBackend> x11 = CreateX11HotKeyBackend(parent))
            return x11;
        qCWarning(lcPlatform) << "no X connection: hot keys are unavailable";
    } else {
        qCInfo(lcPlatform) << "hot keys are unavailable on the" << QGuiApplication::platformName() << "platform";
    }
    return std::make_unique<NullHotKeyBackend>(parent);
}
