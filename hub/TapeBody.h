#pragma once

#include <QObject>
#include <QString>

/** The public body (council, board, commission) that a tape was recorded from. */
struct TapeBody
{
    Q_GADGET
    Q_PROPERTY(QString slug MEMBER slug)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString kind MEMBER kind)

public:
    QString slug;
    QString name;
    QString kind;

    bool operator==(const TapeBody&) const = default;
};

size_t qHash(const TapeBody& body, size_t seed = 0) noexcept;
