#pragma once

#include <QMetaType>
#include <QString>

/** Why a stream does not play. A plain value; the sentence for the viewer is made from it elsewhere. */
struct VideoFailure
{
    Q_GADGET

public:
    enum class Cause {
        Unknown,      ///< nothing better is known
        NoPlugin,     ///< the player itself could not be loaded or started
        NoPicture,    ///< the screen offers no way to draw
        BadAddress,   ///< not an http or https address
        Status,       ///< the server answered with `httpStatus`
        Refused,      ///< the connection was refused
        Certificate,  ///< the server's certificate is not valid, or its TLS is too old
        TimedOut,     ///< the server fell silent
        Network,      ///< no way to the server: its name, the route
        Unplayable,   ///< what came is no stream
        BrokenStream, ///< it ended before its end
    };
    Q_ENUM(Cause)

    Cause cause = Cause::Unknown;
    int httpStatus = 0;  ///< with Cause::Status, else 0
    QString description; ///< the platform's own words, for a developer's eyes
};

Q_DECLARE_METATYPE(VideoFailure)
