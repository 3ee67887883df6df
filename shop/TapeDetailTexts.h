#pragma once

#include "VHSCover.h"

#include <QString>

/** The words of one tape's screen. Pure functions, total, usable from any thread; no locale has a say. */

/** What the first play button offers; 0 is the top of the tape. */
QString playButtonText(double resumePosition);

inline const QString startOverText = QStringLiteral("Start over");
inline const QString readTranscriptText = QStringLiteral("Read the transcript");

/** The two that may run over many lines; cut only where nobody would read on. */
QString titleText(const VHSCover& cover);
QString synopsisText(const VHSCover& cover);

QString runtimeBadge(const VHSCover& cover);
QString speedBadge(const VHSCover& cover);

/** Empty where the cassette has no agenda in it. */
QString agendaBadge(const VHSCover& cover);

QString taglineText(const VHSCover& cover);
QString catalogueLine(const VHSCover& cover);

/** "500 MB · self-hosted"; from 1 GiB on in GB with one decimal. */
QString sizeText(qint64 bytes);

/** The titles of the first three documents and how many more there are; empty when there are none. */
QString documentsText(const QList<TapeDocument>& documents);

/** One row of what is known of a tape. */
struct TapeFact
{
    QString label; ///< in capitals
    QString value;

    bool operator==(const TapeFact&) const = default;
};

/** What is known of a tape, dressed as `cover`; what is empty has no row. */
QList<TapeFact> factsOf(const Tape& tape, const VHSCover& cover);
