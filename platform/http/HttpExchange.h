#pragma once

#include "Gunzip.h"
#include "HttpClient.h"
#include "HttpSession.h"

#include <QDeadlineTimer>
#include <QNetworkReply>
#include <QTimer>

#include <functional>

/**
 * One request from its sending to its end, with its limits, its revalidation and its wait for the network.
 * It lives on the network thread, owned by the engine; destroying it aborts what is under way and reports nothing.
 */
class HttpExchange : public QObject
{
    Q_OBJECT

public:
    /** `overall` runs from the moment the request was made; `done` is called once, and may destroy this later only. */
    HttpExchange(HttpSession& session, HttpRequest request, QDeadlineTimer overall,
                 std::function<void(HttpResult)> done);
    ~HttpExchange() override;

    void start();

private:
    void send(HttpLine::Way way);
    void sendOverFreeLine();
    QNetworkRequest networkRequest() const;
    bool sendsValidators() const { return m_kept && m_redirects == 0; }
    void readHead();
    void redirect(const QUrl& target);
    void answerWithoutBody(int status);
    void readBody();
    bool unpack(const QByteArray& bytes);
    void readEnd();
    void sendOverOwnConnection(int status);
    void failWith(QNetworkReply::NetworkError error);
    void succeed(int status);
    void sendAgainTrustingSystem();
    void waitForNetwork(HttpFailure failure);
    void sendAgain();
    void sendAgainIfOnline();
    void onOverallLimit();
    void fail(HttpFailure::Kind kind, const QString& description = {});
    void finish(HttpResult result);
    void log(const HttpResult& result) const;
    void drainReply();
    void closeReply();

    HttpSession& m_session;
    const HttpRequest m_request;
    const QDeadlineTimer m_overall;
    std::function<void(HttpResult)> m_done;
    QUrl m_url; ///< after the redirects so far
    int m_redirects = 0;
    HttpLine* m_line = nullptr; ///< with its reply, while there is one
    QNetworkReply* m_reply = nullptr;
    HttpLine::Way m_way = HttpLine::Way::KeptConnection;
    bool m_waitsForLine = false;
    QByteArray m_body;
    std::optional<Gunzip> m_gunzip;   ///< for a packed body, once its first bytes are there
    std::optional<KeptAnswer> m_kept; ///< whose validators are sent
    bool m_trustedSystem = false;     ///< when it was sent
    QTimer m_overallTimer;
    QTimer m_waitTimer;                     ///< for the network to come back
    QTimer m_retryTimer;                    ///< tries it meanwhile, whatever the system says of it
    QDeadlineTimer m_waitLimit;             ///< of all waits together, from the first
    std::optional<HttpFailure> m_unreached; ///< why the network is waited for
};
