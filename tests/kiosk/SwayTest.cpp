#include "KioskSession.h"
#include "Picture.h"
#include "SampleHub.h"
#include "SimulatedViewer.h"
#include "TestMain.h"

#include <QDeadlineTimer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

/**
 * Runs the real program in sway with a headless output. Takes pictures, presses keys and switches the output through
 * sway.
 */
class SwayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_session.reset(); }
    void pictureMatchesProgramWithoutCompositor();
    void keysReachProgram();
    void programDrawsAfterOutputWasOff();
    void displaySleepsAndKeyWakesIt();

private:
    void start(const QStringList& variables = {});
    bool showsWithin(const std::function<bool(const QImage&)>& condition, std::chrono::milliseconds limit = 20s);
    bool shows(const QImage& picture);

    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<KioskSession> m_session;
    QImage m_front; ///< the front screen, as drawn on an X display
};

void SwayTest::initTestCase()
{
    m_hub = std::make_unique<SampleHub>();
    SimulatedViewer viewer;
    viewer.switchOn();
    QVERIFY(viewer.waitForText(area::rightDoor, u"every one plays right here"_s));
    QVERIFY(viewer.screen().waitUntilStill(500ms, 10s));
    m_front = viewer.screen().grab();
}

void SwayTest::init()
{
    m_hub->reset();
}

void SwayTest::start(const QStringList& variables)
{
    m_session = std::make_unique<KioskSession>(KioskSession::Compositor::HeadlessSway, variables);
}

bool SwayTest::showsWithin(const std::function<bool(const QImage&)>& condition, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    while (!condition(m_session->picture())) {
        if (deadline.hasExpired()) {
            m_session->picture().save(u"sway-seen.png"_s);
            return false;
        }
    }
    return true;
}

bool SwayTest::shows(const QImage& picture)
{
    return showsWithin(
        [&](const QImage& now) { return picture::difference(now, picture, area::everything, 4) < 1e-5; });
}

void SwayTest::pictureMatchesProgramWithoutCompositor()
{
    start();
    QVERIFY(shows(m_front));
}

void SwayTest::keysReachProgram()
{
    start();
    QVERIFY(shows(m_front));
    m_session->press(u"Right"_s);
    QVERIFY(showsWithin([this](const QImage& now) {
        return picture::difference(now, m_front, area::leftDoor) > 0.01 &&
               picture::difference(now, m_front, area::rightDoor) > 0.01;
    }));
    m_session->press(u"Left"_s);
    QVERIFY(shows(m_front));
}

void SwayTest::programDrawsAfterOutputWasOff()
{
    start();
    QVERIFY(shows(m_front));
    const bool wentOff = m_session->switchOutput(false);
    m_session->press(u"Right"_s);
    if (wentOff)
        QVERIFY(m_session->switchOutput(true));
    m_session->press(u"Left"_s);
    QVERIFY(shows(m_front));
}

void SwayTest::displaySleepsAndKeyWakesIt()
{
    start();
    QVERIFY(shows(m_front));
    // wlroots 0.15 (Debian 12) refuses to switch off a headless output. The program must show black in that case.
    const bool canSwitch = m_session->switchOutput(false);
    m_session.reset();

    start({u"QUILLMERE_DISPLAY_SLEEP=5s"_s});
    QVERIFY(shows(m_front));
    QCOMPARE(m_session->displayState(), u"on"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_session->displayState(), u"off"_s, 20000);
    if (canSwitch) {
        QTRY_VERIFY(!m_session->isOutputOn());
    } else {
        const QImage seen = m_session->picture();
        QImage black(seen.size(), QImage::Format_RGB32);
        black.fill(Qt::black);
        QVERIFY(seen == black);
    }
    m_session->press(u"Right"_s);
    QTRY_COMPARE(m_session->displayState(), u"on"_s);
    QTRY_VERIFY(m_session->isOutputOn());
    QVERIFY(shows(m_front)); // the waking key has not moved the focus
}

QUILLMERE_TEST(SwayTest, QGuiApplication)

} // namespace quillmere

#include "SwayTest.moc"
