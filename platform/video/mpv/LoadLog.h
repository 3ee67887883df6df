#pragma once

#include "VideoFailure.h"

#include <QByteArray>
#include <QList>

namespace quillmere {

/** The log messages of libmpv for one load, as only these contain the cause of a failure. A plain value. */
class LoadLog
{
public:
    /** Adds a warning or an error message. */
    void add(const QByteArray& message);

    /** Whether this message says that the stream's reader skips a segment that the server did not deliver. */
    static bool reportsSkippedSegment(const QByteArray& message) { return message.contains("Failed to open segment"); }

    /** The failure that follows from the messages so far; of cause Unknown if they name none. */
    VideoFailure failure() const;

private:
    QList<QByteArray> m_messages;
};

} // namespace quillmere
