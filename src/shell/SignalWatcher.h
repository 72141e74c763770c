#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal delivered on the event loop, so that
// being told to stop runs the same orderly shutdown as the exit menu.
class SignalWatcher final : public QObject
{
    Q_OBJECT
public:
    explicit SignalWatcher(QObject* parent = nullptr);
    ~SignalWatcher() override;

signals:
    void terminationRequested(int signalNumber);

private:
    void readSignal();
    QSocketNotifier* m_notifier = nullptr;
};
