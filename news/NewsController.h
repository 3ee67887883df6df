#pragma once

#include "Clock.h"
#include "HubAPI.h"
#include "Store.h"
#include "StreamPlayers.h"
#include "VideoPlayer.h"

#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

namespace quillmere {

class WakeLock;

/**
 * State of the news channel: the current station, whether its tower is lit (the stream is live), and the player. While
 * the screen is in view, a watch probes the stream of the station every 6 seconds and refreshes the status in the
 * store. Screen thread only; the screen creates and owns it. Store, hub and clock are set once, when it is created,
 * and outlive it.
 */
class NewsController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    Q_PROPERTY(quillmere::HubAPI* hub MEMBER m_hub NOTIFY hubChanged REQUIRED FINAL)
    Q_PROPERTY(quillmere::Clock* clock MEMBER m_clock NOTIFY clockChanged REQUIRED FINAL)

    /** Player of the live stream; null while the tower is dark. */
    Q_PROPERTY(quillmere::VideoPlayer* player READ player NOTIFY playerChanged FINAL)
    /** Result of the latest probe. */
    Q_PROPERTY(bool isLive READ isLive NOTIFY isLiveChanged FINAL)
    /** Whether the first probe of a watch, or of a newly picked station, is still pending. */
    Q_PROPERTY(bool checking READ isChecking NOTIFY checkingChanged FINAL)

    Q_PROPERTY(QList<quillmere::TunerStation> stations READ stations NOTIFY stationsChanged FINAL)
    Q_PROPERTY(quillmere::TunerStation currentStation READ currentStation NOTIFY currentStationChanged FINAL)
    /** Whether there are at least two stations to choose from. */
    Q_PROPERTY(bool hasTuner READ hasTuner NOTIFY stationsChanged FINAL)

    /** Number of the station whose picture is shown; empty if none. A model with one row for each shown picture. */
    Q_PROPERTY(QStringList shownStationNumbers READ shownStationNumbers NOTIFY pictureChanged FINAL)
    /** Whether a live picture is shown. */
    Q_PROPERTY(bool isLit READ isLit NOTIFY pictureChanged FINAL)
    /** Whether the standby card is shown. It is not shown while a screen that was dismissed while lit slides away. */
    Q_PROPERTY(bool isOnStandby READ isOnStandby NOTIFY pictureChanged FINAL)

public:
    explicit NewsController(QObject* parent = nullptr);
    ~NewsController() override;

    Store* store() const { return m_store; }
    void setStore(Store* store);

    /** Sets the factory for players. Call it before appear(). */
    void setCreatePlayer(CreatePlayer createPlayer) { m_createPlayer = std::move(createPlayer); }

    VideoPlayer* player() const { return m_player.get(); }
    /** Station picked by the viewer; nothing if none yet. */
    const std::optional<TunerStation>& selected() const { return m_selected; }
    bool isLive() const { return m_isLive; }
    bool isChecking() const { return m_checking; }

    const QList<TunerStation>& stations() const { return m_stations; }
    const TunerStation& currentStation() const { return m_currentStation; }
    bool hasTuner() const { return m_stations.size() >= 2; }

    const QStringList& shownStationNumbers() const { return m_shownStationNumbers; }
    bool isLit() const { return !m_shownStationNumbers.isEmpty(); }
    bool isOnStandby() const { return !isLit() && !m_wasDismissedWhileLit; }

    /** Called when the screen comes into view. Starts the watch. */
    Q_INVOKABLE void appear();
    /** Called when the screen is dismissed. Stops picture, sound and watch at once. May be called twice. */
    Q_INVOKABLE void disappear();

    /** Switches to a station. Does nothing if its number is that of the current station. */
    Q_INVOKABLE void pick(const quillmere::TunerStation& station);

    /** Picks the next (+1) or previous (-1) station in the list, with wrap-around. */
    void stepBy(int by);

    /** Handles a key of the remote (a Qt::Key). Returns whether it was handled. */
    Q_INVOKABLE bool press(int key);

Q_SIGNALS:
    void storeChanged();
    void hubChanged();
    void clockChanged();
    void playerChanged();
    void isLiveChanged();
    void checkingChanged();
    void stationsChanged();
    void currentStationChanged();
    void pictureChanged();

private:
    QCoro::Task<> watchTower();
    void restartWatch();
    void onProbeFinished(bool answered);
    void onStatusChanged();
    void updateCurrentStation();
    void updatePicture();
    void tuneIn();
    void releasePlayer();
    void setLive(bool isLive);
    void setChecking(bool checking);

    Store* m_store = nullptr;
    HubAPI* m_hub = nullptr;
    Clock* m_clock = nullptr;
    CreatePlayer m_createPlayer = &createStreamPlayer;

    std::shared_ptr<VideoPlayer> m_player;
    std::optional<TunerStation> m_selected;
    bool m_isLive = false;
    bool m_checking = false;

    QList<TunerStation> m_stations;
    TunerStation m_currentStation;
    QStringList m_shownStationNumbers;
    bool m_wasDismissedWhileLit = false;
    std::unique_ptr<WakeLock> m_wakeLock; ///< exists while lit

    bool m_isInView = false; ///< whether the screen is in view
    TaskScope m_watchTasks;  ///< current watch; cancelled when another watch replaces it
    TaskScope m_screenTasks; ///< cancelled on disappear(); after that, tasks change nothing
};

} // namespace quillmere
