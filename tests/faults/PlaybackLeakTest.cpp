#include "Dressing.h"
#include "FakeScreenSaver.h"
#include "FocusScreen.h"
#include "PrivateBus.h"
#include "ProcessFigures.h"
#include "ProcessResources.h"
#include "RecordDecoder.h"
#include "SampleHub.h"
#include "ScreenFixture.h"
#include "SystemClock.h"
#include "Tape.h"
#include "TapePlayerController.h"
#include "TestMain.h"
#include "VideoPlugins.h"

#include <QDBusConnectionInterface>
#include <QQmlComponent>
#include <QTest>

#include <malloc.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int timeout = 15'000; // milliseconds
constexpr int warmUp = 20;      // openings, until everything is loaded once and caches have reached their size
constexpr int openings = 200;
constexpr double allowedGrowth = 5; // MB

/** How far playback gets before the viewer closes the screen. */
enum class Moment { AtOnce, EngineCreated, StreamOpen, PictureShown };
// The early moments occur more often.
constexpr Moment moments[] = {Moment::AtOnce, Moment::EngineCreated, Moment::StreamOpen, Moment::EngineCreated,
                              Moment::PictureShown};

/**
 * Resident memory of this process in MB, after the allocator has returned unused memory. Not the proportional share,
 * which changes when other programs that use the same libraries start and end.
 */
double memory(TestScreen& screen)
{
    screen.engine().collectGarbage();
    screen.waitForFrame(); // a new frame releases the resources of the last one
    malloc_trim(0);
    return double(figures::residentSetSize(getpid())) / 1e6;
}

/** The screen that plays a tape, shown as in the program. */
class OpenTapePlayer
{
public:
    OpenTapePlayer(ScreenFixture& fixture, Clock& clock, const Tape& tape)
    {
        QQmlComponent component(&fixture.engine());
        component.setData("import Quillmere.Playback\nTapePlayerView {}", {});
        m_view.reset(qobject_cast<FocusScreen*>(
            component.createWithInitialProperties({{u"store"_s, QVariant::fromValue(fixture.store.get())},
                                                   {u"clock"_s, QVariant::fromValue<Clock*>(&clock)},
                                                   {u"tape"_s, QVariant::fromValue(tape)},
                                                   {u"cover"_s, QVariant::fromValue(dress(tape))}})));
        if (!m_view)
            qFatal("%s", qPrintable(component.errorString()));
        m_view->setParentItem(fixture.canvas);
        m_view->setSize(fixture.canvas->size());
        m_view->acquireFocus();
        Q_EMIT m_view->appeared();
    }
    ~OpenTapePlayer() { Q_EMIT m_view->disappeared(); }
    OpenTapePlayer(const OpenTapePlayer&) = delete;
    OpenTapePlayer& operator=(const OpenTapePlayer&) = delete;

    bool hasReached(Moment moment) const
    {
        const VideoPlayer* const player = m_view->findChild<TapePlayerController*>()->player();
        switch (moment) {
        case Moment::AtOnce:
            return true;
        case Moment::EngineCreated:
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

/**
 * Opens and closes tapes of the sample hub in the real player many times, with a session bus. The environment chooses
 * the graphics API.
 */
class PlaybackLeakTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
        m_hub = std::make_unique<SampleHub>();
        const auto page = decodeRecord<TapePage>(m_hub->fetchBody(u"/api/tv/tapes?page=1&per_page=1"_s));
        QVERIFY(page && !page->items.isEmpty());
        m_tape = page->items.constFirst();

        m_bus = std::make_unique<PrivateBus>();
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus->address().toLatin1());
        m_desktop = m_bus->connect();
        m_screenSaver = std::make_unique<FakeScreenSaver>(*m_desktop);

        m_fixture = std::make_unique<ScreenFixture>(QSize(1280, 720));
        m_fixture->canvas = m_fixture->load(u"Canvas { focus: true }"_s);
    }

    void openingAndClosingManyTimesLeaksNothing()
    {
        const auto openMany = [this](int count) {
            for (int i = 0; i < count; ++i)
                QVERIFY2(openAndClose(moments[size_t(i) % std::size(moments)]), QByteArray::number(i));
        };
        openMany(warmUp);
        const double memoryBefore = memory(*m_fixture);
        const ProcessResources before;

        openMany(openings);
        QTRY_VERIFY2_WITH_TIMEOUT(ProcessResources().isWithin(before),
                                  ProcessResources().text() + " after " + before.text(), timeout);
        double grown = growthSince(memoryBefore);
        if (grown > allowedGrowth) {
            // A leak grows in every round; memory that the library happens to use at the moment does not.
            const double memoryBetween = memory(*m_fixture);
            openMany(openings);
            grown = growthSince(memoryBetween);
        }
        QVERIFY(grown <= allowedGrowth);
    }

private:
    bool openAndClose(Moment moment)
    {
        {
            const OpenTapePlayer opened(*m_fixture, m_clock, m_tape);
            if (!QTest::qWaitFor([&] { return opened.hasReached(moment); }, timeout))
                return false;
        }
        return QTest::qWaitFor([this] { return hasAllEnded(); }, timeout);
    }

    bool hasAllEnded()
    {
        const QStringList players = m_desktop->interface()->registeredServiceNames().value().filter(u"org.mpris."_s);
        return !ProcessResources::isPlayerEnding() && players.isEmpty() && m_screenSaver->inhibitions().isEmpty();
    }

    /** Growth of memory in MB. Waits until late releases bring it below the allowed growth, or the timeout. */
    double growthSince(double before)
    {
        double grown = 0;
        const auto isWithin = [&] {
            grown = memory(*m_fixture) - before;
            return grown <= allowedGrowth;
        };
        [[maybe_unused]] const bool hasShrunk = QTest::qWaitFor(isWithin, timeout);
        qInfo("%.1f MB, and %.2f MB more after %d openings", before, grown, openings);
        return grown;
    }

    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<PrivateBus> m_bus;
    std::optional<QDBusConnection> m_desktop;
    std::unique_ptr<FakeScreenSaver> m_screenSaver;
    std::unique_ptr<ScreenFixture> m_fixture;
    Tape m_tape;
    SystemClock m_clock;
};

QUILLMERE_TEST(PlaybackLeakTest, QGuiApplication)

} // namespace quillmere

#include "PlaybackLeakTest.moc"
