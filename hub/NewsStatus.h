#pragma once

#include "StationChannel.h"
#include "TunerStation.h"

#include <QMap>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

/** The state of the news transmission tower; default-made, it is the placeholder: a dark tower and empty texts. */
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
    QString nextBroadcast; ///< a date-time as the hub sent it
    QString nextBroadcastLabel;
    QStringList ticker;
    QMap<QString, StationChannel> channels; ///< by channel number

    /** The tuner strip's stations, by number; always at least the built-in one. */
    QList<TunerStation> stations() const;

    bool operator==(const NewsStatus&) const = default;
};
