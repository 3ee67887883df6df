#pragma once

#include "CallQueue.h"
#include "Completion.h"
#include "Connectivity.h"
#include "HttpClient.h"

#include <QHash>
#include <QThread>

#include <memory>

namespace quillmere {

class HttpEngine;

/**
 * HttpClient built on QNetworkAccessManager. Certificates, TLS and decompression run on a network thread, so that they
 * never block the screen thread. The thread starts with the first request. Responses are cached for revalidation, in
 * memory only (8 MiB). Screen thread only; the destructor waits for the network thread.
 */
class QtHttpClient : public HttpClient
{
public:
    /**
     * `extraCertificates` (PEM, may be empty) are trusted in addition to the system's. `connectivity` reports whether
     * the machine is online and is moved to the network thread; null means SystemConnectivity.
     */
    explicit QtHttpClient(QByteArray extraCertificates = {}, std::unique_ptr<Connectivity> connectivity = {});
    ~QtHttpClient() override;
    QtHttpClient(const QtHttpClient&) = delete;
    QtHttpClient& operator=(const QtHttpClient&) = delete;

    QCoro::Task<HttpResult> get(HttpRequest request, std::stop_token token) override;

private:
    using Id = quint64;

    void send(Id id, const HttpRequest& request);
    void cancel(Id id);
    void resolve(Id id, HttpResult result);

    CallQueue m_receiver;           ///< delivers results from the network thread to the screen thread
    HttpEngine* m_engine = nullptr; ///< lives on m_thread, which deletes it
    QHash<Id, Completion<HttpResult>> m_pending;
    Id m_nextId = 0;
    bool m_isClosing = false;
    QThread m_thread;
};

} // namespace quillmere
