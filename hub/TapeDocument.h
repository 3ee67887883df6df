#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/** A document attached to a tape, such as an agenda packet. */
struct TapeDocument
{
    Q_GADGET
    QML_VALUE_TYPE(tapeDocument)
    Q_PROPERTY(QString kind MEMBER kind)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString mimeType MEMBER mimeType)
    Q_PROPERTY(QString url MEMBER url)

public:
    qint64 id = 0;
    QString kind;
    QString title;
    QString mimeType;
    QString url; ///< hub path or absolute address

    bool operator==(const TapeDocument&) const = default;
};

inline size_t qHash(const TapeDocument& document, size_t seed = 0) noexcept
{
    return qHashMulti(seed, document.id, document.kind, document.title, document.mimeType, document.url);
}
