#pragma once

#include "ChildProcess.h"

#include <QJsonArray>
#include <QJsonObject>

#include <memory>

namespace quillmere {

/**
 * Runs the real sample hub for a test, on the port that the program was built for, and sends requests to its control
 * address. The hub ends with this object. Needs a QCoreApplication. Single-threaded.
 */
class SampleHub
{
public:
    /** Waits while another test uses the port. Throws std::runtime_error with a readable message on failure. */
    SampleHub();

    /** Ends the hub. Afterwards its port refuses connections. */
    void stop();
    /** Starts the hub again after stop(), on the same ports and without faults; throws as the constructor does. */
    void start();

    /** Posts to a path of the control address; throws std::runtime_error on an error status. */
    void post(const QString& path, const QJsonObject& body = {});

    void startBroadcast() { post(QStringLiteral("/tower/lit")); }
    void stopBroadcast() { post(QStringLiteral("/tower/dark")); }
    /**
     * Makes requests whose path starts with `path` fail. `kind` and `more` are parameters of the control address's
     * /fault.
     */
    void addFault(const QString& path, const QString& kind, QJsonObject more = {});
    /** Resets the hub: no faults, the initial status and tapes, no live broadcast. */
    void reset();

    /** Fetches a document of the hub over HTTPS and verifies the certificate; throws std::runtime_error on an error. */
    QByteArray fetchBody(const QString& path);
    QJsonObject fetch(const QString& path);
    /** The absolute address of a path on the hub. */
    static QString urlOf(const QString& path);
    /** The file that the hub serves under a path below "/recordings/". */
    static QString filePath(const QString& path);
    /** The requests that the hub has received. */
    QJsonArray requestLog();

private:
    int m_controlPort;
    std::unique_ptr<ChildProcess> m_process;
};

} // namespace quillmere
