#include "KioskSession.h"
#include "Picture.h"
#include "SampleHub.h"
#include "SimulatedViewer.h"
#include "TestMain.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

/**
 * Runs the real program in cage, whose window fills a virtual X display, and checks its picture and its reaction to
 * keys.
 */
class CageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup() { m_session.reset(); }
    void pictureMatchesProgramWithoutCompositor();
    void everyFrameFillsScreen();
    void keysReachProgram();
    void idleProgramDrawsNothing();
    void compositorExitsWhenProgramEnds_data();
    void compositorExitsWhenProgramEnds();
    void displaySleepsAndKeyWakesIt();
    void sleepingDisplayDrawsNothing();

private:
    void start(const QStringList& variables = {});
    bool shows(const QImage& picture, std::chrono::milliseconds limit = 20s);
    bool isBlack(const QImage& picture) const;

    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<SimulatedViewer> m_viewer;
    std::unique_ptr<KioskSession> m_session;
    QImage m_front; ///< the front screen, as drawn directly on the X display
};

void CageTest::initTestCase()
{
    m_hub = std::make_unique<SampleHub>();
    m_viewer = std::make_unique<SimulatedViewer>();
    m_viewer->switchOn();
    QVERIFY(m_viewer->waitForText(area::rightDoor, u"every one plays right here"_s));
    QVERIFY(m_viewer->screen().waitUntilStill(500ms, 10s));
    m_front = m_viewer->screen().grab();
    m_viewer->switchOff();
    m_viewer->waitForEmptyScreen();
}

void CageTest::start(const QStringList& variables)
{
    m_session = std::make_unique<KioskSession>(KioskSession::Compositor::CageOnX11, variables);
}

/** Waits until the screen shows this picture, apart from tiny differences of antialiased edges. */
bool CageTest::shows(const QImage& picture, std::chrono::milliseconds limit)
{
    const bool same = m_viewer->screen().waitUntil(
        [&](const QImage& now) {
            m_viewer->remote().focusTopWindow(); // cage's window may not exist at first
            return picture::difference(now, picture, area::everything, 4) < 1e-5;
        },
        limit);
    if (!same) {
        picture.save(u"cage-expected.png"_s);
        m_viewer->screen().grab().save(u"cage-seen.png"_s);
    }
    return same;
}

bool CageTest::isBlack(const QImage& picture) const
{
    QImage black(picture.size(), QImage::Format_RGB32);
    black.fill(Qt::black);
    return picture == black;
}

void CageTest::pictureMatchesProgramWithoutCompositor()
{
    start();
    QVERIFY(shows(m_front));
}

/** Every frame since the start either is completely black or shows the program up to the edges of the screen. */
void CageTest::everyFrameFillsScreen()
{
    QList<QImage> seen;
    start();
    QVERIFY(m_viewer->screen().waitUntil(
        [&](const QImage& now) {
            seen.append(now);
            return picture::difference(now, m_front, area::everything, 4) < 1e-5;
        },
        20s));
    const QRect whole = m_front.rect();
    const QPoint edges[] = {whole.topLeft(),
                            whole.topRight(),
                            whole.bottomLeft(),
                            whole.bottomRight(),
                            QPoint(whole.center().x(), 0),
                            QPoint(whole.center().x(), whole.bottom())};
    for (const QImage& picture : std::as_const(seen)) {
        if (isBlack(picture))
            continue;
        for (const QPoint& edge : edges) {
            const bool isProgram = picture::isLike(picture.pixelColor(edge), m_front.pixelColor(edge), 8);
            if (!isProgram)
                picture.save(u"cage-frame.png"_s);
            QVERIFY2(isProgram, "A frame does not reach the edges; see cage-frame.png.");
        }
    }
}

void CageTest::keysReachProgram()
{
    start();
    QVERIFY(shows(m_front));
    QVERIFY(m_viewer->pressAndWaitForChange(u"right"_s));
    QVERIFY(m_viewer->pressAndWaitForChange(u"select"_s));
    QVERIFY(m_viewer->waitForText(area::everything, u"Rewindery"_s, 20s));
    m_viewer->press(u"back"_s);
    m_viewer->press(u"left"_s);
    QVERIFY(shows(m_front));
}

void CageTest::idleProgramDrawsNothing()
{
    start();
    QVERIFY(shows(m_front));
    QVERIFY(m_viewer->screen().waitUntilStill(500ms, 10s));
    QCOMPARE(m_viewer->screen().count(3s).drawings, 0);
}

void CageTest::compositorExitsWhenProgramEnds_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("crash") << SIGSEGV;
    QTest::newRow("abort") << SIGABRT;
    QTest::newRow("orderly end") << SIGTERM;
}

/** The service depends on this: it restarts both when the compositor exits. */
void CageTest::compositorExitsWhenProgramEnds()
{
    QFETCH(const int, signal);
    start();
    QVERIFY(shows(m_front));
    QVERIFY(m_session->programPid() > 0);
    QCOMPARE(kill(pid_t(m_session->programPid()), signal), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!m_session->compositor().isRunning(), 2000);
}

void CageTest::displaySleepsAndKeyWakesIt()
{
    start({u"QUILLMERE_DISPLAY_SLEEP=4s"_s});
    QVERIFY(shows(m_front, 4s));
    QCOMPARE(m_session->displayState(), u"on"_s);
    QVERIFY(m_viewer->screen().waitUntil([this](const QImage& now) { return isBlack(now); }, 10s));
    QTRY_COMPARE(m_session->displayState(), u"off"_s);
    // cage 0.2 disables its output and closes the window, so no key can be pressed. SwayTest tests waking in that case.
    if (QTest::qWaitFor([this] { return !m_viewer->remote().focusTopWindow(); }, 2000)) {
        QVERIFY(m_session->compositor().isRunning());
        QVERIFY(m_session->programPid() > 0);
        return;
    }
    m_viewer->press(u"right"_s);
    QVERIFY(shows(m_front)); // the waking key has not moved the focus
    QTRY_COMPARE(m_session->displayState(), u"on"_s);
    QVERIFY(m_viewer->pressAndWaitForChange(u"right"_s));
}

void CageTest::sleepingDisplayDrawsNothing()
{
    m_hub->startBroadcast(); // the lamp is animated while the hub broadcasts
    start({u"QUILLMERE_DISPLAY_SLEEP=2s"_s});
    QTRY_COMPARE_WITH_TIMEOUT(m_session->displayState(), u"off"_s, 20000);
    QVERIFY(isBlack(m_viewer->screen().grab()));
    QCOMPARE(m_viewer->screen().count(3s).drawings, 0);
    m_hub->stopBroadcast();
}

QUILLMERE_TEST(CageTest, QGuiApplication)

} // namespace quillmere

#include "CageTest.moc"
