#pragma once

#include <QObject>

/** Turns SIGINT and SIGTERM into a signal on the screen thread. One a process; it outlives the event loop. */
class StopSignals : public QObject
{
    Q_OBJECT

public:
    explicit StopSignals(QObject* parent = nullptr);
    ~StopSignals() override;

Q_SIGNALS:
    void stop();
};
