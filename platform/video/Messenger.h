#pragma once

#include <QCoreApplication>

#include <memory>
#include <utility>

/**
 * Carries calls from any thread to a receiver on the screen thread, from its event loop. A copy shares the receiver.
 * The receiver's owner holds it by a shared pointer: what arrives after that has gone is dropped.
 */
template<typename Receiver>
class Messenger
{
public:
    explicit Messenger(const std::shared_ptr<Receiver>& receiver) : m_receiver(receiver) {}

    template<typename Letter>
    void post(Letter letter) const
    {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [receiver = m_receiver, letter = std::move(letter)] {
                if (const auto still = receiver.lock())
                    letter(*still);
            },
            Qt::QueuedConnection);
    }

private:
    std::weak_ptr<Receiver> m_receiver;
};
