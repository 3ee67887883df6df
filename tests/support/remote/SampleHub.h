#pragma once

#include "ChildProcess.h"

#include <QJsonArray>
#include <QJsonObject>

#include <memory>

/**
 * The real sample hub, running for a test on the port that the set was built for, and its control address.
 * Needs an application object; one thread; ends with this object.
 */
class SampleHub
{
public:
    /** Waits for the port while another test has it; throws std::runtime_error with a sentence when it fails. */
    SampleHub();

    /** Ends it: from then on its port refuses. */
    void stop();
    /** Starts it again after stop(), on the same ports and with no faults; throws as the constructor does. */
    void start();

    /** Sends an order to the control address; throws std::runtime_error when it is not taken. */
    void order(const QString& path, const QJsonObject& body = {});

    void light() { order(QStringLiteral("/tower/lit")); }
    void darken() { order(QStringLiteral("/tower/dark")); }
    /** Lets requests whose path starts so fail: `kind` and `more` as the control address takes them. */
    void fault(const QString& path, const QString& kind, QJsonObject more = {});
    /** The tower dark, the status and the tapes as they were, no faults. */
    void calm();

    /** A document of the hub over HTTPS, its certificate checked; throws std::runtime_error when it is not 200. */
    QByteArray fetchBody(const QString& path);
    QJsonObject fetch(const QString& path);
    /** The absolute address of a path on the hub. */
    static QString address(const QString& path);
    /** The file that the hub serves under a path below "/recordings/". */
    static QString file(const QString& path);
    /** The requests it has seen. */
    QJsonArray log();

private:
    int m_controlPort;
    std::unique_ptr<ChildProcess> m_process;
};
