#pragma once

#include <QAbstractAnimation>

#include <functional>

/** Calls at every frame while it runs, in step with everything else that moves on the window. Screen thread only. */
class EveryFrame : public QAbstractAnimation
{
public:
    explicit EveryFrame(std::function<void()> callback) : m_callback(std::move(callback)) {}

    int duration() const override { return -1; }

protected:
    void updateCurrentTime(int) override { m_callback(); }

private:
    std::function<void()> m_callback;
};
