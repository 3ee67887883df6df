#pragma once

#include "VHSCover.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

/** What the shop's screen says: words that never change, and lines made of what the set knows. Stateless: any thread. */
class RewinderyTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString sign READ sign CONSTANT FINAL)
    Q_PROPERTY(QString homeVideo READ homeVideo CONSTANT FINAL)
    Q_PROPERTY(QString search READ search CONSTANT FINAL)
    Q_PROPERTY(QString checking READ checking CONSTANT FINAL)
    Q_PROPERTY(QString tryAgain READ tryAgain CONSTANT FINAL)
    Q_PROPERTY(QString creditLine READ creditLine CONSTANT FINAL)
    Q_PROPERTY(QString disclaimer READ disclaimer CONSTANT FINAL)

public:
    using QObject::QObject;

    static QString sign();
    static QString homeVideo();
    static QString search();
    static QString allMarkets();
    static QString checking();
    static QString tryAgain();
    static QString creditLine();
    static QString disclaimer();

    /** The line under the sign; a single tape is counted like any other number of them. */
    static QString stockLine(qint64 tapes);

    /** What stands beside a shelf's name: its bodies and, where any is known, its years. */
    static QString caption(const QList<VHSCover>& covers);

    /** The years of the covers that read as whole numbers: none, one, or the first and the last. */
    static QString yearSpan(const QList<VHSCover>& covers);

    /** Why there are no shelves while none are being looked for. */
    static QString message(const std::optional<QString>& lastError);
};
