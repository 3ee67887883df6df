#pragma once

#include "VideoFailure.h"

#include <QByteArray>
#include <QList>

/** What libmpv says while a stream loads: the only place where the cause of a failure is told. A plain value. */
class LoadLog
{
public:
    /** One message, of warnings and errors. */
    void add(const QByteArray& message);

    /** Whether it tells that the stream's reader leaves a segment out, which the server did not give. */
    static bool tellsOfSkippedData(const QByteArray& message) { return message.contains("Failed to open segment"); }

    /** What the messages so far make of it. */
    VideoFailure failure() const;

private:
    QList<QByteArray> m_messages;
};
