#include "DesktopThread.h"

#include <QCoreApplication>
#include <QThread>

#include <chrono>

using namespace std::chrono_literals;

namespace {

QThread* thread = nullptr;

void stopThread()
{
    thread->quit();
    // A bus that does not respond may block the thread for ever. In that case the thread is leaked.
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
        qAddPostRoutine(&stopThread);
    }
    return *thread;
}
