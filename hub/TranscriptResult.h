#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** The transcript of one meeting. */
struct TranscriptResult
{
    Q_GADGET
    QML_VALUE_TYPE(transcriptResult)
    Q_PROPERTY(QString status MEMBER status)
    Q_PROPERTY(QString text MEMBER text)

public:
    QString status = QStringLiteral("none");
    QString text; ///< the whole transcript
    qint64 words = 0;

    bool operator==(const TranscriptResult&) const = default;
};

} // namespace quillmere
