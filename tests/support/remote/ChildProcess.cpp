#include "ChildProcess.h"

#include <QDeadlineTimer>

#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

ChildProcess::ChildProcess(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment,
                           const QString& log)
{
    m_process.setProcessEnvironment(environment);
    m_process.setStandardErrorFile(log, QIODevice::Append);
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process.start(program, arguments);
    if (!m_process.waitForStarted())
        throw std::runtime_error((program + " could not be started: "_L1 + m_process.errorString()).toStdString());
}

ChildProcess::~ChildProcess()
{
    end();
}

bool ChildProcess::isRunning()
{
    return !m_process.waitForFinished(0) && m_process.state() == QProcess::Running;
}

std::optional<QString> ChildProcess::waitForLine(const QString& start, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    for (;;) {
        while (m_process.canReadLine()) {
            const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
            if (line.startsWith(start))
                return line;
        }
        if (deadline.hasExpired() || !m_process.waitForReadyRead(int(deadline.remainingTime())))
            return std::nullopt;
    }
}

std::optional<int> ChildProcess::waitForEnd(std::chrono::milliseconds limit)
{
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(int(limit.count())))
        return std::nullopt;
    if (m_process.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return m_process.exitCode();
}

void ChildProcess::end()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(5000)) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}

} // namespace quillmere
