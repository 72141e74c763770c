#include "AlarmSound.h"

#include "NotifierLog.h"

#include <QAudioDevice>
#include <QFileInfo>
#include <QMediaDevices>
#include <QUrl>

namespace {

// An alarm sound is a few seconds; past this the player is taken to be stuck.
constexpr int LimitMs = 30000;

} // namespace

AlarmSound::AlarmSound(QObject* parent) : QObject(parent)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(LimitMs);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        qCWarning(lcNotifier).noquote() << "the sound did not end in time:" << m_path;
        finish();
    });
    connect(&m_effect, &QSoundEffect::statusChanged, this, &AlarmSound::onStatusChanged);
    connect(&m_effect, &QSoundEffect::playingChanged, this, &AlarmSound::onPlayingChanged);
}

void AlarmSound::play(const QString& path)
{
    m_path = path;
    m_finished = false;
    const QFileInfo file(path);
    if (!file.isFile() || !file.isReadable()) {
        qCWarning(lcNotifier).noquote() << "sound file not found or not readable:" << path;
        finish();
        return;
    }
    m_limit.start();
    // Loaded first and played once ready, so a broken file is told apart from a machine
    // without sound.
    m_effect.setSource(QUrl::fromLocalFile(file.absoluteFilePath()));
    onStatusChanged();
}

void AlarmSound::onStatusChanged()
{
    if (m_finished)
        return;
    if (m_effect.status() == QSoundEffect::Error) {
        qCWarning(lcNotifier).noquote() << "sound file cannot be played:" << m_path;
        finish();
    } else if (m_effect.status() == QSoundEffect::Ready && !m_effect.isPlaying()) {
        if (QMediaDevices::audioOutputs().isEmpty()) {
            // Nothing would ever report the end of a sound played into no device.
            qCInfo(lcNotifier).noquote() << "no audio output; the sound is not played:" << m_path;
            finish();
            return;
        }
        m_effect.play();
    }
}

void AlarmSound::onPlayingChanged()
{
    if (!m_finished && !m_effect.isPlaying() && m_effect.status() == QSoundEffect::Ready)
        finish();
}

void AlarmSound::finish()
{
    if (m_finished)
        return;
    m_finished = true;
    m_limit.stop();
    emit finished();
}
