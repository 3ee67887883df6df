#pragma once

#include "VideoPlugin.h"

#include <QList>
#include <QStringList>

/** An engine without libmpv: it notes what it is told, and the test reports in its name through `listener`. */
class ScriptedVideoEngine : public VideoEngine
{
public:
    struct Load
    {
        int number;
        QUrl url;
        double startAt;
    };

    explicit ScriptedVideoEngine(Messenger<VideoEngineListener> reportTo) : listener(std::move(reportTo)) {}

    void load(int load, const QUrl& url, double startAt) override { loads.append({load, url, startAt}); }
    void setPaused(bool paused) override { pauses.append(paused); }
    void stop() override { ++stops; }
    std::unique_ptr<SoftwareRenderer> makeSoftwareRenderer(PictureListener) override { return nullptr; }
    std::unique_ptr<OpenGLRenderer> makeOpenGLRenderer(PictureListener) override { return nullptr; }

    /** Reports from the event loop, as the real one does. */
    template<typename Report>
    void report(Report report)
    {
        listener.post(std::move(report));
    }

    Messenger<VideoEngineListener> listener;
    QList<Load> loads;
    QList<bool> pauses;
    int stops = 0;
};

/** A plug-in that makes scripted engines; it keeps no reference, so an engine that nobody holds is gone. */
class ScriptedVideoPlugin : public VideoPlugin
{
public:
    std::shared_ptr<VideoEngine> makeEngine(const VideoOptions&,
                                            const Messenger<VideoEngineListener>& listener) override
    {
        auto engine = std::make_shared<ScriptedVideoEngine>(listener);
        latest = engine;
        ++made;
        return engine;
    }
    bool waitForEngines(std::chrono::milliseconds) override { return true; }

    std::weak_ptr<ScriptedVideoEngine> latest;
    int made = 0;
};
