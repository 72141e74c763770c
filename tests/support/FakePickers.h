#pragma once

#include "common/HotKeyBackend.h"
#include "common/Pickers.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QSet>

#include <deque>
#include <optional>

// Each picker records what it was asked and answers from a queue; an empty queue (or a
// nullopt / empty text in it) is the user cancelling.
class FakeColorPicker final : public ColorPicker
{
public:
    QList<QColor> requests;
    std::deque<std::optional<QColor>> answers;
    std::optional<QColor> pickColor(QWidget*, const QColor& initial) override
    {
        requests.append(initial);
        if (answers.empty())
            return std::nullopt;
        const std::optional<QColor> answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

class FakeFontPicker final : public FontPicker
{
public:
    QList<FontChoice> requests;
    std::deque<std::optional<FontChoice>> answers;
    std::optional<FontChoice> pickFont(QWidget*, const FontChoice& initial) override
    {
        requests.append(initial);
        if (answers.empty())
            return std::nullopt;
        const std::optional<FontChoice> answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

class FakeFilePicker final : public FilePicker
{
public:
    QList<FileRequest> requests;
    std::deque<QString> answers;
    QString pickFile(QWidget*, const FileRequest& request) override
    {
        requests.append(request);
        if (answers.empty())
            return QString();
        const QString answer = answers.front();
        answers.pop_front();
        return answer;
    }
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
    QList<Combination> probed;

    bool isAvailable() const override { return available; }
    HotKeyStatus registerHotKey(int identifier, int virtualKey, int modifiers) override
    {
        const HotKeyStatus status = statusOf(virtualKey, modifiers);
        if (status == HotKeyStatus::Registered)
            registered.insert(identifier, {virtualKey, modifiers});
        return status;
    }
    void unregisterHotKey(int identifier) override { registered.remove(identifier); }
    HotKeyStatus probe(int virtualKey, int modifiers) override
    {
        probed.append({virtualKey, modifiers});
        return statusOf(virtualKey, modifiers);
    }
    // The user presses a combination anywhere on the desktop.
    void press(int virtualKey, int modifiers)
    {
        if (registered.values().contains({virtualKey, modifiers}))
            emit activated(virtualKey, modifiers);
    }

private:
    HotKeyStatus statusOf(int virtualKey, int modifiers) const
    {
        if (!available)
            return HotKeyStatus::Unavailable;
        return heldElsewhere.contains({virtualKey, modifiers}) ? HotKeyStatus::Taken : HotKeyStatus::Registered;
    }
};
