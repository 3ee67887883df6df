#pragma once

#include <QByteArray>
#include <QString>

/** What a player is told once, when it is made. */
struct VideoOptions
{
    QByteArray certificates; ///< PEM, trusted beside the system's
    QString applicationName; ///< how the stream presents itself to the sound server
};
