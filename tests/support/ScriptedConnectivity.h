#pragma once

#include "Connectivity.h"

#include <atomic>

/** A network that the test takes away and gives back, from any thread. It lives on the client's network thread. */
class ScriptedConnectivity : public Connectivity
{
public:
    explicit ScriptedConnectivity(bool isOnline) : m_isOnline(isOnline) {}

    bool isOnline() override
    {
        ++m_questions;
        return m_isOnline;
    }
    void setOnline(bool isOnline)
    {
        m_isOnline = isOnline;
        QMetaObject::invokeMethod(this, &Connectivity::changed, Qt::QueuedConnection);
    }
    int questions() const { return m_questions; } ///< how often it was asked

private:
    std::atomic<bool> m_isOnline;
    std::atomic<int> m_questions = 0;
};
