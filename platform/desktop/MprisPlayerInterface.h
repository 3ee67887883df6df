#pragma once

#include "MprisPlayer.h"

#include <QDBusAbstractAdaptor>

namespace quillmere {

/** D-Bus interface `org.mpris.MediaPlayer2.Player`: playback state and control. Created and owned by MprisPlayer. */
class MprisPlayerInterface : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
    Q_PROPERTY(QVariantMap Metadata READ metadata)
    Q_PROPERTY(qlonglong Position READ position)
    Q_PROPERTY(double Rate READ one CONSTANT)
    Q_PROPERTY(double MinimumRate READ one CONSTANT)
    Q_PROPERTY(double MaximumRate READ one CONSTANT)
    Q_PROPERTY(double Volume READ one CONSTANT)
    Q_PROPERTY(bool CanGoNext READ no CONSTANT)
    Q_PROPERTY(bool CanGoPrevious READ no CONSTANT)
    Q_PROPERTY(bool CanPlay READ canPlay)
    Q_PROPERTY(bool CanPause READ canPlay)
    Q_PROPERTY(bool CanSeek READ canSeek)
    Q_PROPERTY(bool CanControl READ yes CONSTANT)

public:
    explicit MprisPlayerInterface(MprisPlayer* player) : QDBusAbstractAdaptor(player), m_player(player) {}

    /** The properties, by their D-Bus names, whose changes are sent as `PropertiesChanged`. */
    QVariantMap notifiedProperties() const;

    QString playbackStatus() const;
    QVariantMap metadata() const { return m_player->metadata(); }
    qlonglong position() const { return m_player->position(); }
    double one() const { return 1; }
    bool canPlay() const { return m_player->state().canPlay; }
    bool canSeek() const { return m_player->state().canSeek; }
    bool yes() const { return true; }
    bool no() const { return false; }

public Q_SLOTS:
    void Play();
    void Pause();
    void PlayPause();
    void Stop();
    void Seek(qlonglong Offset);
    void SetPosition(const QDBusObjectPath& TrackId, qlonglong Position);
    void Next() {}
    void Previous() {}
    void OpenUri(const QString& Uri){Q_UNUSED(Uri)}

    Q_SIGNALS : void Seeked(qlonglong Position);

private:
    MprisPlayer* m_player;
};

} // namespace quillmere
