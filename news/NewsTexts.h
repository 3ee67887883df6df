#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** Texts of the news channel: constant ones, and those derived from texts of the hub. Stateless: any thread. */
class NewsTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString heading READ heading CONSTANT FINAL)
    Q_PROPERTY(QString channels READ channels CONSTANT FINAL)

public:
    using QObject::QObject;

    /** Maximum UTF-16 units of a wrapped text: twice what fits on a display with the narrowest letters. */
    static constexpr qsizetype maximumTextLength = 5000;

    static QString heading();
    static QString channels() { return QStringLiteral("channels"); }

    /** Text about the state of the tower on the standby card. */
    Q_INVOKABLE static QString towerLine(bool checking);

    /** A text from the hub, shortened for the standby card. */
    Q_INVOKABLE static QString cardLine(const QString& text);

    /** Title of the current programme; the name of the channel if it has none. */
    Q_INVOKABLE static QString onAirTitle(const QString& program);

    /** One-line text under the title: the note, or the tagline if there is no note. May be empty. */
    Q_INVOKABLE static QString onAirDetail(const QString& note, const QString& tagline);

    /** Label of the station on the lower third, in capitals. */
    Q_INVOKABLE static QString onAirStation(const QString& label);
};

} // namespace quillmere
