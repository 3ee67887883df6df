#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/** Texts of the tape search. Stateless: any thread; independent of the locale. */
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

    /** The number of tapes found. */
    static QString countLine(qsizetype tapes);

    /** Message that no tape was found; shows `query` as the viewer typed it. */
    static QString noMatchLine(const QString& query);
};
