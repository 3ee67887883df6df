#pragma once

#include "HubAPI.h"
#include "Store.h"
#include "StreamPlayers.h"
#include "Timepiece.h"
#include "VideoPlayer.h"

#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

class WakeLock;

/**
 * The news channel's state: the station on screen, whether its tower is lit, and its player. While the screen stands it
 * probes the station's stream every 6 seconds and refreshes the store's status. Screen thread only; the screen makes and
 * owns it; store, hub and timepiece, set once when it is made, outlive it.
 */
class NewsController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    Q_PROPERTY(HubAPI* hub READ hub WRITE setHub NOTIFY hubChanged REQUIRED FINAL)
    Q_PROPERTY(Timepiece* timepiece READ timepiece WRITE setTimepiece NOTIFY timepieceChanged REQUIRED FINAL)

    /** The live player, there only while the tower is lit. */
    Q_PROPERTY(VideoPlayer* player READ player NOTIFY playerChanged FINAL)
    /** What the latest probe answered. */
    Q_PROPERTY(bool isLive READ isLive NOTIFY isLiveChanged FINAL)
    /** Whether the first probe of a watch, or of a picked station, has not answered yet. */
    Q_PROPERTY(bool checking READ isChecking NOTIFY checkingChanged FINAL)

    Q_PROPERTY(QList<TunerStation> stations READ stations NOTIFY stationsChanged FINAL)
    Q_PROPERTY(TunerStation currentStation READ currentStation NOTIFY currentStationChanged FINAL)
    /** Whether there is a choice of stations. */
    Q_PROPERTY(bool hasTuner READ hasTuner NOTIFY stationsChanged FINAL)

    /** The number of the station whose picture is shown, none while none is: another list for each showing. */
    Q_PROPERTY(QStringList onAir READ onAir NOTIFY pictureChanged FINAL)
    Q_PROPERTY(bool isLit READ isLit NOTIFY pictureChanged FINAL)
    /** Whether the standby card is shown; a screen that is left while lit shows nothing instead. */
    Q_PROPERTY(bool isOnStandby READ isOnStandby NOTIFY pictureChanged FINAL)

public:
    explicit NewsController(QObject* parent = nullptr);
    ~NewsController() override;

    Store* store() const { return m_store; }
    void setStore(Store* store);
    HubAPI* hub() const { return m_hub; }
    void setHub(HubAPI* hub);
    Timepiece* timepiece() const { return m_timepiece; }
    void setTimepiece(Timepiece* timepiece);

    /** How players are made, before the screen appears. */
    void setMakePlayer(MakePlayer makePlayer) { m_makePlayer = std::move(makePlayer); }

    VideoPlayer* player() const { return m_player.get(); }
    /** The station that the viewer picked. */
    const std::optional<TunerStation>& selected() const { return m_selected; }
    bool isLive() const { return m_isLive; }
    bool isChecking() const { return m_checking; }

    const QList<TunerStation>& stations() const { return m_stations; }
    const TunerStation& currentStation() const { return m_currentStation; }
    bool hasTuner() const { return m_stations.size() >= 2; }

    const QStringList& onAir() const { return m_onAir; }
    bool isLit() const { return !m_onAir.isEmpty(); }
    bool isOnStandby() const { return !isLit() && !m_wasLeftLit; }

    /** The screen has come into view: the watch begins. */
    Q_INVOKABLE void appear();
    /** The screen has gone away: picture and sound end at once, the watch with them. Safe twice. */
    Q_INVOKABLE void disappear();

    /** Shows a station; the one that is on already, by its number, stays as it is. */
    Q_INVOKABLE void pick(const TunerStation& station);

    /** Picks the next (+1) or previous (-1) station of the list, round its ends. */
    void step(int by);

    /** Takes a remote's key (a Qt::Key); answers whether it meant something here. */
    Q_INVOKABLE bool press(int key);

Q_SIGNALS:
    void storeChanged();
    void hubChanged();
    void timepieceChanged();
    void playerChanged();
    void isLiveChanged();
    void checkingChanged();
    void stationsChanged();
    void currentStationChanged();
    void pictureChanged();

private:
    QCoro::Task<> watchTower();
    void restartWatch();
    void takeProbe(bool answered);
    void takeStatus();
    void followStation();
    void followPicture();
    void tuneIn();
    void dropPlayer();
    void setLive(bool isLive);
    void setChecking(bool checking);

    Store* m_store = nullptr;
    HubAPI* m_hub = nullptr;
    Timepiece* m_timepiece = nullptr;
    MakePlayer m_makePlayer = &makeStreamPlayer;

    std::shared_ptr<VideoPlayer> m_player;
    std::optional<TunerStation> m_selected;
    bool m_isLive = false;
    bool m_checking = false;

    QList<TunerStation> m_stations;
    TunerStation m_currentStation;
    QStringList m_onAir;
    bool m_wasLeftLit = false;
    std::unique_ptr<WakeLock> m_wakeLock; ///< while lit

    bool m_isStanding = false; ///< the screen is in view
    TaskScope m_watch;         ///< the running watch, which another station's replaces
    TaskScope m_screen;        ///< whatever must change nothing any more once the screen is gone
};
