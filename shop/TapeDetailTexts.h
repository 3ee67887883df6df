#pragma once

#include "TapeFact.h"
#include "VHSCover.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

/** The words of one tape's screen. Stateless: any thread; no locale has a say. */
class TapeDetailTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString startOver READ startOver CONSTANT FINAL)
    Q_PROPERTY(QString readTranscript READ readTranscript CONSTANT FINAL)

public:
    using QObject::QObject;

    /** What the first play button offers; 0 is the top of the tape. */
    static QString play(double resumePosition);
    static QString startOver();
    static QString readTranscript();

    /** The two that may run over many lines; cut only where nobody would read on. */
    static QString title(const VHSCover& cover);
    static QString synopsis(const VHSCover& cover);

    static QString runtimeBadge(const VHSCover& cover);
    static QString speedBadge(const VHSCover& cover);

    /** Empty where the cassette has no agenda in it. */
    static QString agendaBadge(const VHSCover& cover);

    static QString tagline(const VHSCover& cover);
    static QString catalogueLine(const VHSCover& cover);

    /** "500 MB · self-hosted"; from 1 GiB on in GB with one decimal. */
    static QString size(qint64 bytes);

    /** The titles of the first three documents and how many more there are; empty when there are none. */
    static QString documents(const QList<TapeDocument>& documents);

    /** What is known of a tape, dressed as `cover`; what is empty has no row. */
    static QList<TapeFact> facts(const Tape& tape, const VHSCover& cover);
};
