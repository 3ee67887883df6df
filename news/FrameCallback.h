#pragma once

#include <QAbstractAnimation>

#include <functional>

namespace quillmere {

/** Calls a function at every frame while it runs, synchronously with all other Qt animations. Screen thread only. */
class FrameCallback : public QAbstractAnimation
{
public:
    explicit FrameCallback(std::function<void()> callback) : m_callback(std::move(callback)) {}

    int duration() const override { return -1; }

protected:
    void updateCurrentTime(int) override { m_callback(); }

private:
    std::function<void()> m_callback;
};

} // namespace quillmere
