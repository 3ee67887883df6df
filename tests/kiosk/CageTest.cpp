#include "KioskSession.h"
#include "LivingRoom.h"
#include "Picture.h"
#include "SampleHub.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/** The real set in cage, in a window of cage's that fills a virtual X display: seen and driven from outside. */
class CageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup() { m_session.reset(); }
    void pictureIsThatOfSetWithoutCompositor();
    void everyFrameFillsScreen();
    void keysReachSet();
    void restingSetDrawsNothing();
    void compositorEndsWithSet_data();
    void compositorEndsWithSet();
    void displaySleepsAndKeyWakesIt();
    void sleepingDisplayDrawsNothing();

private:
    void start(const QStringList& variables = {});
    bool shows(const QImage& picture, std::chrono::milliseconds limit = 20s);
    bool isBlack(const QImage& picture) const;

    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<LivingRoom> m_room;
    std::unique_ptr<KioskSession> m_session;
    QImage m_front; ///< the front screen, as the set draws it on the X display itself
};

void CageTest::initTestCase()
{
    m_hub = std::make_unique<SampleHub>();
    m_room = std::make_unique<LivingRoom>();
    m_room->switchOn();
    QVERIFY(m_room->waitForText(area::rightDoor, u"every one plays right here"_s));
    QVERIFY(m_room->screen().waitUntilSettled(500ms, 10s));
    m_front = m_room->screen().look();
    m_room->switchOff();
    m_room->waitForEmptyScreen();
}

void CageTest::start(const QStringList& variables)
{
    m_session = std::make_unique<KioskSession>(KioskSession::Compositor::CageOnX11, variables);
}

/** Whether the screen becomes this picture, to the pixel but for how its edges were blended. */
bool CageTest::shows(const QImage& picture, std::chrono::milliseconds limit)
{
    const bool same = m_room->screen().waitUntil(
        [&](const QImage& now) {
            m_room->remote().giveFocus(); // to cage's window, as soon as there is one
            return picture::difference(now, picture, area::everything, 4) < 1e-5;
        },
        limit);
    if (!same) {
        picture.save(u"cage-expected.png"_s);
        m_room->screen().look().save(u"cage-seen.png"_s);
    }
    return same;
}

bool CageTest::isBlack(const QImage& picture) const
{
    QImage black(picture.size(), QImage::Format_RGB32);
    black.fill(Qt::black);
    return picture == black;
}

void CageTest::pictureIsThatOfSetWithoutCompositor()
{
    start();
    QVERIFY(shows(m_front));
}

/** Of all that is seen from the beginning, only cage's own black does not reach the screen's edges. */
void CageTest::everyFrameFillsScreen()
{
    QList<QImage> seen;
    start();
    QVERIFY(m_room->screen().waitUntil(
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
            const bool isSet = picture::isLike(picture.pixelColor(edge), m_front.pixelColor(edge), 8);
            if (!isSet)
                picture.save(u"cage-frame.png"_s);
            QVERIFY2(isSet, "A frame does not reach the edges; see cage-frame.png.");
        }
    }
}

void CageTest::keysReachSet()
{
    start();
    QVERIFY(shows(m_front));
    QVERIFY(m_room->pressAndSee(u"right"_s));
    QVERIFY(m_room->pressAndSee(u"select"_s));
    QVERIFY(m_room->waitForText(area::everything, u"Rewindery"_s, 20s));
    m_room->press(u"back"_s);
    m_room->press(u"left"_s);
    QVERIFY(shows(m_front));
}

void CageTest::restingSetDrawsNothing()
{
    start();
    QVERIFY(shows(m_front));
    QVERIFY(m_room->screen().waitUntilSettled(500ms, 10s));
    QCOMPARE(m_room->screen().count(3s).drawings, 0);
}

void CageTest::compositorEndsWithSet_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("crash") << SIGSEGV;
    QTest::newRow("abort") << SIGABRT;
    QTest::newRow("orderly end") << SIGTERM;
}

/** Which is what has the service start both again. */
void CageTest::compositorEndsWithSet()
{
    QFETCH(const int, signal);
    start();
    QVERIFY(shows(m_front));
    QVERIFY(m_session->setPid() > 0);
    QCOMPARE(kill(pid_t(m_session->setPid()), signal), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!m_session->compositor().isRunning(), 2000);
}

void CageTest::displaySleepsAndKeyWakesIt()
{
    start({u"QUILLMERE_DISPLAY_SLEEP=4s"_s});
    QVERIFY(shows(m_front, 4s));
    QCOMPARE(m_session->displayState(), u"on"_s);
    QVERIFY(m_room->screen().waitUntil([this](const QImage& now) { return isBlack(now); }, 10s));
    QTRY_COMPARE(m_session->displayState(), u"off"_s);
    // cage 0.2 switches its output off, and takes away the window that keys could be pressed in; SwayTest wakes such a one.
    if (QTest::qWaitFor([this] { return !m_room->remote().giveFocus(); }, 2000)) {
        QVERIFY(m_session->compositor().isRunning());
        QVERIFY(m_session->setPid() > 0);
        return;
    }
    m_room->press(u"right"_s);
    QVERIFY(shows(m_front)); // the other door is not entered
    QTRY_COMPARE(m_session->displayState(), u"on"_s);
    QVERIFY(m_room->pressAndSee(u"right"_s));
}

void CageTest::sleepingDisplayDrawsNothing()
{
    m_hub->light(); // the lamp pulses
    start({u"QUILLMERE_DISPLAY_SLEEP=2s"_s});
    QTRY_COMPARE_WITH_TIMEOUT(m_session->displayState(), u"off"_s, 20000);
    QVERIFY(isBlack(m_room->screen().look()));
    QCOMPARE(m_room->screen().count(3s).drawings, 0);
    m_hub->darken();
}

QTEST_MAIN(CageTest)
#include "CageTest.moc"
