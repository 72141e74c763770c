#include "common/AppIcon.h"

#include <QPainter>
#include <QPixmap>

namespace {

QPixmap PaintIcon(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = size;
    const QRectF page(s * 0.08, s * 0.12, s * 0.84, s * 0.80);
    p.setPen(QPen(QColor(0x30, 0x40, 0x60), qMax<qreal>(1.0, s / 32)));
    p.setBrush(Qt::white);
    p.drawRoundedRect(page, s * 0.08, s * 0.08);
    const QRectF band(page.left(), page.top(), page.width(), page.height() * 0.28);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xC0, 0x30, 0x30));
    p.drawRoundedRect(band, s * 0.08, s * 0.08);
    p.drawRect(QRectF(band.left(), band.center().y(), band.width(), band.height() / 2));
    p.setBrush(QColor(0x30, 0x40, 0x60));
    const qreal cell = page.width() / 4.0;
    for (int row = 0; row < 2; ++row) {
        for (int col = 0; col < 3; ++col) {
            const QRectF dot(page.left() + cell * (col + 0.5), band.bottom() + cell * (row * 0.9 + 0.35), cell * 0.55,
                             cell * 0.45);
            p.drawRect(dot);
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
