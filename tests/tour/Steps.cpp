#include "Steps.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere::tour {

Step switchOn(const QMap<qint64, double>& resumePositions)
{
    return [=](TourContext& context) { context.viewer.switchOn(context.log, resumePositions); };
}

Step press(const QString& button, int times)
{
    return [=](TourContext& context) {
        if (!context.viewer.isOn())
            throw std::runtime_error("The set is not running.");
        for (int i = 0; i < times; ++i) {
            context.viewer.screen().waitUntilStill(150ms, 500ms);
            context.viewer.press(button);
        }
    };
}

Step keyDown(const QString& button)
{
    return [=](TourContext& context) { context.viewer.remote().keyDown(button); };
}

Step keyUp(const QString& button)
{
    return [=](TourContext& context) { context.viewer.remote().keyUp(button); };
}

Step post(const QString& path, const QJsonObject& body)
{
    return [=](TourContext& context) { context.hub.post(path, body); };
}

Step addFault(const QString& path, const QString& kind, const QJsonObject& more)
{
    return [=](TourContext& context) { context.hub.addFault(path, kind, more); };
}

Step resetHub()
{
    return [](TourContext& context) { context.hub.reset(); };
}

Step stopHub()
{
    return [](TourContext& context) { context.hub.stop(); };
}

Step startHub()
{
    return [](TourContext& context) { context.hub.start(); };
}

Step waitFor(const Check& check)
{
    return [=](TourContext& context) {
        if (!context.viewer.screen().waitUntil([&](const QImage& picture) { return check.isMet(context, picture); },
                                               60s))
            throw std::runtime_error(("The screen never showed: "_L1 + check.what).toStdString());
    };
}

} // namespace quillmere::tour
