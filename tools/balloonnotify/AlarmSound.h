#pragma once

#include <QObject>
#include <QSoundEffect>
#include <QTimer>

// Plays the alarm's .wav once. A missing or broken file, or no audio at all, is logged
// and reported as finished: a sound that cannot be played never keeps the alarm back.
class AlarmSound final : public QObject
{
    Q_OBJECT
public:
    explicit AlarmSound(QObject* parent = nullptr);
    void play(const QString& path);
    bool isFinished() const { return m_finished; }

signals:
    void finished();

private:
    void onStatusChanged();
    void onPlayingChanged();
    void finish();

    QSoundEffect m_effect;
    QTimer m_limit;
    QString m_path;
    bool m_finished = true;
};
