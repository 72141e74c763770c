#pragma once

#include <QUrl>

// Opens an address in the desktop's own browser (the help page); a seam so tests can see
// what was opened without a browser.
class UrlOpener
{
public:
    virtual ~UrlOpener() = default;
    // Answers false when the desktop has nothing to open it with.
    virtual bool openUrl(const QUrl& url) = 0;
};

class DesktopUrlOpener final : public UrlOpener
{
public:
    bool openUrl(const QUrl& url) override;
};
