#pragma once

#include <QObject>

/**
 * While at least one exists, the display does not sleep: something plays. Screen thread only; its owner decides how long
 * it lives.
 */
class IdleInhibitor
{
public:
    IdleInhibitor();
    ~IdleInhibitor();
    IdleInhibitor(const IdleInhibitor&) = delete;
    IdleInhibitor& operator=(const IdleInhibitor&) = delete;

    static bool isAny();
};

/** Reports the first inhibitor and the end of the last one. There is one a process. Screen thread only. */
class IdleInhibitors : public QObject
{
    Q_OBJECT

public:
    static IdleInhibitors& all();

Q_SIGNALS:
    void anyChanged(bool isAny);
};
