#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

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

    static QString stationName();
    static QString televisionName();
    static QString newsDoor();
    static QString live();
    static QString storeDoor();
    static QString storeMotto();
    static QString openingHours();
    static QString homeVideo();
    static QString quitNotice();

    /** Text beside the on-air lamp. */
    Q_INVOKABLE static QString lampText(bool live);

    /** Caption after the lamp on the news door. */
    Q_INVOKABLE static QString towerCaption(bool live);
};
