#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace quillmere {

// The records of the hub's pages of tapes.

/** A market (a city or region) with its number of tapes. The slug identifies it in lists. */
struct TapeMarket
{
    Q_GADGET
    QML_VALUE_TYPE(tapeMarket)
    Q_PROPERTY(QString slug MEMBER slug)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString stateCode MEMBER stateCode)
    Q_PROPERTY(qint64 tapes MEMBER tapes)

public:
    QString slug;
    QString name;
    QString stateCode;
    qint64 tapes = 0;

    bool operator==(const TapeMarket&) const = default;
};

inline size_t qHash(const TapeMarket& market, size_t seed = 0) noexcept
{
    return qHashMulti(seed, market.slug, market.name, market.stateCode, market.tapes);
}

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

/**
 * One recording of one meeting. Equality and hash use only the id: a tape with updated details is still the same tape.
 * So never skip an assignment because two tapes are equal. Texts that the viewer reads are truncated: the title and the
 * body's name and slug to `maxHashedTextLength`, the others to `maxTextLength`. Addresses are not truncated.
 */
struct Tape
{
    Q_GADGET
    QML_VALUE_TYPE(tape)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(quillmere::TapeMarket market MEMBER market)
    Q_PROPERTY(QString streamURLPath MEMBER streamURLPath)
    Q_PROPERTY(bool hasAgenda MEMBER hasAgenda)
    Q_PROPERTY(bool hasTranscript MEMBER hasTranscript)
    Q_PROPERTY(QString sourceURL MEMBER sourceURL)
    Q_PROPERTY(QString location MEMBER location)
    Q_PROPERTY(QList<quillmere::TapeDocument> documents MEMBER documents)

public:
    qint64 id = 0;
    QString title;
    std::optional<QString> meetingDate; ///< year-month-day, as sent by the hub
    TapeMarket market;
    std::optional<TapeBody> body;
    QString streamURLPath; ///< hub path or absolute address of the HLS stream
    qint64 sizeBytes = 0;
    bool hasAgenda = false;
    bool hasTranscript = false;
    QString sourceURL; ///< address of the source video
    QString location;
    QList<TapeDocument> documents;

    bool operator==(const Tape& other) const { return id == other.id; }
};

inline size_t qHash(const Tape& tape, size_t seed = 0) noexcept
{
    return ::qHash(tape.id, seed);
}

/** One page of tapes from a list or a search. */
struct TapePage
{
    qint64 total = 0;    ///< number of matches on all pages
    qint64 page = 1;     ///< counted from 1
    qint64 perPage = 60; ///< the default if the hub does not send it
    QList<Tape> items;
};

} // namespace quillmere
