#pragma once

#include <QColor>
#include <QLabel>

// A label used as a link: underlined in the desktop's highlight colour while the pointer
// is over it, back to its normal colour when it leaves or the window resets it.
class LinkLabel final : public QLabel
{
    Q_OBJECT
public:
    explicit LinkLabel(const QString& text, QWidget* parent = nullptr);

    void setNormalColor(const QColor& color);
    QColor normalColor() const { return m_normal; }
    bool isHot() const { return m_hot; }
    // Back to the normal colour, without underline.
    void resetStyle();

signals:
    void clicked();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void hover();
    void applyStyle(bool hot);

    QColor m_normal;
    bool m_hot = false;
};
