#pragma once

#include <QObject>
#include <QVector>

#include <functional>

class QLabel;

// Labels that act as links: in the link colour at rest, underlined in the highlight colour while the
// pointer is over one of them, and a left click runs the link's action.
class LinkLabelGroup final : public QObject
{
    Q_OBJECT
public:
    explicit LinkLabelGroup(QObject* parent) : QObject(parent) {}

    void add(QLabel* label, std::function<void()> action);

    static QColor restColor();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Link
    {
        QLabel* label;
        std::function<void()> action;
    };
    void showHover(QLabel* hovered);

    QVector<Link> m_links;
};
