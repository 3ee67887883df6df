#pragma once

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

// The records of the news channel.

/** One entry of the news channel map. */
struct StationChannel
{
    Q_GADGET
    QML_VALUE_TYPE(stationChannel)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString path MEMBER path)

public:
    QString label;
    QString path;

    bool operator==(const StationChannel&) const = default;
};

inline size_t qHash(const StationChannel& channel, size_t seed = 0) noexcept
{
    return qHashMulti(seed, channel.label, channel.path);
}

/** A station on the tuner strip. Computed from a NewsStatus, not decoded from JSON. The number identifies it. */
struct TunerStation
{
    Q_GADGET
    QML_VALUE_TYPE(tunerStation)
    Q_PROPERTY(QString number MEMBER number)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString path MEMBER path)

public:
    QString number; ///< the channel number shown on the tuner, "5" for the built-in station
    QString label;
    QString path; ///< hub path or absolute address of the HLS playlist

    bool operator==(const TunerStation&) const = default;
};

inline size_t qHash(const TunerStation& station, size_t seed = 0) noexcept
{
    return qHashMulti(seed, station.number, station.label, station.path);
}

/** The state of the news channel's transmission tower. The default is dark (off the air), with empty texts. */
struct NewsStatus
{
    Q_GADGET
    QML_VALUE_TYPE(newsStatus)
    Q_PROPERTY(bool towerLive MEMBER towerLive)
    Q_PROPERTY(bool takeover MEMBER takeover)
    Q_PROPERTY(QString hlsURL MEMBER hlsURL)
    Q_PROPERTY(QString mode MEMBER mode)
    Q_PROPERTY(QString youtubeID MEMBER youtubeID)
    Q_PROPERTY(QString tagline MEMBER tagline)
    Q_PROPERTY(QString programTitle MEMBER programTitle)
    Q_PROPERTY(QString programNote MEMBER programNote)
    Q_PROPERTY(QString nextBroadcast MEMBER nextBroadcast)
    Q_PROPERTY(QString nextBroadcastLabel MEMBER nextBroadcastLabel)
    Q_PROPERTY(QStringList ticker MEMBER ticker)

public:
    bool towerLive = false;
    bool takeover = false;
    QString hlsURL = QStringLiteral("/live/news/index.m3u8");
    QString mode = QStringLiteral("hls");
    QString youtubeID;
    QString tagline;
    QString programTitle;
    QString programNote;
    QString nextBroadcast; ///< ISO 8601 date-time, as sent by the hub
    QString nextBroadcastLabel;
    QStringList ticker;
    QMap<QString, StationChannel> channels; ///< by channel number

    /** The stations of the tuner strip, sorted by number. The built-in station is always included. */
    QList<TunerStation> stations() const;

    bool operator==(const NewsStatus&) const = default;
};

} // namespace quillmere
