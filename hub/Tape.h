#pragma once

#include "TapeBody.h"
#include "TapeDocument.h"
#include "TapeMarket.h"

#include <QList>
#include <QtQml/qqmlregistration.h>

#include <optional>

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
    Q_PROPERTY(TapeMarket market MEMBER market)
    Q_PROPERTY(QString streamURLPath MEMBER streamURLPath)
    Q_PROPERTY(bool hasAgenda MEMBER hasAgenda)
    Q_PROPERTY(bool hasTranscript MEMBER hasTranscript)
    Q_PROPERTY(QString sourceURL MEMBER sourceURL)
    Q_PROPERTY(QString location MEMBER location)
    Q_PROPERTY(QList<TapeDocument> documents MEMBER documents)

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
    return qHash(tape.id, seed);
}
