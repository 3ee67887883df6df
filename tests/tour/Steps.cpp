#include "Steps.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tour {

Step switchOn(const QMap<qint64, double>& kept)
{
    return [=](Stage& stage) { stage.room.switchOn(stage.log, kept); };
}

Step press(const QString& button, int times)
{
    return [=](Stage& stage) {
        if (!stage.room.isOn())
            throw std::runtime_error("The set is not running.");
        for (int i = 0; i < times; ++i) {
            stage.room.screen().waitUntilSettled(150ms, 500ms);
            stage.room.press(button);
        }
    };
}

Step pushDown(const QString& button)
{
    return [=](Stage& stage) { stage.room.remote().pushDown(button); };
}

Step letGo(const QString& button)
{
    return [=](Stage& stage) { stage.room.remote().letGo(button); };
}

Step order(const QString& path, const QJsonObject& body)
{
    return [=](Stage& stage) { stage.hub.order(path, body); };
}

Step fault(const QString& path, const QString& kind, const QJsonObject& more)
{
    return [=](Stage& stage) { stage.hub.fault(path, kind, more); };
}

Step calm()
{
    return [](Stage& stage) { stage.hub.calm(); };
}

Step stopHub()
{
    return [](Stage& stage) { stage.hub.stop(); };
}

Step startHub()
{
    return [](Stage& stage) { stage.hub.start(); };
}

Step waitFor(const Sight& sight)
{
    return [=](Stage& stage) {
        if (!stage.room.screen().waitUntil([&](const QImage& picture) { return sight.holds(stage, picture); }, 60s))
            throw std::runtime_error(("It was never seen that "_L1 + sight.what + u'.').toStdString());
    };
}

} // namespace tour
