#include "MpvProgram.h"

#include "SampleHub.h"
#include "SimulatedViewer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr int answerTime = 5000; // milliseconds

QString program()
{
    return QStandardPaths::findExecutable(u"mpv"_s);
}

} // namespace

bool MpvProgram::isInstalled()
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
                                        "--tls-ca-file="_L1 + SampleHub::filePath(u"/ca.pem"_s),
                                        "--input-ipc-server="_L1 + m_folder.filePath(u"control"_s)};
    m_process = std::make_unique<ChildProcess>(program(), all + arguments);
}

std::unique_ptr<MpvProgram> MpvProgram::idle(SimulatedViewer& viewer)
{
    std::unique_ptr<MpvProgram> started(new MpvProgram({u"--idle=yes"_s, u"--force-window=yes"_s}));
    QLocalSocket& control = started->m_control;
    const bool isReady = viewer.screen().waitUntil(
        [&](const QImage&) {
            if (control.state() == QLocalSocket::UnconnectedState)
                control.connectToServer(started->m_folder.filePath(u"control"_s));
            return control.waitForConnected(100) && viewer.remote().focusTopWindow();
        },
        10s);
    if (!isReady)
        throw std::runtime_error("The idle mpv program does not come.");
    viewer.screen().waitUntilStill(500ms, 5s);
    return started;
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
        throw std::runtime_error("The mpv program does not accept commands.");
}

} // namespace quillmere
