#pragma once

#include "HttpServerFixture.h"
#include "HubAPI.h"
#include "PendingResult.h"

#include <QTest>

#include <memory>

namespace quillmere {

/** Base of tests that use a fresh HubAPI client and a fresh server over a real network in every test function. */
class HubServerFixture : public HttpServerFixture
{
    Q_OBJECT

protected:
    std::unique_ptr<HubAPI> m_hub;

    /** Waits for the task and returns its result. */
    template<typename T>
    static T resultOf(QCoro::Task<T> task)
    {
        const auto result = pendingResult(std::move(task));
        [&] { QTRY_VERIFY_WITH_TIMEOUT(result->has_value(), 20000); }();
        return result->value();
    }

    /** The error text for the viewer when the tape is fetched; empty if that succeeds. */
    QString errorText(qint64 id)
    {
        const HubResult<Tape> tape = resultOf(m_hub->tape(id));
        return tape ? QString() : tape.error().errorDescription();
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_hub = std::make_unique<HubAPI>(*m_client, m_server->url());
    }

    void cleanup()
    {
        m_hub.reset();
        tearDown();
    }
};

} // namespace quillmere
