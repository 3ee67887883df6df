#include "StreamServer.h"

#include <QFile>
#include <QSslConfiguration>
#include <QSslKey>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

StreamServer::StreamServer(const QString& folder, const QString& name, quint16 port) : m_folder(folder + u'/')
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(read(m_folder + name + u".pem"_s)));
    configuration.setPrivateKey(QSslKey(read(m_folder + name + u".key"_s), QSsl::Ec));
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    m_server.setSslConfiguration(configuration);
    m_server.listen(QHostAddress::LocalHost, port);
    connect(&m_server, &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (QTcpSocket* const socket = m_server.nextPendingConnection()) {
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
        }
    });
}

QUrl StreamServer::url(const QString& path) const
{
    return QUrl(u"https://localhost:%1%2"_s.arg(m_server.serverPort()).arg(path));
}

void StreamServer::serve(QTcpSocket* socket)
{
    QByteArray waiting = socket->property("waiting").toByteArray() + socket->readAll();
    for (qsizetype end; (end = waiting.indexOf("\r\n\r\n")) >= 0; waiting = waiting.mid(end + 4)) {
        const QString path = QString::fromLatin1(waiting.split(' ').value(1));
        m_requests.append(path);
        if (m_unanswered.contains(path))
            continue;
        send(socket, path);
    }
    socket->setProperty("waiting", waiting);
}

void StreamServer::send(QTcpSocket* socket, const QString& path)
{
    const QByteArray answer = answerTo(path);
    if (m_trickling.contains(path)) {
        const qsizetype head = answer.indexOf("\r\n\r\n") + 4;
        socket->write(answer.left(head));
        auto* const timer = new QTimer(socket);
        connect(timer, &QTimer::timeout, socket,
                [socket, rest = answer.mid(head)]() mutable { socket->write(rest.left(1)), rest.remove(0, 1); });
        timer->start(1s);
        return;
    }
    const bool isWhole = !m_stalled.contains(path) && !m_cut.contains(path);
    socket->write(isWhole ? answer : answer.left(answer.size() / 2));
    if (m_cut.contains(path))
        socket->disconnectFromHost();
}

QByteArray StreamServer::answerTo(const QString& path) const
{
    auto [status, header] = m_statuses.value(path, {200, {}});
    QByteArray body;
    if (status == 200)
        body = m_bodies.contains(path) ? m_bodies.value(path) : read(m_folder + path.mid(1));
    if (status == 200 && body.isEmpty())
        status = 404;
    if (!header.isEmpty())
        header += "\r\n";
    return "HTTP/1.1 " + QByteArray::number(status) + " Said\r\n" + header +
           "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

} // namespace quillmere
