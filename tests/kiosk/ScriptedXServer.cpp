#include "ScriptedXServer.h"

#include <QDir>
#include <QtEndian>

#include <stdexcept>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int firstNumber = 10'000; // higher than the display numbers of real servers
constexpr int numberCount = 10'000;

constexpr char dpms = char(130); // major opcode of the extension

enum Request : unsigned char { GetInputFocus = 43, QueryExtension = 98 };
enum Dpms : unsigned char { Enable = 4, Disable = 5, ForceLevel = 6, Info = 7 };

/** Reads `count` bytes; fewer if the client has disconnected. */
QByteArray read(int client, qsizetype count)
{
    QByteArray bytes;
    while (bytes.size() < count) {
        char buffer[4096];
        const ssize_t got = ::read(client, buffer, size_t(std::min<qsizetype>(count - bytes.size(), sizeof buffer)));
        if (got <= 0)
            break;
        bytes.append(buffer, got);
    }
    return bytes;
}

quint16 shortAt(const QByteArray& bytes, qsizetype at)
{
    return qFromLittleEndian<quint16>(bytes.constData() + at);
}

qsizetype padded(qsizetype length)
{
    return (length + 3) / 4 * 4;
}

void write(int client, const QByteArray& bytes)
{
    [[maybe_unused]] const auto written = ::send(client, bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL);
}

/** The reply to a new connection, of a server without screens. */
QByteArray connectionReply()
{
    constexpr int length = 32;
    QByteArray bytes(8 + length, '\0');
    bytes[0] = 1;          // success
    bytes[2] = 11;         // protocol version
    bytes[6] = length / 4; // length after the first eight bytes, in units of four bytes
    qToLittleEndian<quint32>(0x1fffff, bytes.data() + 16);
    qToLittleEndian<quint16>(0xffff, bytes.data() + 26);
    bytes[34] = 8;         // minimum key code
    bytes[35] = char(255); // maximum key code
    return bytes;
}

} // namespace

ScriptedXServer::ScriptedXServer(Options options) : m_options(options), m_isEnabled(options.isEnabled)
{
    // Old releases of XCB accept only a display number and look for the socket in this folder.
    m_path = "/tmp/.X11-unix/X" + QByteArray::number(firstNumber + getpid() % numberCount);
    QDir().mkpath(u"/tmp/.X11-unix"_s);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, m_path.constData(), sizeof address.sun_path);
    m_listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(m_listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(m_listener, 5) != 0 || pipe(m_stopPipe) != 0)
        throw std::runtime_error("The X server cannot listen.");
    qputenv("DISPLAY", ':' + m_path.sliced(m_path.lastIndexOf('X') + 1));
    m_thread = std::thread([this] { run(); });
}

ScriptedXServer::~ScriptedXServer()
{
    close(m_stopPipe[1]);
    m_thread.join();
    close(m_stopPipe[0]);
    close(m_listener);
    unlink(m_path.constData());
    qunsetenv("DISPLAY");
}

void ScriptedXServer::run()
{
    for (;;) {
        pollfd waiting[] = {{m_listener, POLLIN, 0}, {m_stopPipe[0], POLLIN, 0}};
        poll(waiting, 2, -1);
        if (waiting[1].revents != 0)
            return;
        const int client = accept(m_listener, nullptr, nullptr);
        serve(client);
        close(client);
    }
}

void ScriptedXServer::serve(int client)
{
    const QByteArray greeting = read(client, 12);
    if (greeting.size() < 12)
        return;
    read(client, padded(shortAt(greeting, 6)) + padded(shortAt(greeting, 8))); // authorization, ignored
    write(client, connectionReply());
    for (quint16 sequence = 1;; ++sequence) {
        QByteArray request = read(client, 4);
        if (request.size() < 4)
            return;
        request += read(client, shortAt(request, 2) * 4 - 4);
        answer(client, request, sequence);
    }
}

void ScriptedXServer::answer(int client, const QByteArray& request, quint16 sequence)
{
    QByteArray reply(32, '\0');
    reply[0] = 1;
    qToLittleEndian(sequence, reply.data() + 2);
    const auto opcode = static_cast<unsigned char>(request[0]);
    const auto minor = static_cast<unsigned char>(request[1]);
    if (opcode == QueryExtension) {
        reply[8] = m_options.offersDpms && request.mid(8, shortAt(request, 4)) == "DPMS" ? 1 : 0;
        reply[9] = dpms;
        return write(client, reply);
    }
    if (opcode == GetInputFocus)
        return write(client, reply);
    if (request[0] != dpms)
        return;
    if (minor == Enable || minor == Disable)
        m_isEnabled = minor == Enable;
    else if (minor == ForceLevel && m_isEnabled && !m_options.refuses)
        m_isMonitorOn = shortAt(request, 4) == 0;
    if (minor != Info)
        return;
    qToLittleEndian<quint16>(m_isMonitorOn ? 0 : 3, reply.data() + 8);
    reply[10] = m_isEnabled ? 1 : 0;
    write(client, reply);
}

} // namespace quillmere
