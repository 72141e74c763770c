// Measures what the user feels most: switching the shown month, and the time from start
// to the first painted month, over databases of 1,000 to 100,000 entries; then the alarm
// tick over the largest of them with 1,000 alarms set for today, and how late alarms
// ring on the real timers.
//
//   build/bin/verdaly-bench [--keep] [--no-alarms] [N ...]     (default: 1000 10000 100000)
//
// --keep leaves the filled databases behind (their folders are printed) for a look at
// query plans with the sqlite3 shell.
//
// One line per figure, e.g. "month-switch N=100000 median_ms=... max_ms=...". The list
// window's figures: "list-fill" for a year and for every entry (the fill as the user sees
// it, statement to painted grid) and "list-scroll" for a page of the grid repainted.
#include "alarms/AlarmTick.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/Fonts.h"
#include "common/ProcessLauncher.h"
#include "common/Prompter.h"
#include "entries/EntryKinds.h"
#include "mainwindow/FrmMain.h"
#include "store/SqlText.h"
#include "store/StartingDatabase.h"
#include "views/FrmList.h"
#include "views/ListGridModel.h"
#include "views/ListQuery.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

class FixedClock final : public Clock
{
public:
    QDateTime at = QDateTime(QDate(2026, 11, 22), QTime(9, 0));
    QDateTime now() const override { return at; }
};

class SilentPrompter final : public Prompter
{
public:
    PromptAnswer ask(QWidget*, const Prompt& prompt) override
    {
        std::fprintf(stderr, "message: %s\n", qPrintable(prompt.text));
        return PromptAnswer::Ok;
    }
};

QString Time(QRandomGenerator& random)
{
    return QStringLiteral("%1:%2")
        .arg(random.bounded(7, 22), 2, 10, QLatin1Char('0'))
        .arg(random.bounded(4) * 15, 2, 10, QLatin1Char('0'));
}

// N entries over ten years (2020 to 2029): mostly one-day schedules, some open-ended ones,
// overnight and multi-day spans, and tasks with and without a deadline time.
void Fill(DatabaseConnection& db, int count)
{
    QRandomGenerator random(20261122);
    const QDate start(2020, 1, 1);
    const int days = static_cast<int>(start.daysTo(QDate(2029, 12, 31)));
    db.BeginTrans();
    for (int id = 1; id <= count; ++id) {
        const QDate day = start.addDays(random.bounded(days));
        const int family = random.bounded(100);
        QString startDate = DateToStored(day), endDate = startDate, startTime, endTime;
        QString data = QStringLiteral("1");
        if (family < 45) { // A: a day, with or without times
            const int t = random.bounded(5);
            if (t & 1)
                startTime = Time(random);
            if (t & 2)
                endTime = Time(random);
        } else if (family < 55) { // D: start date only
            endDate.clear();
            if (random.bounded(2))
                startTime = Time(random);
        } else if (family < 62) { // B: overnight
            endDate = DateToStored(day.addDays(1));
            startTime = Time(random);
            endTime = Time(random);
        } else if (family < 75) { // C: two days to three weeks
            endDate = DateToStored(day.addDays(random.bounded(2, 21)));
            if (random.bounded(2))
                startTime = Time(random);
        } else { // T: a task with a deadline
            data = QStringLiteral("2");
            startDate.clear();
            if (random.bounded(2))
                endTime = Time(random);
        }
        const QString kind = KindCode(startDate, startTime, endDate, endTime);
        db.ExecuteSql(
            QStringLiteral("INSERT INTO TRNSCHTSK (ID,DATA,BUSINESS,STARTDT,STARTTM,ENDDT,ENDTM,ENDLESS,CLASS,"
                           "ALARM,PRIORITY,COMPLETION,COMPDT,FROMTOKBN,COMMENT,UPDTIME) VALUES (") +
            QString::number(id) + QStringLiteral(", ") + QuoteText(data) + QStringLiteral(", ") +
            QuoteText(QStringLiteral("予定 %1").arg(id)) + QStringLiteral(", ") + QuoteText(startDate) +
            QStringLiteral(", ") + QuoteText(startTime) + QStringLiteral(", ") + QuoteText(endDate) +
            QStringLiteral(", ") + QuoteText(endTime) + QStringLiteral(", '', 0, '0', ") +
            QString::number(data == QStringLiteral("2") ? random.bounded(1, 4) : 0) + QStringLiteral(", ") +
            QuoteText(data == QStringLiteral("2") ? QStringLiteral("0") : QString()) + QStringLiteral(", '', ") +
            QuoteText(kind) + QStringLiteral(", '', '2026/11/01 00:00:00')"));
    }
    db.CommitTrans();
}

