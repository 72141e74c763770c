#pragma once

#include "common/HotKeyBackend.h"
#include "common/Pickers.h"
#include "common/ProcessLauncher.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QSet>

#include <deque>
#include <optional>

// Records each request and answers from a queue; an empty queue (or an empty answer in it)
// is the user cancelling.
template <typename Request, typename Answer> struct ScriptedAnswers
{
    QList<Request> requests;
    std::deque<Answer> answers;
    Answer next(const Request& request)
    {
        requests.append(request);
        if (answers.empty())
            return Answer{};
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

class FakeColorPicker final : public ColorPicker, public ScriptedAnswers<QColor, std::optional<QColor>>
{
public:
    std::optional<QColor> pickColor(QWidget*, const QColor& initial) override { return next(initial); }
};

class FakeFontPicker final : public FontPicker, public ScriptedAnswers<FontChoice, std::optional<FontChoice>>
{
public:
    std::optional<FontChoice> pickFont(QWidget*, const FontChoice& initial) override { return next(initial); }
};

class FakeFilePicker final : public FilePicker, public ScriptedAnswers<FileRequest, QString>
{
public:
    QString pickFile(QWidget*, const FileRequest& request) override { return next(request); }
};

// A desktop's hot-key service: remembers what is held, refuses the combinations another
// program is said to hold, and presses keys on request.
class FakeHotKeyBackend final : public HotKeyBackend
{
public:
    using Combination = QPair<int, int>; // key code, registration modifiers

    bool available = true;
    QSet<Combination> heldElsewhere;
    QMap<int, Combination> registered; // by identifier

    bool isAvailable() const override { return available; }
    HotKeyStatus registerHotKey(int identifier, int virtualKey, int modifiers) override
    {
        const HotKeyStatus status = probe(virtualKey, modifiers);
        if (status == HotKeyStatus::Registered)
            registered.insert(identifier, {virtualKey, modifiers});
        return status;
    }
    void unregisterHotKey(int identifier) override { registered.remove(identifier); }
    HotKeyStatus probe(int virtualKey, int modifiers) override
    {
        if (!available)
            return HotKeyStatus::Unavailable;
        return heldElsewhere.contains({virtualKey, modifiers}) ? HotKeyStatus::Taken : HotKeyStatus::Registered;
    }
    // The user presses a combination anywhere on the desktop.
    void press(int virtualKey, int modifiers)
    {
        if (registered.values().contains({virtualKey, modifiers}))
            emit activated(virtualKey, modifiers);
    }
};

// Records what would have been started; answers as told (started unless failing is set).
class FakeLauncher final : public ProcessLauncher
{
public:
    struct Start
    {
        QString program;
        QStringList arguments;
    };
    QList<Start> started;
    bool failing = false;

    bool startDetached(const QString& program, const QStringList& arguments) override
    {
        started.append(Start{program, arguments});
        return !failing;
    }
};
