#pragma once

#include <QMetaType>
#include <QString>

namespace quillmere {

/** Why a stream does not play. A plain value; it does not contain the text for the viewer. */
struct VideoFailure
{
    Q_GADGET

public:
    enum class Cause {
        Unknown,      ///< no cause was recognised
        NoPlugin,     ///< the plug-in could not be loaded, or its engine not started
        NoPicture,    ///< no renderer could be created for the window
        BadAddress,   ///< not an http or https URL
        Status,       ///< the server answered with `httpStatus`
        Refused,      ///< the connection was refused
        Certificate,  ///< the server's certificate is not valid, or its TLS is too old
        TimedOut,     ///< the server sent no data for too long
        Network,      ///< the server's name cannot be resolved, or there is no route to it
        Unplayable,   ///< the data is not a playable stream
        BrokenStream, ///< the data ended before the end of the stream
    };
    Q_ENUM(Cause)

    Cause cause = Cause::Unknown;
    int httpStatus = 0;  ///< with Cause::Status, else 0
    QString description; ///< the library's messages, for developers
};

} // namespace quillmere
