#pragma once

#include <QColor>

class QWidget;

// Positions and sizes are kept in twips (1/1440 inch), colours as 0x00BBGGRR integers.
namespace Units {

// Logical dpi of the screen the widget is on (the primary screen without a widget).
double LogicalDpi(const QWidget* widget = nullptr);

inline int PixelsToTwips(int pixels, double dpi)
{
    return qRound(pixels * 1440.0 / dpi);
}
inline int TwipsToPixels(double twips, double dpi)
{
    return qRound(twips * dpi / 1440.0);
}

inline QColor ColorFromStored(qint64 value)
{
    const auto v = static_cast<quint32>(value);
    return QColor(static_cast<int>(v & 0xFF), static_cast<int>((v >> 8) & 0xFF), static_cast<int>((v >> 16) & 0xFF));
}

inline qint64 ColorToStored(const QColor& color)
{
    return static_cast<qint64>(color.red()) | (static_cast<qint64>(color.green()) << 8) |
           (static_cast<qint64>(color.blue()) << 16);
}

} // namespace Units
