#pragma once

#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QTimer>

namespace quillmere {

/**
 * Sends one request at a time and reuses its connection for the next one. Network thread only; the session owns it.
 *
 * A channel has a QNetworkAccessManager of its own, because that of Qt 6.4 treats an interim response (1xx) as the
 * final one and its connection as free. With a shared manager, the next request queued for that connection would
 * receive the response of this one.
 */
class HttpChannel : public QObject
{
    Q_OBJECT

public:
    enum class Connection {
        Persistent, ///< may be reused; some interim responses are reported as the final response
        Dedicated   ///< closed after the response; all interim responses are skipped
    };

    /** `cookies` must outlive the channel. */
    explicit HttpChannel(QNetworkCookieJar& cookies);

    bool isFree() const { return !m_reply; }

    /** Scheme, host and port of the last request; empty before the first one. */
    const QString& origin() const { return m_origin; }
    static QString originOf(const QUrl& url);

    /** Requires isFree(). The channel owns the reply. Redirects are not followed. */
    QNetworkReply* get(const QNetworkRequest& request, Connection connection);

    /** Ends the request. Closes the connection unless the final response has been received completely. */
    void release();

    /** Ends the request, but first receives the rest of a small response, so that its connection can be reused. */
    void drain();

Q_SIGNALS:
    void freed();

private:
    QNetworkAccessManager& network(const QSslConfiguration& tls);
    void closeConnections();
    void discardBody();

    QNetworkCookieJar& m_cookies;
    QNetworkAccessManager* m_network = nullptr; ///< created at the first request
    QSslConfiguration m_tls;                    ///< of the connections of m_network
    QNetworkReply* m_reply = nullptr;
    QString m_origin;
    QTimer m_drainTimer;
    qint64 m_drainedBytes = 0;
};

} // namespace quillmere
