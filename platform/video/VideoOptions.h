#pragma once

#include <QByteArray>
#include <QString>

namespace quillmere {

/** Options of a player, set when it is created. */
struct VideoOptions
{
    QByteArray certificates; ///< PEM; trusted in addition to the system's
    QString applicationName; ///< shown by the sound server for the audio stream
};

} // namespace quillmere
