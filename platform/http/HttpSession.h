#pragma once

#include "AnswerStore.h"
#include "Connectivity.h"

#include <QNetworkAccessManager>
#include <QSslCertificate>
#include <QSslConfiguration>

#include <memory>

/**
 * What the exchanges of one client share. It lives on the network thread and outlives them.
 *
 * Naming a certificate ends the loading of the system's on demand, and loading them all takes a tenth of a second and
 * 3 MB, which a hub with an issuer of its own never needs. So the extra ones are trusted alone until a server is
 * refused by them, and then all together.
 */
class HttpSession
{
public:
    /** `extraCertificates` may be empty: then the system's are trusted, on demand. */
    HttpSession(const QByteArray& extraCertificates, Connectivity& connectivity);

    AnswerStore& answers() { return m_answers; }
    Connectivity& connectivity() { return m_connectivity; }

    /** Sends with the certificates that are trusted now. */
    QNetworkReply* get(QNetworkRequest request);

    bool trustsSystem() const { return m_trustsSystem; }
    void trustSystem();

private:
    const QList<QSslCertificate> m_extraCertificates;
    Connectivity& m_connectivity;
    AnswerStore m_answers;
    QSslConfiguration m_tls;
    bool m_trustsSystem;
    std::unique_ptr<QNetworkAccessManager> m_network;
    std::unique_ptr<QNetworkAccessManager> m_former; ///< of the narrower trust, for what is still under way
};
