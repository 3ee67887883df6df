#pragma once

#include "StationChannel.h"
#include "TunerStation.h"

#include <QMap>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

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
