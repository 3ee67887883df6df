#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpServer>
#include <QUrl>

#include <functional>

/**
 * A real HTTP server on loopback that does what a test tells it, down to the bytes. It lives on the test's thread and
 * serves while that thread's event loop runs; the port is the system's choice.
 */
class FaultServer : public QTcpServer
{
    Q_OBJECT

public:
    struct Request
    {
        QByteArray target;                    ///< path and query, as sent
        QMap<QByteArray, QByteArray> headers; ///< names in lower case
        QPointer<QSslSocket> socket;          ///< to answer on; gone once the client has closed
    };
    using Handler = std::function<void(const Request&)>;
    using Headers = QList<QByteArray>; ///< whole lines without line ends

    /** `certificate` names a file of make-test-certificates; empty for plain HTTP. */
    explicit FaultServer(const QByteArray& certificate = "good");

    QUrl url(const QByteArray& path = "/") const;

    /** Another certificate for the connections from now on. */
    void setCertificate(const QByteArray& certificate);

    /** What to do with requests for `path` (without the query); in place of what was to be done before. */
    void on(const QByteArray& path, Handler handler);

    const QList<Request>& requests() const { return m_requests; }
    int connections() const { return m_connections; }         ///< accepted so far, TLS or not
    int openConnections() const { return m_openConnections; } ///< accepted and not closed

    /** The issuer of the good certificates, in PEM. */
    static QByteArray issuer();

    /** A whole answer, with its length. */
    static Handler answer(int status, const QByteArray& body = {}, const Headers& headers = {});

    /** The bytes as they are, and then the connection is closed. */
    static Handler sendAndClose(const QByteArray& bytes);

    /** The bytes as they are, and then silence. */
    static Handler sendAndWait(const QByteArray& bytes = {});

    /** Each piece as it is, `interval` milliseconds after the one before, and then silence. */
    static Handler sendInPieces(const QList<QByteArray>& pieces, int interval);

    /** A head that promises `length` bytes, then one byte each `interval` milliseconds. */
    static Handler trickle(int length, int interval);

    static Handler redirect(const QByteArray& location, int status = 302);

protected:
    void incomingConnection(qintptr handle) override;

private:
    void read(QSslSocket* socket);

    QSslConfiguration m_tls;
    bool m_isPlain = false;
    QMap<QByteArray, Handler> m_handlers;
    QHash<QSslSocket*, QByteArray> m_unread;
    QList<Request> m_requests;
    int m_connections = 0;
    int m_openConnections = 0;
};

/** `bytes` in the gzip format. */
QByteArray gzip(const QByteArray& bytes);

/** What unpacks to `size` zero bytes, made without holding them. */
QByteArray gzipBomb(qint64 size);
