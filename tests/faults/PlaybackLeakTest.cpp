#include "Dressing.h"
#include "FocusScreen.h"
#include "Holdings.h"
#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "PrivateBus.h"
#include "ProcessFigures.h"
#include "RecordDecoder.h"
#include "SampleHub.h"
#include "ScriptedHttpClient.h"
#include "Stage.h"
#include "StandInScreenSaver.h"
#include "Store.h"
#include "SystemClock.h"
#include "TapePage.h"
#include "TapePlayerController.h"
#include "VideoPlugins.h"

#include <QDBusConnectionInterface>
#include <QQmlComponent>
#include <QTest>

#include <malloc.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 15'000; // milliseconds
constexpr int warmUp = 20;       // openings: what is brought in once, or only grows to its size
constexpr int openings = 200;
constexpr double allowance = 5; // MB

/** How far an opening gets before the viewer leaves again. */
enum class Moment { AtOnce, EngineMade, StreamOpen, PictureShown };
// The quick ones more often.
constexpr Moment moments[] = {Moment::AtOnce, Moment::EngineMade, Moment::StreamOpen, Moment::EngineMade,
                              Moment::PictureShown};

/**
 * What this process has in memory, in MB, once the allocator has given back what nobody holds. The resident set, not its
 * proportional share: that changes as other programs come and go that use the same libraries.
 */
double memory(Stage& stage)
{
    stage.engine().collectGarbage();
    stage.waitForFrame(); // it lets go of what the last one showed
    malloc_trim(0);
    return double(figures::residentSetSize(getpid())) / 1e6;
}

/** The screen that plays a tape, as the set shows it. */
class Opened
{
public:
    Opened(Stage& stage, QQuickItem* canvas, Store& store, Timepiece& timepiece, const Tape& tape)
    {
        QQmlComponent component(&stage.engine());
        component.setData("import Quillmere.Playback\nTapePlayerView {}", {});
        m_view.reset(qobject_cast<FocusScreen*>(
            component.createWithInitialProperties({{u"store"_s, QVariant::fromValue(&store)},
                                                   {u"timepiece"_s, QVariant::fromValue(&timepiece)},
                                                   {u"tape"_s, QVariant::fromValue(tape)},
                                                   {u"cover"_s, QVariant::fromValue(dress(tape))}})));
        if (!m_view)
            qFatal("%s", qPrintable(component.errorString()));
        m_view->setParentItem(canvas);
        m_view->setSize(canvas->size());
        m_view->takeFocus();
        Q_EMIT m_view->appeared();
    }
    ~Opened() { Q_EMIT m_view->disappeared(); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    bool hasReached(Moment moment) const
    {
        const VideoPlayer* const player = m_view->findChild<TapePlayerController*>()->player();
        switch (moment) {
        case Moment::AtOnce:
            return true;
        case Moment::EngineMade:
            return player->engine() != nullptr;
        case Moment::StreamOpen:
            return player->duration() > 0;
        case Moment::PictureShown:
            return player->timeControl() == VideoPlayer::TimeControl::Playing && player->position() > 0;
        }
        return false;
    }

private:
    std::unique_ptr<FocusScreen> m_view;
};

} // namespace

/** Tapes of the sample hub opened and left in the real player, on a desktop that is told of it; the environment says how it draws. */
class PlaybackLeakTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void openingAndLeavingManyTimesLeavesNothingBehind();

private:
    bool openAndLeave(Moment moment);
    bool hasAllEnded();
    double growthSince(double before);

    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<PrivateBus> m_bus;
    std::optional<QDBusConnection> m_desktop;
    std::unique_ptr<StandInScreenSaver> m_screenSaver;
    std::unique_ptr<Stage> m_stage;
    QQuickItem* m_canvas = nullptr;
    Tape m_tape;

    SystemClock m_clock;
    Timepiece m_timepiece{m_clock};
    ScriptedHttpClient m_http;
    HubAPI m_api{m_http, QUrl(u"https://hub.example"_s)};
    MemoryDefaults m_defaults;
    Store m_store{m_api, m_defaults};
};

void PlaybackLeakTest::initTestCase()
{
    VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
    m_hub = std::make_unique<SampleHub>();
    const auto page = decodeRecord<TapePage>(m_hub->fetchBody(u"/api/tv/tapes?page=1&per_page=1"_s));
    QVERIFY(page && !page->items.isEmpty());
    m_tape = page->items.constFirst();

    m_bus = std::make_unique<PrivateBus>();
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus->address().toLatin1());
    m_desktop = m_bus->connect();
    m_screenSaver = std::make_unique<StandInScreenSaver>(*m_desktop);

    m_stage = std::make_unique<Stage>(QSize(1280, 720));
    m_canvas = m_stage->put(u"Canvas { focus: true }"_s);
}

bool PlaybackLeakTest::hasAllEnded()
{
    const QStringList players = m_desktop->interface()->registeredServiceNames().value().filter(u"org.mpris."_s);
    return !Holdings::isPlayerEnding() && players.isEmpty() && m_screenSaver->inhibitions().isEmpty();
}

bool PlaybackLeakTest::openAndLeave(Moment moment)
{
    {
        const Opened opened(*m_stage, m_canvas, m_store, m_timepiece, m_tape);
        if (!QTest::qWaitFor([&] { return opened.hasReached(moment); }, patience))
            return false;
    }
    return QTest::qWaitFor([this] { return hasAllEnded(); }, patience);
}

/** How much more memory there is in the end, in MB; it waits for what goes a little later. */
double PlaybackLeakTest::growthSince(double before)
{
    double grown = 0;
    const auto isWithin = [&] {
        grown = memory(*m_stage) - before;
        return grown <= allowance;
    };
    [[maybe_unused]] const bool cameBack = QTest::qWaitFor(isWithin, patience);
    qInfo("%.1f MB, and %.2f MB more after %d openings", before, grown, openings);
    return grown;
}

void PlaybackLeakTest::openingAndLeavingManyTimesLeavesNothingBehind()
{
    const auto openMany = [this](int count) {
        for (int i = 0; i < count; ++i)
            QVERIFY2(openAndLeave(moments[size_t(i) % std::size(moments)]), QByteArray::number(i));
    };
    openMany(warmUp);
    const double memoryBefore = memory(*m_stage);
    const Holdings before;

    openMany(openings);
    QTRY_VERIFY2_WITH_TIMEOUT(Holdings().isWithin(before), Holdings().text() + " after " + before.text(), patience);
    double grown = growthSince(memoryBefore);
    if (grown > allowance) {
        // A leak grows in every stretch, what the library happens to hold at the time does not.
        const double memoryBetween = memory(*m_stage);
        openMany(openings);
        grown = growthSince(memoryBetween);
    }
    QVERIFY(grown <= allowance);
}

QTEST_MAIN(PlaybackLeakTest)
#include "PlaybackLeakTest.moc"
