#include "common/LinkLabel.h"

#include <QMouseEvent>

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    setCursor(Qt::PointingHandCursor);
    setMouseTracking(true);
    m_normal = palette().color(QPalette::WindowText);
}

void LinkLabel::setNormalColor(const QColor& color)
{
    m_normal = color;
    applyStyle(m_hot);
}

void LinkLabel::resetStyle()
{
    applyStyle(false);
}

void LinkLabel::applyStyle(bool hot)
{
    m_hot = hot;
    QPalette p = palette();
    p.setColor(QPalette::WindowText, hot ? palette().color(QPalette::Highlight) : m_normal);
    setPalette(p);
    QFont f = font();
    f.setUnderline(hot);
    setFont(f);
}

void LinkLabel::enterEvent(QEnterEvent* event)
{
    QLabel::enterEvent(event);
    applyStyle(true);
}

void LinkLabel::mouseMoveEvent(QMouseEvent* event)
{
    QLabel::mouseMoveEvent(event);
    if (!m_hot)
        applyStyle(true);
}

void LinkLabel::leaveEvent(QEvent* event)
{
    QLabel::leaveEvent(event);
    applyStyle(false);
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event)
{
    QLabel::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked();
}
