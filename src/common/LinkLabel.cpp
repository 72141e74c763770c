#include "common/LinkLabel.h"

#include <QAccessibleWidget>
#include <QMetaObject>
#include <QMouseEvent>
#include <QPointer>

namespace {

// A link as assistive technology sees it: named by its caption, "press" clicks it and,
// where the label has a menu of its own (the panel's entries), "show menu" opens that.
// Both are queued so that the caller has its answer before a menu or a dialog takes over.
class LinkLabelAccessible final : public QAccessibleWidget
{
public:
    explicit LinkLabelAccessible(LinkLabel* label) : QAccessibleWidget(label, QAccessible::Link) {}

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Name && widget()->accessibleName().isEmpty())
            return label()->text();
        return QAccessibleWidget::text(t);
    }
    QStringList actionNames() const override
    {
        if (label()->text().isEmpty())
            return {};
        if (label()->contextMenuPolicy() == Qt::CustomContextMenu)
            return {pressAction(), showMenuAction()};
        return {pressAction()};
    }
    void doAction(const QString& action) override
    {
        QPointer<LinkLabel> link = label();
        if (action == pressAction()) {
            QMetaObject::invokeMethod(
                link,
                [link] {
                    if (link)
                        emit link->clicked();
                },
                Qt::QueuedConnection);
        } else if (action == showMenuAction()) {
            QMetaObject::invokeMethod(
                link,
                [link] {
                    if (link)
                        emit link->customContextMenuRequested(QPoint(0, link->height()));
                },
                Qt::QueuedConnection);
        }
    }

private:
    LinkLabel* label() const { return static_cast<LinkLabel*>(widget()); }
};

QAccessibleInterface* LinkLabelFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("LinkLabel") && object && object->isWidgetType())
        return new LinkLabelAccessible(static_cast<LinkLabel*>(object));
    return nullptr;
}

} // namespace

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    static const bool accessible = [] {
        QAccessible::installFactory(LinkLabelFactory);
        return true;
    }();
    Q_UNUSED(accessible)
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
    hover();
}

void LinkLabel::mouseMoveEvent(QMouseEvent* event)
{
    QLabel::mouseMoveEvent(event);
    if (!m_hot)
        hover();
}

void LinkLabel::hover()
{
    // An empty label (a panel row without an entry) is no link: no highlight, no hand.
    const bool link = !text().isEmpty();
    setCursor(link ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (link)
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
