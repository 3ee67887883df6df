#pragma once

#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QTimer>

/**
 * Carries one request at a time, and keeps its connection for the next one. Network thread only; the session owns it.
 *
 * One at a time, since the network access of Qt 6.4 takes an interim status for the answer and its connection for a free
 * one: the next request on it, which may wait inside the network access already, would get this one's answer.
 */
class HttpLine : public QObject
{
    Q_OBJECT

public:
    enum class Way {
        KeptConnection, ///< one that may be used again; not every interim status is skipped
        OwnConnection   ///< one that is closed at the end; every interim status is skipped
    };

    /** `cookies` outlive it. */
    explicit HttpLine(QNetworkCookieJar& cookies);

    bool isFree() const { return !m_reply; }

    /** Scheme, host and port of the last request, empty before it. */
    const QString& origin() const { return m_origin; }
    static QString originOf(const QUrl& url);

    /** The line is free. It keeps the reply, whose redirects are not followed. */
    QNetworkReply* get(const QNetworkRequest& request, Way way);

    /** Ends the request. What has not come to the end of a final answer closes its connection. */
    void release();

    /** Ends the request, but lets the rest of a small answer come, so that its connection can be used again. */
    void drain();

Q_SIGNALS:
    void freed();

private:
    QNetworkAccessManager& network(const QSslConfiguration& tls);
    void closeConnections();
    void dropBody();

    QNetworkCookieJar& m_cookies;
    QNetworkAccessManager* m_network = nullptr; ///< created at the first request
    QSslConfiguration m_tls;                    ///< of its connections
    QNetworkReply* m_reply = nullptr;
    QString m_origin;
    QTimer m_drainTimer;
    qint64 m_drained = 0; ///< bytes
};
