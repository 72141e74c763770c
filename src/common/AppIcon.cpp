#include "common/AppIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {

// Drawn on a 128-unit square, the same shapes as the installed scalable icon
// (resources/desktop), so the tray, the window and the menu show one picture.
QPixmap PaintIcon(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 128.0, size / 128.0);
    const QColor ink(0x30, 0x40, 0x60);
    const QColor red(0xC0, 0x30, 0x30);

    // The outline stays at least a pixel wide at the smallest sizes.
    p.setPen(QPen(ink, qMax(4.0, 128.0 / size)));
    p.setBrush(Qt::white);
    p.drawRoundedRect(QRectF(10, 16, 108, 102), 10, 10);

    QPainterPath band;
    band.moveTo(10, 44);
    band.lineTo(10, 26);
    band.arcTo(QRectF(10, 16, 20, 20), 180, -90);
    band.lineTo(108, 16);
    band.arcTo(QRectF(98, 16, 20, 20), 90, -90);
    band.lineTo(118, 44);
    band.closeSubpath();
    p.setPen(Qt::NoPen);
    p.fillPath(band, red);

    p.setBrush(ink);
    p.drawRoundedRect(QRectF(34, 6, 8, 20), 4, 4);
    p.drawRoundedRect(QRectF(86, 6, 8, 20), 4, 4);
    // Eleven days of a month, the twelfth place empty, and today in red.
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 4; ++col) {
            if (row == 2 && col == 3)
                continue;
            const bool today = row == 1 && col == 2;
            p.fillRect(QRectF(24 + col * 22, 54 + row * 22, 14, 12), today ? red : ink);
        }
    }
    return pixmap;
}

} // namespace

QIcon AppIcon()
{
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48, 64, 128})
        icon.addPixmap(PaintIcon(size));
    return icon;
}
