#include "shell/WindowPlacement.h"

#include "common/Units.h"
#include "shell/IniFile.h"
#include "shell/ShellLog.h"

#include <QSize>
#include <QVariant>
#include <QWidget>

#include <cmath>
#include <optional>

namespace {

const char* const PendingOuterSize = "verdalyPendingOuterSize";

std::optional<int> ReadTwips(const QString& iniPath, const QString& section, const QString& key)
{
    const QString text = ReadIniValue(iniPath, section, key);
    if (text.isEmpty())
        return std::nullopt;
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value)) {
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

void ResizeOuter(QWidget& window, const QSize& outer)
{
    const QSize extra = FrameExtra(window);
    window.resize(qMax(1, outer.width() - extra.width()), qMax(1, outer.height() - extra.height()));
}

} // namespace

void SaveWindowPlacement(const QWidget& window, const QString& iniPath, const QString& section)
{
    if (window.isMinimized())
        return;
    const double dpi = Units::LogicalDpi(&window);
    const QRect frame = window.frameGeometry();
    const auto write = [&](const char* key, int pixels) {
        WriteIniValue(iniPath, section, QString::fromLatin1(key), QString::number(Units::PixelsToTwips(pixels, dpi)));
    };
    write("Top", frame.top());
    write("Left", frame.left());
    write("Height", frame.height());
    write("Width", frame.width());
}

void RestoreWindowPlacement(QWidget& window, const QString& iniPath, const QString& section)
{
    const double dpi = Units::LogicalDpi(&window);
    const auto top = ReadTwips(iniPath, section, QStringLiteral("Top"));
    const auto left = ReadTwips(iniPath, section, QStringLiteral("Left"));
    const auto height = ReadTwips(iniPath, section, QStringLiteral("Height"));
    const auto width = ReadTwips(iniPath, section, QStringLiteral("Width"));

    const QRect frame = window.frameGeometry();
    if (top || left) {
        window.move(left ? Units::TwipsToPixels(*left, dpi) : frame.left(),
                    top ? Units::TwipsToPixels(*top, dpi) : frame.top());
    }
    if (height || width) {
        const QSize outer(width ? Units::TwipsToPixels(*width, dpi) : frame.width(),
                          height ? Units::TwipsToPixels(*height, dpi) : frame.height());
        ResizeOuter(window, outer);
        if (!window.isVisible())
            window.setProperty(PendingOuterSize, outer);
    }
}

void ApplyPendingOuterSize(QWidget& window)
{
    const QVariant pending = window.property(PendingOuterSize);
    if (!pending.isValid())
        return;
    window.setProperty(PendingOuterSize, QVariant());
    ResizeOuter(window, pending.toSize());
}
