#pragma once

#include <QHash>
#include <QSslServer>
#include <QStringList>
#include <QTcpSocket>
#include <QUrl>

/** A small HTTPS server on localhost that serves a folder, and whatever faults the test asks for. Screen thread only. */
class StreamServer : public QObject
{
    Q_OBJECT

public:
    /** Shows the certificate `name`.pem with its key, from the folder; at a port of its own unless one is given. */
    explicit StreamServer(const QString& folder, const QString& name = QStringLiteral("server"), quint16 port = 0);

    QUrl url(const QString& path) const;

    /** Serves this in the place of the folder's file. */
    void put(const QString& path, const QByteArray& body) { m_bodies.insert(path, body); }

    /** Answers this status, with `header` (whole, without its line end) added. */
    void answer(const QString& path, int status, const QByteArray& header = {})
    {
        m_statuses.insert(path, {status, header});
    }

    /** Never answers. */
    void hold(const QString& path) { m_held.append(path); }

    /** Announces the whole and sends half of it; then silence, or the connection is closed. */
    void stall(const QString& path) { m_stalled.append(path); }
    void cut(const QString& path) { m_cut.append(path); }

    /** Announces the whole and sends a byte of it each second. */
    void trickle(const QString& path) { m_trickling.append(path); }

    qsizetype openConnections() const { return m_server.findChildren<QTcpSocket*>().size(); }

    /** The paths asked for, in order. */
    const QStringList& requests() const { return m_requests; }

private:
    void serve(QTcpSocket* socket);
    void send(QTcpSocket* socket, const QString& path);
    QByteArray answerTo(const QString& path) const;

    QSslServer m_server;
    QString m_folder;
    QHash<QString, QByteArray> m_bodies;
    QHash<QString, std::pair<int, QByteArray>> m_statuses;
    QStringList m_held;
    QStringList m_stalled;
    QStringList m_cut;
    QStringList m_trickling;
    QStringList m_requests;
};
