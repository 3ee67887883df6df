#pragma once

#include <QCoreApplication>

#include <memory>
#include <utility>

namespace quillmere {

/**
 * Posts calls from any thread to a receiver on the screen thread, where the event loop runs them. Copies have the same
 * receiver. The receiver's owner has a shared pointer to it; calls that arrive after its destruction are dropped.
 */
template<typename Receiver>
class Messenger
{
public:
    explicit Messenger(const std::shared_ptr<Receiver>& receiver) : m_receiver(receiver) {}

    template<typename Call>
    void post(Call call) const
    {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [receiver = m_receiver, call = std::move(call)] {
                if (const auto target = receiver.lock())
                    call(*target);
            },
            Qt::QueuedConnection);
    }

private:
    std::weak_ptr<Receiver> m_receiver;
};

} // namespace quillmere
