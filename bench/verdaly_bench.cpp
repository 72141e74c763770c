// Measures what the user feels most: switching the shown month, and the time from start
// to the first painted month, over databases of 1,000 to 100,000 entries.
//
//   build/bin/verdaly-bench [--keep] [N ...]     (default: 1000 10000 100000)
//
// --keep leaves the filled databases behind (their folders are printed) for a look at
// query plans with the sqlite3 shell.
//
// One line per figure, e.g. "month-switch N=100000 median_ms=... max_ms=...". The list
// window's figures: "list-fill" for a year and for every entry (the fill as the user sees
// it, statement to painted grid) and "list-scroll" for a page of the grid repainted.
#include "calendarcontrol/HalvernCalendar.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/Fonts.h"
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
    QDateTime now() const override { return QDateTime(QDate(2026, 11, 22), QTime(9, 0)); }
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

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    RegisterFontSubstitutions();
    QList<int> counts;
    bool keep = false;
    for (const QString& arg : QApplication::arguments().mid(1)) {
        if (arg == QStringLiteral("--keep"))
            keep = true;
        else
            counts << arg.toInt();
    }
    if (counts.isEmpty())
        counts = {1000, 10000, 100000};
    for (int count : counts)
        Run(count, keep);
    return 0;
}
