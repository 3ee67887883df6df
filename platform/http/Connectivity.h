#pragma once

#include <QObject>

namespace quillmere {

/** Whether the machine is connected to a network. Lives on the network thread. */
class Connectivity : public QObject
{
    Q_OBJECT

public:
    /** False only if the system reports that it is offline; true if the state is unknown. */
    virtual bool isOnline() = 0;

Q_SIGNALS:
    /** isOnline() may have changed. */
    void changed();
};

} // namespace quillmere
