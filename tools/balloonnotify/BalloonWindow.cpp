#include "BalloonWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QStyle>

namespace {

constexpr int ShownMs = 10000;
constexpr int CornerMargin = 12;

} // namespace

BalloonWindow::BalloonWindow(const QString& title, const QString& text)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus)
{
    setObjectName(QStringLiteral("BalloonNotify"));
    setWindowTitle(title);
    setAttribute(Qt::WA_ShowWithoutActivating);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, colours.color(QPalette::ToolTipBase));
    colours.setColor(QPalette::WindowText, colours.color(QPalette::ToolTipText));
    setPalette(colours);
    setAutoFillBackground(true);

    auto* icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(32, 32));
    auto* titleLabel = new QLabel(title, this);
    titleLabel->setObjectName(QStringLiteral("Title"));
    titleLabel->setTextFormat(Qt::PlainText);
    QFont bold = titleLabel->font();
    bold.setBold(true);
    titleLabel->setFont(bold);
    auto* textLabel = new QLabel(text, this);
    textLabel->setObjectName(QStringLiteral("Text"));
    textLabel->setTextFormat(Qt::PlainText);
    textLabel->setWordWrap(true);
    textLabel->setVisible(!text.isEmpty());
    for (QLabel* label : {titleLabel, textLabel}) {
        label->setMaximumWidth(320);
        // Wrapped text would otherwise settle on the narrowest width it fits.
        label->setMinimumWidth(qMin(label->fontMetrics().horizontalAdvance(label->text()), 320));
    }

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setHorizontalSpacing(10);
    layout->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);
    layout->addWidget(titleLabel, 0, 1);
    layout->addWidget(textLabel, 1, 1);

    m_expiry.setSingleShot(true);
    m_expiry.setInterval(ShownMs);
    connect(&m_expiry, &QTimer::timeout, this, &QWidget::close);
}

void BalloonWindow::showNearCorner()
{
    adjustSize();
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 800, 600);
    move(area.right() - width() - CornerMargin, area.bottom() - height() - CornerMargin);
    show();
    raise();
    m_expiry.start();
}

void BalloonWindow::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event);
    close();
}

void BalloonWindow::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Shadow));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void BalloonWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    m_expiry.stop();
    emit closed();
}
