#include "StopSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

int ends[2] = {-1, -1}; // of the pipe that a signal handler may write to

void onSignal(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = write(ends[1], &byte, 1);
}

} // namespace

StopSignals::StopSignals(QObject* parent) : QObject(parent)
{
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    const auto notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT stop();
    });
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
}

StopSignals::~StopSignals()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    for (int& end : ends)
        close(std::exchange(end, -1));
}
