#pragma once

#include <QTimer>
#include <QWidget>

// The notifier's own balloon, for desktops without a notification service: a small
// window near the bottom-right corner of the screen that closes itself after about ten
// seconds, or when clicked.
class BalloonWindow final : public QWidget
{
    Q_OBJECT
public:
    BalloonWindow(const QString& title, const QString& text);
    void showNearCorner();

signals:
    void closed();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QTimer m_expiry;
};
