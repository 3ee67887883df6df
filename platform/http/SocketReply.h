#pragma once

#include "AnswerParser.h"

#include <QNetworkReply>
#include <QSslSocket>
#include <QTimer>

/**
 * One GET over a connection of its own, closed at its end. Unlike the network access of Qt 6.4 it skips interim statuses;
 * where nothing follows one, that is the status of the answer. Redirects are not followed. Network thread only.
 */
class SocketReply : public QNetworkReply
{
    Q_OBJECT

public:
    /** Of the request's attributes only the TLS configuration and the transfer timeout count. */
    explicit SocketReply(const QNetworkRequest& request, QObject* parent = nullptr);

    ~SocketReply() override;

    void abort() override;
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return QNetworkReply::bytesAvailable() + m_body.size(); }

protected:
    qint64 readData(char* data, qint64 maxBytes) override;

private:
    void open();
    void send();
    void onBytes();
    void onSocketError(QAbstractSocket::SocketError error);
    void onEnd();
    void showHead();
    void showBrokenAnswer();
    void finish(NetworkError error = NoError, const QString& description = {});

    QSslSocket m_socket;
    QTimer m_inactivity;
    AnswerParser m_parser;
    QByteArray m_body;
};
