#pragma once

#include "NewsStatus.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace quillmere {

/** Constant texts of the front screen and the on-air lamp. Stateless: any thread. */
class StationTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString stationName READ stationName CONSTANT FINAL)
    Q_PROPERTY(QString televisionName READ televisionName CONSTANT FINAL)
    Q_PROPERTY(QString newsDoor READ newsDoor CONSTANT FINAL)
    Q_PROPERTY(QString live READ live CONSTANT FINAL)
    Q_PROPERTY(QString storeDoor READ storeDoor CONSTANT FINAL)
    Q_PROPERTY(QString storeMotto READ storeMotto CONSTANT FINAL)
    Q_PROPERTY(QString openingHours READ openingHours CONSTANT FINAL)
    Q_PROPERTY(QString homeVideo READ homeVideo CONSTANT FINAL)
    Q_PROPERTY(QString quitNotice READ quitNotice CONSTANT FINAL)

public:
    using QObject::QObject;

    static QString stationName() { return QStringLiteral("QUILLMERE"); }
    static QString televisionName() { return QStringLiteral("Quillmere Television"); }
    static QString newsDoor() { return QStringLiteral("5 O'CLOCK NEWS"); }
    static QString live() { return QStringLiteral("LIVE"); }
    static QString storeDoor() { return QStringLiteral("REWINDERY"); }
    static QString storeMotto() { return QStringLiteral("Public-meeting rentals · Be Kind, Please Rewind"); }
    static QString openingHours() { return QStringLiteral("open 24 hrs"); }
    static QString homeVideo() { return QStringLiteral("home video"); }
    static QString quitNotice() { return QStringLiteral("Press back again to switch the set off"); }

    /** Text beside the on-air lamp. */
    Q_INVOKABLE static QString lampText(bool live)
    {
        return live ? QStringLiteral("ON AIR") : QStringLiteral("OFF AIR");
    }

    /** Caption after the lamp on the news door. */
    Q_INVOKABLE static QString towerCaption(bool live)
    {
        return live ? QStringLiteral("on air") : QStringLiteral("standby");
    }
};

// Texts of the front screen as pure functions of the state.

QString newsDoorSubtitle(const NewsStatus& news);

QString storeDoorSubtitle(qint64 tapes, qint64 markets);

/** Status line under the doors. */
struct StatusLine
{
    QString text;
    int size; ///< of the font, in points
    QColor color;

    bool operator==(const StatusLine&) const = default;
};

StatusLine statusLine(const std::optional<QString>& lastError, bool isLoading, bool hasLoadedOnce);

} // namespace quillmere
