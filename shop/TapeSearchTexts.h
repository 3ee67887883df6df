#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

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

    static QString title() { return QStringLiteral("Search the stacks"); }
    static QString invitation()
    {
        return QStringLiteral("A name, a street, a motion — titles and spoken transcripts both.");
    }

    /** The number of tapes found. */
    static QString countLine(qsizetype tapes)
    {
        return QString::number(tapes) + (tapes == 1 ? QStringLiteral(" tape found") : QStringLiteral(" tapes found"));
    }

    /** Message that no tape was found; shows `query` as the viewer typed it. */
    static QString noMatchLine(const QString& query)
    {
        return QStringLiteral("No tapes match “") + query + QStringLiteral("”. Try a different word.");
    }
};

} // namespace quillmere
