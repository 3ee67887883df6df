#pragma once

#include "Connectivity.h"
#include "HttpChannel.h"
#include "ResponseCache.h"

#include <QSet>
#include <QSslCertificate>
#include <QSslConfiguration>

#include <memory>
#include <vector>

namespace quillmere {

/**
 * State shared by all exchanges of a client: channels, cache, cookies and trusted certificates. Lives on the network
 * thread and outlives the exchanges.
 *
 * Extra certificates are trusted alone at first. Once a server's certificate is rejected, the system's certificates are
 * trusted as well. Reason: Qt loads system certificates on demand only if no certificates are set explicitly; loading
 * all of them takes 0.1 s and 3 MB, which a hub with its own certificate authority does not need.
 */
class HttpSession : public QObject
{
    Q_OBJECT

public:
    /** `extraCertificates` is PEM. If it is empty, the system's certificates are trusted and loaded on demand. */
    HttpSession(const QByteArray& extraCertificates, Connectivity& connectivity);

    ResponseCache& cache() { return m_cache; }
    Connectivity& connectivity() { return m_connectivity; }

    /** A free channel, preferably one whose last request went to the server of `url`; null if all are in use. */
    HttpChannel* findFreeChannel(const QUrl& url);

    /** Sends the request with the currently trusted certificates. */
    QNetworkReply* get(HttpChannel& channel, QNetworkRequest request, HttpChannel::Connection connection);

    /** Whether the server of `url` is known to send interim responses that QNetworkAccessManager does not skip. */
    bool sendsInterimStatus(const QUrl& url) const { return m_interimOrigins.contains(HttpChannel::originOf(url)); }
    void addInterimOrigin(const QUrl& url);

    bool trustsSystemCertificates() const { return m_trustsSystemCertificates; }
    void trustSystemCertificates();

Q_SIGNALS:
    void channelFreed();

private:
    const QList<QSslCertificate> m_extraCertificates;
    Connectivity& m_connectivity;
    ResponseCache m_cache;
    QSslConfiguration m_tls;
    bool m_trustsSystemCertificates;
    QSet<QString> m_interimOrigins; ///< origins of the servers that send interim responses
    QNetworkCookieJar m_cookies;
    std::vector<std::unique_ptr<HttpChannel>> m_channels;
};

} // namespace quillmere
