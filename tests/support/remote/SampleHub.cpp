#include "SampleHub.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QThread>
#include <QUrl>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

const QUrl base(QStringLiteral(QUILLMERE_HUB_BASE));
const QString program = QStringLiteral(QUILLMERE_SAMPLE_HUB);
const QString folder = QStringLiteral(QUILLMERE_SAMPLE_HUB_DIR);

[[noreturn]] void fail(const QString& sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

bool isFree(int port)
{
    QTcpServer server;
    return server.listen(QHostAddress::LocalHost, quint16(port));
}

int freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

void waitForPort(int port)
{
    const QDeadlineTimer deadline(60s);
    while (!isFree(port)) {
        if (deadline.hasExpired())
            fail(u"The port %1 is taken; end the hub that runs there."_s.arg(port));
        QThread::msleep(100);
    }
}

QByteArray bodyOf(QNetworkReply* rawReply)
{
    const std::unique_ptr<QNetworkReply> reply(rawReply);
    QEventLoop loop;
    QObject::connect(rawReply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    if (reply->error() != QNetworkReply::NoError)
        fail(reply->url().toString() + u": "_s + reply->errorString());
    return reply->readAll();
}

QNetworkRequest request(const QUrl& url)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(10000);
    if (url.scheme() == "https"_L1) {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.addCaCertificates(folder + u"/ca.pem"_s);
        request.setSslConfiguration(tls);
    }
    return request;
}

} // namespace

SampleHub::SampleHub() : m_controlPort(freePort())
{
    start();
}

void SampleHub::start()
{
    waitForPort(base.port());
    const QStringList arguments{
        u"--port"_s,        QString::number(base.port()), u"--control-port"_s, QString::number(m_controlPort),
        u"--certificate"_s, folder + u"/hub.pem"_s,       u"--key"_s,          folder + u"/hub.key"_s,
        u"--recordings"_s,  folder + u"/recordings"_s};
    m_process =
        std::make_unique<ChildProcess>(program, arguments, QProcessEnvironment::systemEnvironment(), u"/dev/stderr"_s);
    if (!m_process->waitForLine(u"ready"_s, 20s))
        fail(u"The sample hub did not get ready."_s);
    stopBroadcast();
}

void SampleHub::stop()
{
    m_process.reset();
}

void SampleHub::post(const QString& path, const QJsonObject& body)
{
    QNetworkAccessManager network;
    QNetworkRequest message = request(QUrl(u"http://127.0.0.1:%1%2"_s.arg(m_controlPort).arg(path)));
    message.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    bodyOf(network.post(message, QJsonDocument(body).toJson()));
}

void SampleHub::addFault(const QString& path, const QString& kind, QJsonObject more)
{
    more[u"path"_s] = path;
    more[u"kind"_s] = kind;
    post(u"/fault"_s, more);
}

void SampleHub::reset()
{
    post(u"/fault/clear"_s);
    post(u"/status/reset"_s);
    post(u"/catalogue/reset"_s);
    stopBroadcast();
}

QByteArray SampleHub::fetchBody(const QString& path)
{
    QNetworkAccessManager network;
    return bodyOf(network.get(request(base.resolved(QUrl(path)))));
}

QJsonObject SampleHub::fetch(const QString& path)
{
    return QJsonDocument::fromJson(fetchBody(path)).object();
}

QString SampleHub::urlOf(const QString& path)
{
    return base.resolved(QUrl(path)).toString();
}

QString SampleHub::filePath(const QString& path)
{
    return folder + path;
}

QJsonArray SampleHub::requestLog()
{
    QNetworkAccessManager network;
    const QUrl url(u"http://127.0.0.1:%1/log"_s.arg(m_controlPort));
    return QJsonDocument::fromJson(bodyOf(network.get(request(url)))).array();
}

} // namespace quillmere
