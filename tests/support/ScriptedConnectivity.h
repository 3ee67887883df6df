#pragma once

#include "Connectivity.h"

#include <atomic>

namespace quillmere {

/** A network that the test switches off and on, from any thread. The object lives on the client's network thread. */
class ScriptedConnectivity : public Connectivity
{
public:
    explicit ScriptedConnectivity(bool isOnline) : m_isOnline(isOnline) {}

    bool isOnline() override
    {
        ++m_queryCount;
        return m_isOnline;
    }
    void setOnline(bool isOnline)
    {
        m_isOnline = isOnline;
        QMetaObject::invokeMethod(this, &Connectivity::changed, Qt::QueuedConnection);
    }
    int queryCount() const { return m_queryCount; } ///< calls of isOnline()

private:
    std::atomic<bool> m_isOnline;
    std::atomic<int> m_queryCount = 0;
};

} // namespace quillmere
