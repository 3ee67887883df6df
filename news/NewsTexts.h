#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/** What the news channel's graphics say: words that never change, and which of the hub's they show. Stateless: any thread. */
class NewsTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString heading READ heading CONSTANT FINAL)
    Q_PROPERTY(QString channels READ channels CONSTANT FINAL)

public:
    using QObject::QObject;

    /** UTF-16 units of a text that is wrapped: of the narrowest letters a display has room for half as many. */
    static constexpr qsizetype longestText = 5000;

    static QString heading();
    static QString channels();

    /** What the set does while the tower is dark. */
    Q_INVOKABLE static QString towerLine(bool checking);

    /** A text of the hub's on the standby card. */
    Q_INVOKABLE static QString cardLine(const QString& text);

    /** The programme on the air, the channel's own name without one. */
    Q_INVOKABLE static QString onAirTitle(const QString& program);

    /** What stands under it, on one line: the note, else the tagline, else nothing. */
    Q_INVOKABLE static QString onAirDetail(const QString& note, const QString& tagline);

    /** The station's label on the lower third, in capitals. */
    Q_INVOKABLE static QString onAirStation(const QString& label);
};
