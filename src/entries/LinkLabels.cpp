#include "entries/LinkLabels.h"

#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>

namespace {

void Style(QLabel* label, const QColor& color, bool underline)
{
    // The disabled look stays the style's own, so a link that cannot be used shows it.
    QPalette palette = label->palette();
    palette.setColor(QPalette::Active, QPalette::WindowText, color);
    palette.setColor(QPalette::Inactive, QPalette::WindowText, color);
    label->setPalette(palette);
    QFont font = label->font();
    font.setUnderline(underline);
    label->setFont(font);
}

} // namespace

QColor LinkLabelGroup::restColor()
{
    // The desktop's own link colour: grey would read as a disabled caption.
    return QGuiApplication::palette().color(QPalette::Active, QPalette::Link);
}

void LinkLabelGroup::add(QLabel* label, std::function<void()> action)
{
    m_links.append(Link{label, std::move(action)});
    label->setCursor(Qt::PointingHandCursor);
    label->installEventFilter(this);
    Style(label, restColor(), false);
}

void LinkLabelGroup::showHover(QLabel* hovered)
{
    for (const Link& link : m_links) {
        if (link.label == hovered)
            Style(link.label, link.label->palette().color(QPalette::Active, QPalette::Highlight), true);
        else
            Style(link.label, restColor(), false);
    }
}

bool LinkLabelGroup::eventFilter(QObject* watched, QEvent* event)
{
    for (const Link& link : m_links) {
        if (link.label != watched)
            continue;
        switch (event->type()) {
        case QEvent::Enter:
            showHover(link.label);
            break;
        case QEvent::Leave:
            showHover(nullptr);
            break;
        case QEvent::MouseButtonRelease: {
            const auto* mouse = static_cast<QMouseEvent*>(event);
            // A press dragged off the label and released elsewhere is no click.
            if (mouse->button() == Qt::LeftButton && link.label->isEnabled() &&
                link.label->rect().contains(mouse->position().toPoint()) && link.action) {
                link.action();
                return true;
            }
            break;
        }
        default:
            break;
        }
        break;
    }
    return QObject::eventFilter(watched, event);
}
