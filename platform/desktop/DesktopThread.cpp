#include "DesktopThread.h"

#include <QCoreApplication>
#include <QThread>

#include <chrono>

using namespace std::chrono_literals;

namespace {

QThread* thread = nullptr;

void end()
{
    thread->quit();
    // A bus that hangs holds the thread for ever; then it is left to the end of the process.
    if (thread->wait(QDeadlineTimer(1s)))
        delete thread;
    thread = nullptr;
}

} // namespace

QThread& DesktopThread::get()
{
    if (thread == nullptr) {
        thread = new QThread;
        thread->setObjectName(QStringLiteral("desktop"));
        thread->start(QThread::LowPriority);
        qAddPostRoutine(&end);
    }
    return *thread;
}
