#pragma once

#include "VHSCover.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace quillmere {

/** Texts of the shop's screen: constant ones, and lines with data. Stateless: any thread. */
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

    static QString sign() { return QStringLiteral("Rewindery"); }
    static QString homeVideo() { return QStringLiteral("HOME VIDEO"); }
    static QString search() { return QStringLiteral("Search the stacks"); }
    static QString allMarkets() { return QStringLiteral("All markets"); }
    static QString checking() { return QStringLiteral("Checking the shelves…"); }
    static QString tryAgain() { return QStringLiteral("Try again"); }
    static QString creditLine()
    {
        return QStringLiteral(
            "Rewindery Home Video — A Captain Lowe of the Waterways Production. Be Kind, Please Rewind.");
    }
    static QString disclaimer() { return QStringLiteral("Captain Lowe and his crew are this shop's own invention."); }

    /** The line below the sign; the plural is used for a single tape too. */
    static QString stockLine(qint64 tapes);

    /** The text beside a shelf's name: its bodies and, if any are known, its years. */
    static QString caption(const QList<VHSCover>& covers);

    /** The covers' years that are whole numbers: empty, one year, or the first and the last. */
    static QString yearSpan(const QList<VHSCover>& covers);

    /** Why there are no shelves, while none are loading. */
    static QString message(const std::optional<QString>& lastError);
};

} // namespace quillmere
