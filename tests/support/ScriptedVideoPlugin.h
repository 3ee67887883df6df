#pragma once

#include "VideoPlugin.h"

#include <QList>
#include <QStringList>

/** An engine without libmpv: it notes what it is told, and the test reports in its name through `listener`. */
class ScriptedVideoEngine : public VideoEngine
{
public:
    struct Seek
    {
        int load;
        int number;
        double seconds;
        SeekTolerance tolerance;
    };
    struct Selection
    {
        MediaTrack::Kind kind;
        int id;

        bool operator==(const Selection&) const = default;
    };

    explicit ScriptedVideoEngine(Messenger<VideoEngineListener> reportTo) : listener(std::move(reportTo)) {}

    void load(const VideoLoad& load) override { loads.append(load); }
    void setPaused(bool paused) override { isPaused = paused; }
    void setWaitsForData(bool waits) override { waitsForData = waits; }
    void stop() override { ++stops; }
    void seek(int load, int seek, double seconds, SeekTolerance tolerance) override
    {
        seeks.append({load, seek, seconds, tolerance});
    }
    void selectTrack(MediaTrack::Kind kind, int id) override { selections.append({kind, id}); }
    std::unique_ptr<SoftwareRenderer> makeSoftwareRenderer(PictureListener) override { return nullptr; }
    std::unique_ptr<OpenGLRenderer> makeOpenGLRenderer(PictureListener) override { return nullptr; }

    /** Reports from the event loop, as the real one does. */
    template<typename Report>
    void report(Report report)
    {
        listener.post(std::move(report));
    }

    Messenger<VideoEngineListener> listener;
    QList<VideoLoad> loads;
    QList<Seek> seeks;
    QList<Selection> selections;
    bool isPaused = false;
    bool waitsForData = true;
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
