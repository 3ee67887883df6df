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

    /** What the messages so far make of it. */
    VideoFailure failure() const;

private:
    QList<QByteArray> m_messages;
};
