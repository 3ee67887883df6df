#include "KioskSession.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

#include <stdexcept>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

const QString programPath = QStringLiteral(QUILLMERE_TV);
const QString nobody = u"65534"_s;

/** False if the test does not run as root, or if "nobody" cannot access the build. */
bool canBecomeOrdinaryUser()
{
    static const bool can = geteuid() == 0 && QProcess::execute(u"setpriv"_s, {u"--reuid"_s, nobody, u"--regid"_s,
                                                                               nobody, u"--clear-groups"_s, u"--"_s,
                                                                               u"test"_s, u"-x"_s, programPath}) == 0;
    return can;
}

/** Changes the command so that it runs as "nobody", if that is possible. */
std::pair<QString, QStringList> asOrdinaryUser(const QString& program, const QStringList& arguments)
{
    if (!canBecomeOrdinaryUser())
        return {program, arguments};
    return {u"setpriv"_s,
            // Changing the user clears the parent death signal, so it is set again.
            QStringList{u"--reuid"_s, nobody, u"--regid"_s, nobody, u"--clear-groups"_s, u"--pdeathsig"_s, u"TERM"_s,
                        u"--"_s, program} +
                arguments};
}

void changeOwnerToOrdinaryUser(const QString& path)
{
    if (canBecomeOrdinaryUser() && chown(path.toUtf8().constData(), nobody.toUInt(), nobody.toUInt()) != 0)
        throw std::runtime_error("The owner of the test's folder cannot be changed.");
}

/** Throws std::runtime_error with `message` if the condition does not become true within 20 s. */
void waitFor(const std::function<bool()>& condition, const char* message)
{
    const QDeadlineTimer deadline(20s);
    while (!condition()) {
        if (deadline.hasExpired())
            throw std::runtime_error(message);
        QThread::msleep(20);
    }
}

} // namespace

KioskSession::KioskSession(Compositor compositor, const QStringList& variables)
    : m_variables(QProcessEnvironment::systemEnvironment())
{
    changeOwnerToOrdinaryUser(m_folder.path());
    // Set by the test environment; the program must choose its own values, as on a real machine.
    for (const QString& name : {u"QT_QUICK_BACKEND"_s, u"QT_SCALE_FACTOR"_s, u"WAYLAND_DISPLAY"_s})
        m_variables.remove(name);
    m_variables.insert(u"HOME"_s, m_folder.path());
    m_variables.insert(u"XDG_RUNTIME_DIR"_s, m_folder.path());
    m_variables.insert(u"QT_QPA_PLATFORM"_s, u"wayland"_s);
    m_variables.insert(u"QUILLMERE_DISPLAY_STATE"_s, m_folder.filePath(u"display"_s));
    for (const QString& variable : variables)
        m_variables.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    m_variables.insert(u"WLR_RENDERER"_s, u"pixman"_s);
    if (compositor == Compositor::CageOnX11)
        startCage();
    else
        startSway();
}

KioskSession::~KioskSession()
{
    m_program.reset();
    m_keyboard.reset();
}

void KioskSession::startCage()
{
    // The authority file of the X display may be readable only by its owner.
    if (const QString authority = qEnvironmentVariable("XAUTHORITY"); !authority.isEmpty()) {
        const QString copy = m_folder.filePath(u"x-key"_s);
        QFile::copy(authority, copy);
        changeOwnerToOrdinaryUser(copy);
        m_variables.insert(u"XAUTHORITY"_s, copy);
    }
    m_variables.insert(u"WLR_BACKENDS"_s, u"x11"_s);
    m_compositor = start(u"cage"_s, {u"--"_s, programPath});
}

void KioskSession::startSway()
{
    const QString configuration = m_folder.filePath(u"sway.conf"_s);
    QFile file(configuration);
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("The compositor's configuration cannot be written.");
    file.write("xwayland disable\noutput * resolution 1024x768\nseat * hide_cursor 1\n");
    file.close();
    changeOwnerToOrdinaryUser(configuration);
    m_variables.remove(u"DISPLAY"_s);
    m_variables.insert(u"WLR_BACKENDS"_s, u"headless"_s);
    m_variables.insert(u"WLR_LIBINPUT_NO_DEVICES"_s, u"1"_s);
    m_variables.insert(u"SWAYSOCK"_s, m_folder.filePath(u"sway"_s));
    m_compositor = start(u"sway"_s, {u"--config"_s, configuration});
    waitFor(
        [this] {
            return QFile::exists(m_folder.filePath(u"wayland-1"_s)) && QFile::exists(m_folder.filePath(u"sway"_s));
        },
        "The compositor did not start.");
    m_variables.insert(u"WAYLAND_DISPLAY"_s, u"wayland-1"_s);
    m_keyboard = start(u"wtype"_s, {u"-s"_s, u"100000000"_s});
    m_program = start(programPath, {});
}

std::unique_ptr<ChildProcess> KioskSession::start(const QString& program, const QStringList& arguments)
{
    const auto [command, all] = asOrdinaryUser(program, arguments);
    return std::make_unique<ChildProcess>(command, all, m_variables, u"/dev/stderr"_s);
}

qint64 KioskSession::programPid() const
{
    if (m_program)
        return m_program->isRunning() ? m_program->pid() : 0;
    const qint64 compositor = m_compositor->pid();
    QFile children(u"/proc/%1/task/%1/children"_s.arg(compositor));
    if (!children.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& pid : children.readAll().simplified().split(' ')) {
        QFile name(u"/proc/%1/comm"_s.arg(QString::fromLatin1(pid)));
        if (name.open(QIODevice::ReadOnly) && name.readAll().trimmed() == "quillmere-tv")
            return pid.toLongLong();
    }
    return 0;
}

QString KioskSession::displayState() const
{
    QFile file(m_folder.filePath(u"display"_s));
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()).trimmed() : QString();
}

QByteArray KioskSession::run(const QString& program, const QStringList& arguments)
{
    const auto [command, all] = asOrdinaryUser(program, arguments);
    QProcess process;
    process.setProcessEnvironment(m_variables);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(command, all);
    if (!process.waitForFinished(20000) || process.exitCode() != 0)
        throw std::runtime_error((program + u" failed."_s).toStdString());
    return process.readAllStandardOutput();
}

QImage KioskSession::picture()
{
    return QImage::fromData(run(u"grim"_s, {u"-t"_s, u"ppm"_s, u"-"_s}), "PPM").convertToFormat(QImage::Format_RGB32);
}

void KioskSession::press(const QString& keysym)
{
    run(u"wtype"_s, {u"-k"_s, keysym});
}

bool KioskSession::isOutputOn()
{
    const QJsonObject output =
        QJsonDocument::fromJson(run(u"swaymsg"_s, {u"--raw"_s, u"-t"_s, u"get_outputs"_s})).array().at(0).toObject();
    // "power" since sway 1.8, "dpms" before.
    return output.value(output.contains(u"power"_s) ? u"power"_s : u"dpms"_s).toBool();
}

bool KioskSession::switchOutput(bool on)
{
    run(u"swaymsg"_s, {u"output * dpms "_s + (on ? u"on"_s : u"off"_s)});
    return isOutputOn() == on;
}

} // namespace quillmere
