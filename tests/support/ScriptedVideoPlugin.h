#pragma once

#include "VideoPlugin.h"

#include <QList>
#include <QStringList>

namespace quillmere {

/** A fake engine without libmpv. It records the calls, and the test reports events through `listener`. */
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
    std::unique_ptr<SoftwareRenderer> createSoftwareRenderer(PictureListener) override { return nullptr; }
    std::unique_ptr<OpenGLRenderer> createOpenGLRenderer(PictureListener) override { return nullptr; }

    /** Reports from the event loop, as the real engine does. */
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

/**
 * A plug-in that creates scripted engines. It keeps only a weak reference, so an engine is destroyed with its last
 * owner.
 */
class ScriptedVideoPlugin : public VideoPlugin
{
public:
    std::shared_ptr<VideoEngine> createEngine(const VideoOptions&,
                                              const Messenger<VideoEngineListener>& listener) override
    {
        auto engine = std::make_shared<ScriptedVideoEngine>(listener);
        latest = engine;
        ++createdEngines;
        return engine;
    }
    bool waitForEngines(std::chrono::milliseconds) override { return true; }

    std::weak_ptr<ScriptedVideoEngine> latest;
    int createdEngines = 0;
};

} // namespace quillmere
