#pragma once

#include "ResponseParser.h"

#include <QNetworkReply>
#include <QSslSocket>
#include <QTimer>

namespace quillmere {

/**
 * One GET over a connection of its own, which is closed afterwards. Skips all interim responses (1xx);
 * QNetworkAccessManager of Qt 6.4 skips only 100. If no final response follows, reports the interim status. Does not
 * follow redirects. Network thread only.
 */
class SocketReply : public QNetworkReply
{
    Q_OBJECT

public:
    /** Uses the request's URL, raw headers, TLS configuration and transfer timeout; ignores all attributes. */
    explicit SocketReply(const QNetworkRequest& request, QObject* parent = nullptr);

    ~SocketReply() override;

    void abort() override;
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return QNetworkReply::bytesAvailable() + m_body.size(); }

protected:
    qint64 readData(char* data, qint64 maxBytes) override;

private:
    void connectToServer();
    void sendRequest();
    void onReadyRead();
    void onSocketError(QAbstractSocket::SocketError error);
    void onDisconnected();
    void publishHeaders();
    void finishWithoutFinalResponse();
    void finish(NetworkError error = NoError, const QString& description = {});

    QSslSocket m_socket;
    QTimer m_inactivityTimer;
    ResponseParser m_parser;
    QByteArray m_body; ///< decoded bytes that have not been read yet
};

} // namespace quillmere
