#include "FaultServer.h"

#include <QFile>
#include <QSslKey>
#include <QTimer>

#include <zlib.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

QByteArray certificateFile(const QByteArray& name)
{
    QFile file(QStringLiteral(QUILLMERE_TEST_CERTIFICATES) + u'/' + QString::fromLatin1(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No test certificate %s", name.constData());
    return file.readAll();
}

QByteArray head(int status, const FaultServer::Headers& headers)
{
    QByteArray text = "HTTP/1.1 " + QByteArray::number(status) + " Test\r\n";
    for (const QByteArray& header : headers)
        text += header + "\r\n";
    return text + "\r\n";
}

FaultServer::Request parse(const QByteArray& head, QSslSocket* socket)
{
    QList<QByteArray> lines = head.split('\n');
    FaultServer::Request request;
    request.target = lines.takeFirst().split(' ').value(1);
    request.socket = socket;
    for (const QByteArray& line : std::as_const(lines)) {
        const auto colon = line.indexOf(':');
        if (colon > 0)
            request.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    return request;
}

} // namespace

FaultServer::FaultServer(const QByteArray& certificate) : m_isPlain(certificate.isEmpty())
{
    if (!m_isPlain)
        setCertificate(certificate);
    if (!listen(QHostAddress::LocalHost))
        qFatal("No port on loopback");
}

QUrl FaultServer::url(const QByteArray& path) const
{
    const QByteArray scheme = m_isPlain ? "http" : "https";
    return QUrl::fromEncoded(scheme + "://localhost:" + QByteArray::number(serverPort()) + path);
}

void FaultServer::setCertificate(const QByteArray& certificate)
{
    m_tls = QSslConfiguration::defaultConfiguration();
    m_tls.setLocalCertificate(QSslCertificate(certificateFile(certificate + ".pem"), QSsl::Pem));
    m_tls.setPrivateKey(QSslKey(certificateFile(certificate + ".key"), QSsl::Ec));
    m_tls.setPeerVerifyMode(QSslSocket::VerifyNone);
}

void FaultServer::on(const QByteArray& path, Handler handler)
{
    m_handlers[path] = std::move(handler);
}

QByteArray FaultServer::issuer()
{
    return certificateFile("ca.pem");
}

void FaultServer::incomingConnection(qintptr handle)
{
    ++m_connections;
    ++m_openConnections;
    auto* const socket = new QSslSocket(this);
    connect(socket, &QSslSocket::readyRead, this, [this, socket] { read(socket); });
    connect(socket, &QSslSocket::disconnected, this, [this, socket] {
        --m_openConnections;
        m_unread.remove(socket);
        socket->deleteLater();
    });
    socket->setSocketDescriptor(handle);
    if (!m_isPlain) {
        socket->setSslConfiguration(m_tls);
        socket->startServerEncryption();
    }
}

void FaultServer::read(QSslSocket* socket)
{
    QByteArray& unread = m_unread[socket];
    unread += socket->readAll();
    const auto end = unread.indexOf("\r\n\r\n");
    if (end < 0)
        return;
    const Request request = parse(unread.left(end), socket);
    unread.remove(0, end + 4);
    m_requests.append(request);
    const Handler handler = m_handlers.value(request.target.split('?').first(), answer(404));
    handler(request);
}

FaultServer::Handler FaultServer::answer(int status, const QByteArray& body, const Headers& headers)
{
    const bool hasBody = status >= 200 && status != 204 && status != 304;
    const Headers all = hasBody ? headers + Headers{"Content-Length: " + QByteArray::number(body.size())} : headers;
    return sendAndWait(head(status, all) + (hasBody ? body : QByteArray()));
}

FaultServer::Handler FaultServer::sendAndClose(const QByteArray& bytes)
{
    return [bytes](const Request& request) {
        request.socket->write(bytes);
        request.socket->disconnectFromHost();
    };
}

FaultServer::Handler FaultServer::sendAndWait(const QByteArray& bytes)
{
    return [bytes](const Request& request) { request.socket->write(bytes); };
}

FaultServer::Handler FaultServer::sendInPieces(const QList<QByteArray>& pieces, int interval)
{
    return [pieces, interval](const Request& request) {
        for (int piece = 0; piece < pieces.size(); ++piece) {
            QTimer::singleShot(piece * interval, request.socket, [socket = request.socket, bytes = pieces.at(piece)] {
                socket->write(bytes);
                socket->flush();
            });
        }
    };
}

FaultServer::Handler FaultServer::trickle(int length, int interval)
{
    return [length, interval](const Request& request) {
        request.socket->write(head(200, {"Content-Length: " + QByteArray::number(length)}));
        auto* const timer = new QTimer(request.socket);
        connect(timer, &QTimer::timeout, request.socket, [timer, left = length, socket = request.socket]() mutable {
            socket->write("x");
            if (--left == 0)
                timer->stop();
        });
        timer->start(interval);
    };
}

FaultServer::Handler FaultServer::redirect(const QByteArray& location, int status)
{
    return answer(status, "elsewhere", {"Location: " + location});
}

namespace {

class Gzip
{
public:
    Gzip()
    {
        constexpr int gzipFormat = 16 + MAX_WBITS;
        deflateInit2(&m_stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipFormat, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY);
    }
    ~Gzip() { deflateEnd(&m_stream); }
    Gzip(const Gzip&) = delete;
    Gzip& operator=(const Gzip&) = delete;

    void add(const QByteArray& bytes, int flush)
    {
        QByteArray chunk(64 * 1024, Qt::Uninitialized);
        m_stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
        m_stream.avail_in = uInt(bytes.size());
        do {
            m_stream.next_out = reinterpret_cast<Bytef*>(chunk.data());
            m_stream.avail_out = uInt(chunk.size());
            deflate(&m_stream, flush);
            packed.append(chunk.constData(), chunk.size() - qsizetype(m_stream.avail_out));
        } while (m_stream.avail_out == 0);
    }

    QByteArray packed;

private:
    z_stream m_stream{};
};

} // namespace

QByteArray gzip(const QByteArray& bytes)
{
    Gzip gzip;
    gzip.add(bytes, Z_FINISH);
    return gzip.packed;
}

QByteArray gzipBomb(qint64 size)
{
    const QByteArray zeros(1024 * 1024, '\0');
    Gzip gzip;
    for (qint64 added = 0; added < size; added += zeros.size())
        gzip.add(zeros, Z_NO_FLUSH);
    gzip.add({}, Z_FINISH);
    return gzip.packed;
}

} // namespace quillmere
