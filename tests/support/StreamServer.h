#pragma once

#include <QHash>
#include <QSslServer>
#include <QStringList>
#include <QTcpSocket>
#include <QUrl>

namespace quillmere {

/**
 * A small HTTPS server on localhost that serves the files of a folder, with the faults that the test asks for. GUI
 * thread only.
 */
class StreamServer : public QObject
{
    Q_OBJECT

public:
    /**
     * Uses the certificate `name`.pem and its key, both from the folder. The system chooses the port unless one is
     * given.
     */
    explicit StreamServer(const QString& folder, const QString& name = QStringLiteral("server"), quint16 port = 0);

    QUrl url(const QString& path) const;

    /** Serves this body instead of the folder's file. */
    void setBody(const QString& path, const QByteArray& body) { m_bodies.insert(path, body); }

    /** Answers with this status and the additional `header` (a whole line without CR LF). */
    void answer(const QString& path, int status, const QByteArray& header = {})
    {
        m_statuses.insert(path, {status, header});
    }

    /** Never answers requests for `path`. */
    void setUnanswered(const QString& path) { m_unanswered.append(path); }

    /**
     * Announces the full length but sends only half of the answer. `stall` then sends nothing more, `cut` closes the
     * connection.
     */
    void stall(const QString& path) { m_stalled.append(path); }
    void cut(const QString& path) { m_cut.append(path); }

    /** Announces the full length and sends one byte of the body each second. */
    void trickle(const QString& path) { m_trickling.append(path); }

    qsizetype openConnections() const { return m_server.findChildren<QTcpSocket*>().size(); }

    /** The requested paths, in order. */
    const QStringList& requests() const { return m_requests; }

private:
    void serve(QTcpSocket* socket);
    void send(QTcpSocket* socket, const QString& path);
    QByteArray answerTo(const QString& path) const;

    QSslServer m_server;
    QString m_folder;
    QHash<QString, QByteArray> m_bodies;
    QHash<QString, std::pair<int, QByteArray>> m_statuses;
    QStringList m_unanswered;
    QStringList m_stalled;
    QStringList m_cut;
    QStringList m_trickling;
    QStringList m_requests;
};

} // namespace quillmere
