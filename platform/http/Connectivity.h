#pragma once

#include <QObject>

/** Whether the machine is connected to a network. It lives on the network thread. */
class Connectivity : public QObject
{
    Q_OBJECT

public:
    /** False only when the system knows that it is not connected; true where nobody can tell. */
    virtual bool isOnline() = 0;

Q_SIGNALS:
    /** isOnline() may have changed. */
    void changed();
};
