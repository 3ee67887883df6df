#include "StopSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace quillmere {

namespace {

int pipeEnds[2] = {-1, -1}; // read and write end; write() is safe in a signal handler

void onSignal(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
}

} // namespace

StopSignals::StopSignals(QObject* parent) : QObject(parent)
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    const auto notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT stopRequested();
    });
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
}

StopSignals::~StopSignals()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    for (int& end : pipeEnds)
        close(std::exchange(end, -1));
}

} // namespace quillmere
