#pragma once

#include "Completion.h"
#include "Connectivity.h"
#include "HttpClient.h"
#include "Mailbox.h"

#include <QHash>
#include <QThread>

#include <memory>

class HttpEngine;

/**
 * HTTP over QNetworkAccessManager, which lives on a network thread of its own: loading certificates, TLS and
 * decompression never hold up the screen thread. The thread starts with the first request. Answers to be revalidated
 * are kept in memory only (8 MiB). Screen thread only; its destructor waits for the network thread.
 */
class QtHttpClient : public HttpClient
{
public:
    /**
     * `extraCertificates` (PEM, may be empty) are trusted beside the system's. `connectivity` says whether the system
     * is online; it is moved to the network thread and none stands for the system's own word.
     */
    explicit QtHttpClient(QByteArray extraCertificates = {}, std::unique_ptr<Connectivity> connectivity = {});
    ~QtHttpClient() override;
    QtHttpClient(const QtHttpClient&) = delete;
    QtHttpClient& operator=(const QtHttpClient&) = delete;

    QCoro::Task<HttpResult> get(HttpRequest request, CancelToken token) override;

private:
    using Id = quint64;

    void send(Id id, const HttpRequest& request);
    void cancel(Id id);
    void resolve(Id id, HttpResult result);

    Mailbox m_receiver;             ///< where the network thread posts its answers
    HttpEngine* m_engine = nullptr; ///< lives on m_thread, which deletes it
    QHash<Id, Completion<HttpResult>> m_waiting;
    Id m_nextId = 0;
    bool m_isClosing = false;
    QThread m_thread;
};