// Processes the first paint of a widget itself, so the time taken includes the painting.
class FirstPaintTimer final : public QObject
{
public:
    explicit FirstPaintTimer(const QElapsedTimer& clock) : m_clock(clock) {}
    qint64 elapsedNs = -1;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint || elapsedNs >= 0)
            return false;
        watched->removeEventFilter(this);
        watched->event(event); // QObject::event is public and dispatches to the widget
        elapsedNs = m_clock.nsecsElapsed();
        return true;
    }

private:
    const QElapsedTimer& m_clock;
};

// The time this thread ran, which a machine busy with other work does not inflate.
double ThreadCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double Median(std::vector<double> samples)
{
    std::sort(samples.begin(), samples.end());
    return samples[samples.size() / 2];
}

// The list window's grid filled anew and painted, and scrolled page by page.
void RunList(AppServices& services, int count)
{
    ListHandOver handOver;
    FrmList list(services, handOver);
    list.show();
    QCoreApplication::processEvents();
    auto* grid = list.findChild<QTableView*>(QStringLiteral("GrdGrid"));
    struct Range
    {
        const char* name;
        QDate from;
        QDate to;
    };
    for (const Range& range :
         {Range{"year", QDate(2024, 1, 1), QDate(2024, 12, 31)}, Range{"all", ListRangeFirst(), ListRangeLast()}}) {
        const QString sql = ListEntrySql(ListChoice::SchedulesAndTasks, range.from, range.to);
        std::vector<double> samples, cpuSamples;
        for (int round = 0; round < 6; ++round) {
            QElapsedTimer timer;
            timer.start();
            const double cpuStart = ThreadCpuMs();
            list.model()->fill(services.db(), sql);
            grid->repaint();
            if (round > 0) { // the first round warms the page cache
                samples.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
                cpuSamples.push_back(ThreadCpuMs() - cpuStart);
            }
        }
        std::printf("list-fill N=%d range=%s rows=%d median_ms=%.2f max_ms=%.2f cpu_median_ms=%.2f\n", count,
                    range.name, list.model()->rowCount(), Median(samples),
                    *std::max_element(samples.begin(), samples.end()), Median(cpuSamples));
    }
    QScrollBar* bar = grid->verticalScrollBar();
    std::vector<double> samples;
    for (int step = 0; step < 100 && bar->value() < bar->maximum(); ++step) {
        QElapsedTimer timer;
        timer.start();
        bar->setValue(bar->value() + bar->pageStep());
        grid->viewport()->repaint();
        samples.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    if (!samples.empty())
        std::printf("list-scroll N=%d median_ms=%.3f max_ms=%.3f pages=%zu\n", count, Median(samples),
                    *std::max_element(samples.begin(), samples.end()), samples.size());
    std::fflush(stdout);
}

void Run(int count, bool keep)
{
    QTemporaryDir dir;
    if (keep) {
        dir.setAutoRemove(false);
        std::printf("database N=%d dir=%s\n", count, qPrintable(dir.path()));
    }
    FixedClock clock;
    SilentPrompter prompter;
    {
        AppServices filler;
        filler.dataDir = dir.path();
        CreateStartingDatabase(filler.databasePath());
        filler.connection = OpenDatabaseConnection(filler.databasePath(), QString());
        Fill(filler.db(), count);
    }

    AppServices services;
    services.dataDir = dir.path();
    services.clock = &clock;
    services.prompter = &prompter;

    // Start-up to the first painted month.
    QElapsedTimer startClock;
    startClock.start();
    FrmMain main(services);
    FirstPaintTimer paint(startClock);
    main.calendar()->installEventFilter(&paint);
    if (!main.Form_Load())
        return;
    main.show();
    while (paint.elapsedNs < 0 && startClock.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    std::printf("startup-first-paint N=%d ms=%.2f\n", count, static_cast<double>(paint.elapsedNs) / 1e6);

    // Month switches across the ten years, each the pair that runs when the user turns a page.
    HalvernCalendar* calendar = main.calendar();
    calendar->blockSignals(true);
    std::vector<double> samples;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 120; ++i) {
            calendar->setCurrentDate(QDate(2020, 1, 15).addMonths(i));
            QElapsedTimer timer;
            timer.start();
            main.RefreshMonthMarks();
            main.RefreshDayPanel();
            if (round == 1) // the first round warms the page cache
                samples.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        }
    }
    calendar->blockSignals(false);
    std::sort(samples.begin(), samples.end());
    const double median = samples[samples.size() / 2];
    std::printf("month-switch N=%d median_ms=%.3f p90_ms=%.3f min_ms=%.3f max_ms=%.3f samples=%zu\n", count, median,
                samples[samples.size() * 9 / 10], samples.front(), samples.back(), samples.size());
    std::fflush(stdout);
    RunList(services, count);
    main.Form_Unload();
}

