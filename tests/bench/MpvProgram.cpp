#include "MpvProgram.h"

#include "LivingRoom.h"
#include "SampleHub.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int answerTime = 5000; // milliseconds

QString program()
{
    return QStandardPaths::findExecutable(u"mpv"_s);
}

} // namespace

bool MpvProgram::isThere()
{
    return !program().isEmpty();
}

MpvProgram::MpvProgram(const QStringList& arguments)
{
    const QStringList all = QStringList{u"--no-config"_s,
                                        u"--fs"_s,
                                        u"--vo=x11"_s,
                                        u"--hwdec=no"_s,
                                        u"--osc=no"_s,
                                        u"--really-quiet"_s,
                                        u"--audio-fallback-to-null=yes"_s,
                                        u"--tls-verify=yes"_s,
                                        "--tls-ca-file="_L1 + SampleHub::file(u"/ca.pem"_s),
                                        "--input-ipc-server="_L1 + m_folder.filePath(u"control"_s)};
    m_process = std::make_unique<ChildProcess>(program(), all + arguments);
}

std::unique_ptr<MpvProgram> MpvProgram::idle(LivingRoom& room)
{
    std::unique_ptr<MpvProgram> made(new MpvProgram({u"--idle=yes"_s, u"--force-window=yes"_s}));
    QLocalSocket& control = made->m_control;
    const bool isReady = room.screen().waitUntil(
        [&](const QImage&) {
            if (control.state() == QLocalSocket::UnconnectedState)
                control.connectToServer(made->m_folder.filePath(u"control"_s));
            return control.waitForConnected(100) && room.remote().giveFocus();
        },
        10s);
    if (!isReady)
        throw std::runtime_error("The idle mpv program does not come.");
    room.screen().waitUntilSettled(500ms, 5s);
    return made;
}

std::unique_ptr<MpvProgram> MpvProgram::playing(const QString& url)
{
    return std::unique_ptr<MpvProgram>(new MpvProgram({url}));
}

void MpvProgram::send(const QStringList& command)
{
    const QJsonObject line{{u"command"_s, QJsonArray::fromStringList(command)}};
    m_control.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    if (!m_control.waitForBytesWritten(answerTime))
        throw std::runtime_error("The mpv program takes no commands.");
}
