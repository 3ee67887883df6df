#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/** The words of the tape search. Stateless: any thread; no locale has a say. */
class TapeSearchTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString title READ title CONSTANT FINAL)
    Q_PROPERTY(QString invitation READ invitation CONSTANT FINAL)

public:
    using QObject::QObject;

    static QString title();
    static QString invitation();

    /** How many tapes were found. */
    static QString countLine(qsizetype tapes);

    /** That there is none; `query` stands there as the viewer typed it. */
    static QString noMatchLine(const QString& query);
};