// ---- alarms ----

// The real system clock moved by a fixed amount: the alarm-delay run puts each alarm's
// moment a fraction of a second ahead instead of waiting for whole minutes to pass.
class ShiftedClock final : public Clock
{
public:
    qint64 shiftMs = 0;
    QDateTime now() const override { return m_system.now().addMSecs(shiftMs); }
    void setNow(const QDateTime& wanted) { shiftMs = m_system.now().msecsTo(wanted); }

private:
    SystemClock m_system;
};

// Notes the program's time at each start of the notifier instead of starting it.
class RecordingLauncher final : public ProcessLauncher
{
public:
    explicit RecordingLauncher(const Clock& clock) : m_clock(clock) {}
    std::vector<QDateTime> started;
    bool startDetached(const QString&, const QStringList&) override
    {
        started.push_back(m_clock.now());
        return true;
    }

private:
    const Clock& m_clock;
};

void SetAlarmOptions(DatabaseConnection& db, bool balloon)
{
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 0 WHERE CODE = 304"));
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = 314").arg(balloon ? 1 : 0));
}

// count timed one-day entries on day with their alarm set, from 10:00 on, a minute apart
// (wrapping within the day), with IDs from firstId.
void AddAlarms(DatabaseConnection& db, const QDate& day, int firstId, int count)
{
    db.BeginTrans();
    for (int i = 0; i < count; ++i) {
        const QTime time = QTime(10, 0).addSecs(60 * (i % 720));
        const QString date = QuoteText(DateToStored(day));
        db.ExecuteSql(
            QStringLiteral("INSERT INTO TRNSCHTSK (ID,DATA,BUSINESS,STARTDT,STARTTM,ENDDT,ENDTM,ENDLESS,CLASS,"
                           "ALARM,PRIORITY,COMPLETION,COMPDT,FROMTOKBN,COMMENT,UPDTIME) VALUES (") +
            QString::number(firstId + i) + QStringLiteral(", '1', ") + QuoteText(QStringLiteral("アラーム %1").arg(i)) +
            QStringLiteral(", ") + date + QStringLiteral(", ") + QuoteText(time.toString(QStringLiteral("HH:mm"))) +
            QStringLiteral(", ") + date +
            QStringLiteral(", '', '', 0, '1', 0, '', '', 'A3', '', '2026/11/01 00:00:00')"));
    }
    db.CommitTrans();
}

