#pragma once

#include "AnswerStore.h"
#include "Connectivity.h"
#include "HttpLine.h"

#include <QSet>
#include <QSslCertificate>
#include <QSslConfiguration>

#include <memory>
#include <vector>

/**
 * What the exchanges of one client share. It lives on the network thread and outlives them.
 *
 * Naming a certificate ends the loading of the system's on demand, and loading them all takes a tenth of a second and
 * 3 MB, which a hub with an issuer of its own never needs. So the extra ones are trusted alone until a server is
 * refused by them, and then all together.
 */
class HttpSession : public QObject
{
    Q_OBJECT

public:
    /** `extraCertificates` may be empty: then the system's are trusted, on demand. */
    HttpSession(const QByteArray& extraCertificates, Connectivity& connectivity);

    AnswerStore& answers() { return m_answers; }
    Connectivity& connectivity() { return m_connectivity; }

    /** A line that is free, if possible one with a connection to the address's server; null when all are in use. */
    HttpLine* freeLine(const QUrl& url);

    /** Sends with the certificates that are trusted now. */
    QNetworkReply* get(HttpLine& line, QNetworkRequest request, HttpLine::Way way);

    /** Whether the address's server is known to send interim statuses that the network access does not skip. */
    bool sendsInterimStatus(const QUrl& url) const { return m_interimOrigins.contains(HttpLine::originOf(url)); }
    void rememberInterimStatus(const QUrl& url);

    bool trustsSystem() const { return m_trustsSystem; }
    void trustSystem();

Q_SIGNALS:
    void lineFreed();

private:
    const QList<QSslCertificate> m_extraCertificates;
    Connectivity& m_connectivity;
    AnswerStore m_answers;
    QSslConfiguration m_tls;
    bool m_trustsSystem;
    QSet<QString> m_interimOrigins;
    QNetworkCookieJar m_cookies;
    std::vector<std::unique_ptr<HttpLine>> m_lines;
};
