#include "common/Units.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

double Units::LogicalDpi(const QWidget* widget)
{
    const QScreen* screen = widget ? widget->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return 96.0;
    const double dpi = screen->logicalDotsPerInch();
    return dpi > 0 ? dpi : 96.0;
}
