#include "FakeScreenSaver.h"
#include "NewsControllerFixture.h"
#include "PrivateBus.h"
#include "TestMain.h"

#include <QTest>

namespace quillmere {

/** When the screensaver is inhibited on the news channel. */
class NewsScreenSaverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_bus = std::make_unique<PrivateBus>();
        m_screenSaver = std::make_unique<FakeScreenSaver>(m_bus->connect());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus->address().toUtf8());
    }

    void cleanupTestCase()
    {
        m_screenSaver.reset();
        m_bus.reset();
    }

    void init() { m_news = std::make_unique<NewsControllerFixture>(); }
    void cleanup() { m_news.reset(); }

    void screensaverIsAllowedWhileTowerIsDark()
    {
        const int before = m_screenSaver->inhibitCalls();
        m_news->open(false);
        m_news->pause();
        m_news->pass(true);
        // The first request comes when the tower is lit.
        QTRY_COMPARE(inhibitions(), 1);
        QCOMPARE(m_screenSaver->inhibitCalls(), before + 1);
        m_news->pause();
        m_news->pass(false);
        QTRY_COMPARE(inhibitions(), 0);
    }

    void screensaverIsInhibitedWhileTowerIsLitAndScreenIsOpen()
    {
        m_news->open(true);
        QTRY_COMPARE(inhibitions(), 1);
        const int asked = m_screenSaver->inhibitCalls();
        m_news->player()->setWaiting(true);
        for (int pass = 0; pass < 3; ++pass) {
            m_news->pause();
            m_news->pass(true);
        }
        QCOMPARE(inhibitions(), 1);
        QCOMPARE(m_screenSaver->inhibitCalls(), asked);
        m_news->screen->disappear();
        QTRY_COMPARE(inhibitions(), 0);
    }

    void inhibitionContinuesWhilePlayerIsKept()
    {
        m_news->open(true, R"({"news": {"channels": {"2": {"label": "Two", "path": "two"}}}})");
        QTRY_COMPARE(inhibitions(), 1);
        QCOMPARE(m_news->number(), u"2"_s);
        const int asked = m_screenSaver->inhibitCalls();
        m_news->pass(true, u"/live/two/index.m3u8"_s, R"({"news": {"channels": {}}})");
        QCOMPARE(m_news->number(), u"5"_s);
        QCOMPARE(inhibitions(), 1);
        QCOMPARE(m_screenSaver->inhibitCalls(), asked);
    }

private:
    qsizetype inhibitions() const { return m_screenSaver->inhibitions().size(); }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FakeScreenSaver> m_screenSaver;
    std::unique_ptr<NewsControllerFixture> m_news;
};

QUILLMERE_TEST(NewsScreenSaverTest, QCoreApplication)

} // namespace quillmere

#include "NewsScreenSaverTest.moc"
