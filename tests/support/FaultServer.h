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

namespace quillmere {

/**
 * A real HTTP server on loopback that sends exactly the bytes a test asks for, faults included. It lives on the test's
 * thread and serves while that thread's event loop runs. The system chooses the port.
 */
class FaultServer : public QTcpServer
{
    Q_OBJECT

public:
    struct Request
    {
        QByteArray target;                    ///< path and query, as sent
        QMap<QByteArray, QByteArray> headers; ///< names in lower case
        QPointer<QSslSocket> socket;          ///< for the answer; null once the client has closed it
    };
    using Handler = std::function<void(const Request&)>;
    using Headers = QList<QByteArray>; ///< whole lines without CR LF

    /** `certificate` is the name of a file written by make-test-certificates; empty for plain HTTP. */
    explicit FaultServer(const QByteArray& certificate = "good");

    QUrl url(const QByteArray& path = "/") const;

    /** Uses another certificate for all later connections. */
    void setCertificate(const QByteArray& certificate);

    /** Sets the handler of requests for `path` (without the query). It replaces the previous handler. */
    void on(const QByteArray& path, Handler handler);

    const QList<Request>& requests() const { return m_requests; }
    int connections() const { return m_connections; }         ///< accepted so far, with or without TLS
    int openConnections() const { return m_openConnections; } ///< accepted and not yet closed

    /** The issuer of the good certificates, in PEM. */
    static QByteArray issuer();

    /** A complete answer with a Content-Length header. */
    static Handler answer(int status, const QByteArray& body = {}, const Headers& headers = {});

    /** Sends the bytes unchanged, then closes the connection. */
    static Handler sendAndClose(const QByteArray& bytes);

    /** Sends the bytes unchanged, then nothing more. */
    static Handler sendAndWait(const QByteArray& bytes = {});

    /** Sends each piece unchanged, `interval` milliseconds after the previous one, then nothing more. */
    static Handler sendInPieces(const QList<QByteArray>& pieces, int interval);

    /** Sends a header that announces `length` bytes, then one byte every `interval` milliseconds. */
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

/** `bytes` compressed in the gzip format. */
QByteArray gzip(const QByteArray& bytes);

/** Gzip data that decompresses to `size` zero bytes. It is built in chunks, so the zeros are never all in memory. */
QByteArray gzipBomb(qint64 size);

} // namespace quillmere
