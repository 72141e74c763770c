#include "shell/WindowPlacement.h"

#include "common/Units.h"
#include "shell/IniFile.h"
#include "shell/ShellLog.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <cmath>
#include <optional>

namespace {

const QString MaximizedKey = QStringLiteral("Maximized");

std::optional<int> ReadTwips(const QString& iniPath, const QString& section, const QString& key)
{
    const QString text = ReadIniValue(iniPath, section, key);
    if (text.isEmpty())
        return std::nullopt;
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value) || std::abs(value) > 1e9) {
        qCWarning(lcShell) << "ignoring" << section << key << "=" << text << "(not a number)";
        return std::nullopt;
    }
    return static_cast<int>(std::lround(value));
}

QSize FrameExtra(const QWidget& window)
{
    const QRect frame = window.frameGeometry();
    const QRect inner = window.geometry();
    return {frame.width() - inner.width(), frame.height() - inner.height()};
}

QRect AvailableArea(const QWidget& window, const QPoint& near)
{
    const QScreen* screen = QGuiApplication::screenAt(near);
    if (!screen)
        screen = window.screen();
    return screen ? screen->availableGeometry() : QRect();
}

// The outer rectangle moved and shrunk into area.
QRect Fitted(QRect outer, const QRect& area)
{
    if (area.isEmpty())
        return outer;
    outer.setSize(outer.size().boundedTo(area.size()));
    outer.moveLeft(qBound(area.left(), outer.left(), area.right() + 1 - outer.width()));
    outer.moveTop(qBound(area.top(), outer.top(), area.bottom() + 1 - outer.height()));
    return outer;
}

// The normal outer placement read from the file, until the window manager's frame is known
// and the inner size can be made to match it. While it waits it also answers what the
// normal placement is (a window restored maximised has not shown it yet).
class PendingPlacement final : public QObject
{
public:
    PendingPlacement(QWidget& window, const QRect& outer, bool maximise)
        : QObject(&window), m_window(window), m_outer(outer), m_maximise(maximise)
    {
        setObjectName(QStringLiteral("PendingPlacement"));
        m_poll.setInterval(40);
        connect(&m_poll, &QTimer::timeout, this, &PendingPlacement::tryApply);
        window.installEventFilter(this);
    }
    QRect outer() const { return m_outer; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &m_window && (event->type() == QEvent::Show || event->type() == QEvent::WindowStateChange)) {
            m_waited.start();
            m_poll.start();
        }
        return false;
    }

private:
    void tryApply()
    {
        if (!m_window.isVisible() ||
            (m_window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized))) {
            // Applied when the window comes back to its normal state.
            m_poll.stop();
            return;
        }
        const QSize extra = FrameExtra(m_window);
        // Without a window manager there is no frame: after a while, none is coming. A busy
        // desktop can take seconds to frame a new window, and a maximise asked for before the
        // manager took the window on is lost, so the wait is generous.
        if (extra.isNull() && m_waited.elapsed() < 5000)
            return;
        m_poll.stop();
        m_window.resize(qMax(1, m_outer.width() - extra.width()), qMax(1, m_outer.height() - extra.height()));
        m_window.move(m_outer.topLeft());
        // Maximised only now, over a normal placement that is already exact: a window
        // mapped maximised is not always kept so by the manager, and un-maximising it
        // later must give back exactly this placement.
        if (m_maximise)
            m_window.setWindowState(m_window.windowState() | Qt::WindowMaximized);
        deleteLater();
    }

    QWidget& m_window;
    QRect m_outer;
    bool m_maximise = false;
    QTimer m_poll;
    QElapsedTimer m_waited;
};

// The window's normal outer placement, also while it is maximised.
QRect NormalOuter(const QWidget& window)
{
    if (const auto* pending =
            window.findChild<PendingPlacement*>(QStringLiteral("PendingPlacement"), Qt::FindDirectChildrenOnly))
        return pending->outer();
    if (window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) {
        const QRect frame = window.frameGeometry();
        const QRect inner = window.geometry();
        return window.normalGeometry().adjusted(frame.left() - inner.left(), frame.top() - inner.top(),
                                                frame.right() - inner.right(), frame.bottom() - inner.bottom());
    }
    return window.frameGeometry();
}

} // namespace

void SaveWindowPlacement(const QWidget& window, const QString& iniPath, const QString& section)
{
    if (window.isMinimized())
        return;
    const double dpi = Units::LogicalDpi(&window);
    const QRect outer = NormalOuter(window);
    const auto twips = [dpi](int pixels) { return QString::number(Units::PixelsToTwips(pixels, dpi)); };
    IniValues values{{QStringLiteral("Top"), twips(outer.top())},
                     {QStringLiteral("Left"), twips(outer.left())},
                     {QStringLiteral("Height"), twips(outer.height())},
                     {QStringLiteral("Width"), twips(outer.width())}};
    if (window.isMaximized())
        values.append({MaximizedKey, QStringLiteral("1")});
    WriteIniSection(iniPath, section, values);
}

void RestoreWindowPlacement(QWidget& window, const QString& iniPath, const QString& section)
{
    const double dpi = Units::LogicalDpi(&window);
    const auto top = ReadTwips(iniPath, section, QStringLiteral("Top"));
    const auto left = ReadTwips(iniPath, section, QStringLiteral("Left"));
    const auto height = ReadTwips(iniPath, section, QStringLiteral("Height"));
    const auto width = ReadTwips(iniPath, section, QStringLiteral("Width"));
    if (!top && !left && !height && !width)
        return;

    QRect outer = window.frameGeometry();
    if (left)
        outer.moveLeft(Units::TwipsToPixels(*left, dpi));
    if (top)
        outer.moveTop(Units::TwipsToPixels(*top, dpi));
    if (width)
        outer.setWidth(Units::TwipsToPixels(*width, dpi));
    if (height)
        outer.setHeight(Units::TwipsToPixels(*height, dpi));
    outer = Fitted(outer, AvailableArea(window, outer.center()));

    const QSize extra = FrameExtra(window);
    window.move(outer.topLeft());
    window.resize(qMax(1, outer.width() - extra.width()), qMax(1, outer.height() - extra.height()));
    const bool maximise = ReadIniValue(iniPath, section, MaximizedKey) == QLatin1String("1");
    delete window.findChild<PendingPlacement*>(QStringLiteral("PendingPlacement"), Qt::FindDirectChildrenOnly);
    if (!window.isVisible())
        new PendingPlacement(window, outer, maximise);
    else if (maximise)
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void KeepOnScreen(QWidget& window)
{
    if (window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized))
        return;
    const QRect outer = window.frameGeometry();
    const QRect fitted = Fitted(outer, AvailableArea(window, outer.center()));
    if (fitted == outer)
        return;
    const QSize extra = FrameExtra(window);
    window.resize(qMax(1, fitted.width() - extra.width()), qMax(1, fitted.height() - extra.height()));
    window.move(fitted.topLeft());
}
