#pragma once

#include <QObject>

namespace quillmere {

/**
 * Converts the first SIGINT or SIGTERM to a Qt signal on the screen thread. One per process; it outlives the event
 * loop.
 */
class StopSignals : public QObject
{
    Q_OBJECT

public:
    explicit StopSignals(QObject* parent = nullptr);
    ~StopSignals() override;

Q_SIGNALS:
    void stopRequested();
};

} // namespace quillmere
