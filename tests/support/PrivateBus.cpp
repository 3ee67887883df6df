#include "PrivateBus.h"

#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

/** A session bus configuration without the folders of activatable services. */
constexpr auto configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)"_L1;

} // namespace

PrivateBus::PrivateBus()
{
    const QString path = m_folder.filePath(u"bus.conf"_s);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QString(configuration).arg(m_folder.path()).toUtf8()) < 0)
        throw std::runtime_error("The bus's configuration could not be written.");
    file.close();
    m_daemon = std::make_unique<ChildProcess>(u"dbus-daemon"_s, QStringList{"--config-file="_L1 + path, u"--nofork"_s,
                                                                            u"--nopidfile"_s, u"--print-address"_s});
    const auto line = m_daemon->waitForLine(u"unix:"_s, 10s);
    if (!line)
        throw std::runtime_error("dbus-daemon printed no address.");
    m_address = *line;
}

PrivateBus::~PrivateBus()
{
    for (const QString& name : m_connections)
        QDBusConnection::disconnectFromBus(name);
}

QDBusConnection PrivateBus::connect()
{
    static int last = 0;
    m_connections.append(u"private-%1"_s.arg(++last));
    return QDBusConnection::connectToBus(m_address, m_connections.last());
}

} // namespace quillmere
