#pragma once

#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/DatePicker.h"
#include "common/Prompter.h"
#include "common/RandomSource.h"
#include "common/UrlOpener.h"
#include "support/FakePickers.h"

#include <QDateTime>
#include <QList>
#include <QTemporaryDir>

#include <deque>
#include <functional>
#include <memory>

class FakeClock final : public Clock
{
public:
    QDateTime current = QDateTime(QDate(2026, 11, 22), QTime(9, 30, 0));
    QDateTime now() const override { return current; }
};

// Records every message and question; answers questions from a queue (OK when empty).
class FakePrompter final : public Prompter, public ScriptedAnswers<Prompt, PromptAnswer>
{
public:
    QList<Prompt>& shown = requests;
    // Runs while the box would be open, as the user or another window might act then.
    std::function<void(const Prompt&)> whileShown;

    PromptAnswer ask(QWidget*, const Prompt& prompt) override
    {
        const bool question = prompt.buttons != PromptButtons::Ok;
        const PromptAnswer answer = question ? next(prompt) : PromptAnswer::Ok;
        if (!question)
            requests.append(prompt);
        if (whileShown)
            whileShown(prompt);
        return answer;
    }
    QStringList texts() const
    {
        QStringList list;
        for (const Prompt& p : shown)
            list << p.text;
        return list;
    }
};

// Answers from a queue of draws (0 when empty).
class FakeRandom final : public RandomSource, public ScriptedAnswers<int, double>
{
public:
    std::deque<double>& values = answers;
    double next() override { return ScriptedAnswers::next(0); }
};

// Records each request and answers from a queue of dates (an invalid date = cancel).
class FakeDatePicker final : public DatePicker, public ScriptedAnswers<DatePickHandOver, QDate>
{
public:
    void pickDate(QWidget*, DatePickHandOver& handOver) override
    {
        const QDate answer = next(handOver);
        handOver.DatePicked = answer.isValid();
        if (answer.isValid())
            handOver.PickedDate = answer;
    }
};

// Records every address it is asked to open; answers `opens` (true: a browser took it).
class FakeUrlOpener final : public UrlOpener
{
public:
    QList<QUrl> opened;
    bool opens = true;
    bool openUrl(const QUrl& url) override
    {
        opened.append(url);
        return opens;
    }
};

// A fresh data folder with a starting database, and services wired to fakes.
class TestEnvironment
{
public:
    // Builds the starting database unless told not to (for tests that start from nothing).
    explicit TestEnvironment(bool withDatabase = true);

    QTemporaryDir dir;
    FakeClock clock;
    FakePrompter prompter;
    FakeRandom random;
    FakeDatePicker datePicker;
    FakeUrlOpener urlOpener;
    FakeLauncher launcher;
    FakeColorPicker colorPicker;
    FakeFontPicker fontPicker;
    FakeFilePicker filePicker;
    FakeHotKeyBackend hotKeys;
    AppServices services;

    DatabaseConnection& db() { return services.db(); }
    QString path() const { return services.databasePath(); }
    // Opens the services' connection on the folder's database.
    void open();

    // Handy readers for checks.
    qint64 scalar(const QString& sql);
    int count(const QString& table, const QString& where = QString());
};

// Rewrites a starting database into the layout of an older release (10 or 11).
void DowngradeDatabase(DatabaseConnection& db, int version);
