#pragma once

#include <QObject>

namespace quillmere {

/**
 * Prevents display sleep while at least one instance exists. Exists while something plays. Screen thread only;
 * its owner may destroy it at any time.
 */
class IdleInhibitor
{
public:
    IdleInhibitor();
    ~IdleInhibitor();
    IdleInhibitor(const IdleInhibitor&) = delete;
    IdleInhibitor& operator=(const IdleInhibitor&) = delete;

    static bool isAnyActive();
};

/** Singleton that reports when the first IdleInhibitor is created and the last one destroyed. Screen thread only. */
class IdleInhibitors : public QObject
{
    Q_OBJECT

public:
    static IdleInhibitors& instance();

Q_SIGNALS:
    void activeChanged(bool isActive);
};

} // namespace quillmere
