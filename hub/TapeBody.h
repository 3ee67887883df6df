#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/** The public body (council, board, commission) that a tape was recorded from. */
struct TapeBody
{
    Q_GADGET
    QML_VALUE_TYPE(tapeBody)
    Q_PROPERTY(QString slug MEMBER slug)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString kind MEMBER kind)

public:
    QString slug;
    QString name;
    QString kind;

    bool operator==(const TapeBody&) const = default;
};

inline size_t qHash(const TapeBody& body, size_t seed = 0) noexcept
{
    return qHashMulti(seed, body.slug, body.name, body.kind);
}
