#pragma once

#include "Gunzip.h"
#include "HttpClient.h"
#include "HttpSession.h"

#include <QDeadlineTimer>
#include <QNetworkReply>
#include <QTimer>

#include <functional>

namespace quillmere {

/**
 * Performs one GET: sends it, follows redirects, revalidates a cached response, enforces the limits, and waits for the
 * network if the machine is offline. Lives on the network thread; the engine of QtHttpClient owns it. Destroying it
 * aborts the request and reports nothing.
 */
class HttpExchange : public QObject
{
    Q_OBJECT

public:
    /**
     * `deadline` is the end of the request's overall limit, which includes the time before start(). `onFinished` is
     * called once; it must not destroy the exchange directly, only by deleteLater().
     */
    HttpExchange(HttpSession& session, HttpRequest request, QDeadlineTimer deadline,
                 std::function<void(HttpResult)> onFinished);
    ~HttpExchange() override;

    void start();

private:
    void send(HttpChannel::Connection connection);
    void sendOverFreeChannel();
    QNetworkRequest networkRequest() const;
    bool sendsValidators() const { return m_cached && m_redirects == 0; }
    void onHeaders();
    void redirect(const QUrl& target);
    void finishWithoutBody(int status);
    void readBody();
    bool appendToBody(const QByteArray& bytes);
    void onReplyFinished();
    void retryOverDedicatedConnection(int status);
    void failWith(QNetworkReply::NetworkError error);
    void succeed(int status);
    void retryWithSystemCertificates();
    void waitForNetwork(HttpFailure failure);
    void retry();
    void retryIfOnline();
    void onOverallLimit();
    void fail(HttpFailure::Kind kind, const QString& description = {});
    void finish(HttpResult result);
    void log(const HttpResult& result) const;
    void drainReply();
    void closeReply();

    HttpSession& m_session;
    const HttpRequest m_request;
    const QDeadlineTimer m_deadline;
    std::function<void(HttpResult)> m_onFinished;
    QUrl m_url; ///< after the redirects so far
    int m_redirects = 0;
    HttpChannel* m_channel = nullptr; ///< carries m_reply; null if there is no reply
    QNetworkReply* m_reply = nullptr; ///< owned by m_channel
    HttpChannel::Connection m_connection = HttpChannel::Connection::Persistent;
    bool m_waitsForChannel = false;
    QByteArray m_body;
    std::optional<Gunzip> m_gunzip;            ///< set when the first bytes of a gzip body arrive
    std::optional<CachedResponse> m_cached;    ///< its validators are sent with the request
    bool m_sentWithSystemCertificates = false; ///< whether the system's certificates were trusted when it was sent
    QTimer m_overallTimer;
    QTimer m_waitTimer;                          ///< limits the wait for the network
    QTimer m_retryTimer;                         ///< retries during the wait, even if the system still reports offline
    QDeadlineTimer m_waitLimit;                  ///< end of all waits for the network together; set by the first one
    std::optional<HttpFailure> m_networkFailure; ///< the failure that started the wait for the network
};

} // namespace quillmere