// One tick over count entries of which 1,000 have their alarm set today: first while none
// is due yet (the tick every 30 seconds of a normal day), then once with all of them due.
void RunAlarmTick(int count)
{
    constexpr int Alarms = 1000;
    QTemporaryDir dir;
    FixedClock clock;
    SilentPrompter prompter;
    AppServices services;
    services.dataDir = dir.path();
    services.clock = &clock;
    services.prompter = &prompter;
    RecordingLauncher launcher(clock);
    services.launcher = &launcher;
    CreateStartingDatabase(services.databasePath());
    services.connection = OpenDatabaseConnection(services.databasePath(), QString());
    Fill(services.db(), count);
    AddAlarms(services.db(), clock.now().date(), count + 1, Alarms);
    SetAlarmOptions(services.db(), true);

    AlarmTick tick(services);
    std::vector<double> samples;
    for (int i = 0; i < 21; ++i) {
        QElapsedTimer timer;
        timer.start();
        tick.run(nullptr, clock.now().date());
        if (i > 0) // the first warms the page cache
            samples.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(samples.begin(), samples.end());
    std::printf("alarm-tick N=%d alarms_today=%d due=0 median_ms=%.3f max_ms=%.3f samples=%zu\n", count, Alarms,
                samples[samples.size() / 2], samples.back(), samples.size());

    // All due at once: each is delivered and cleared, in one tick.
    FixedClock late;
    late.at = QDateTime(clock.now().date(), QTime(23, 59));
    services.clock = &late;
    QElapsedTimer timer;
    timer.start();
    tick.run(nullptr, late.now().date());
    std::printf("alarm-tick N=%d alarms_today=%d due=%d delivered=%zu ms=%.3f\n", count, Alarms, Alarms,
                launcher.started.size(), static_cast<double>(timer.nsecsElapsed()) / 1e6);
    std::fflush(stdout);
}

// The delay from each alarm's moment to its delivery on the real timers of the running
// main window. The clock is put just before each moment, as after an editor saved.
void RunAlarmDelay(int alarms)
{
    QTemporaryDir dir;
    ShiftedClock clock;
    SilentPrompter prompter;
    RecordingLauncher launcher(clock);
    const QDate day(2026, 11, 22);
    {
        AppServices filler;
        filler.dataDir = dir.path();
        CreateStartingDatabase(filler.databasePath());
        filler.connection = OpenDatabaseConnection(filler.databasePath(), QString());
        Fill(filler.db(), 10000);
        AddAlarms(filler.db(), day, 10001, alarms);
        SetAlarmOptions(filler.db(), true);
    }
    AppServices services;
    services.dataDir = dir.path();
    services.clock = &clock;
    services.prompter = &prompter;
    services.launcher = &launcher;
    clock.setNow(QDateTime(day, QTime(9, 59)));
    FrmMain main(services);
    if (!main.Form_Load())
        return;
    std::vector<double> delays;
    QRandomGenerator random(1122);
    for (int i = 0; i < alarms; ++i) {
        const QDateTime moment(day, QTime(10, 0).addSecs(60 * i));
        clock.setNow(moment.addMSecs(-random.bounded(300, 900)));
        main.RearmAlarms();
        QElapsedTimer wait;
        wait.start();
        while (launcher.started.size() <= static_cast<size_t>(i) && wait.elapsed() < 35000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        if (launcher.started.size() <= static_cast<size_t>(i)) {
            std::printf("alarm-delay alarm %d never rang\n", i);
            break;
        }
        delays.push_back(static_cast<double>(moment.msecsTo(launcher.started.back())));
    }
    main.Form_Unload();
    if (delays.empty())
        return;
    std::sort(delays.begin(), delays.end());
    std::printf("alarm-delay alarms=%zu median_ms=%.0f max_ms=%.0f min_ms=%.0f\n", delays.size(),
                delays[delays.size() / 2], delays.back(), delays.front());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    RegisterFontSubstitutions();
    QList<int> counts;
    bool keep = false;
    bool alarms = true;
    for (const QString& arg : QApplication::arguments().mid(1)) {
        if (arg == QStringLiteral("--keep"))
            keep = true;
        else if (arg == QStringLiteral("--no-alarms"))
            alarms = false;
        else
            counts << arg.toInt();
    }
    if (counts.isEmpty())
        counts = {1000, 10000, 100000};
    for (int count : counts)
        Run(count, keep);
    if (alarms) {
        RunAlarmTick(*std::max_element(counts.begin(), counts.end()));
        RunAlarmDelay(20);
    }
    return 0;
}
