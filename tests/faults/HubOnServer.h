#pragma once

#include "HttpOnServer.h"
#include "HubAPI.h"

#include <QTest>

#include <memory>
#include <optional>

/** A test whose every function has the hub's client over a real network, and a fresh server for a hub. */
class HubOnServer : public HttpOnServer
{
    Q_OBJECT

protected:
    std::unique_ptr<HubAPI> m_hub;

    /** The task's result, once it is there. */
    template<typename T>
    static T resultOf(QCoro::Task<T> task)
    {
        const auto result = std::make_shared<std::optional<T>>();
        keep(std::move(task), result);
        [&] { QTRY_VERIFY_WITH_TIMEOUT(result->has_value(), 20000); }();
        return result->value();
    }

    template<typename T>
    static QCoro::Task<> keep(QCoro::Task<T> task, std::shared_ptr<std::optional<T>> kept)
    {
        *kept = co_await task;
    }

    /** What the viewer would read of the tape's record; empty when it can be shown. */
    QString words(qint64 id)
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
