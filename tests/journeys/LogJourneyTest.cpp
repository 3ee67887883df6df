#include "Picture.h"
#include "SampleHub.h"
#include "Shop.h"
#include "SimulatedViewer.h"
#include "TestMain.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

/** Checks what the real program writes to standard error, from the front screen to a playing tape found by a search. */
class LogJourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void nothingIsLoggedByDefault();
    void enabledCategoriesAreLoggedInLines();

private:
    bool playFoundTape();
    QStringList lines() const;

    const QString m_word = u"noise"_s;
    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_log;
};

void LogJourneyTest::init()
{
    qunsetenv("QT_LOGGING_RULES");
    // As on a machine without a login session, where some libraries print warnings.
    qunsetenv("XDG_RUNTIME_DIR");
    // No sound device, independent of this machine, because sound libraries print warnings too.
    qputenv("PIPEWIRE_REMOTE", "none");
    qputenv("PULSE_SERVER", "unix:/nowhere");
    qputenv("ALSA_CONFIG_PATH", "/nowhere");
    m_hub.reset();
    m_hub = std::make_unique<SampleHub>();
    m_folder = std::make_unique<QTemporaryDir>();
    m_log = m_folder->filePath(u"log"_s);
}

/** Searches for the word, plays the first result, returns to its screen and ends the program. */
bool LogJourneyTest::playFoundTape()
{
    SimulatedViewer viewer;
    viewer.switchOn(m_log);
    if (!shop::open(viewer))
        return false;
    viewer.press(u"select"_s);
    if (!viewer.waitForText(shop::searchHeader, u"titles and spoken transcripts both"_s, 20s))
        return false;
    for (const QChar letter : m_word)
        viewer.press(QString(letter));
    viewer.press(u"Return"_s);
    if (!viewer.waitForText(shop::searchOutcome, u"tapes found"_s, 20s))
        return false;
    viewer.press(u"down"_s);
    viewer.press(u"select"_s);
    if (!viewer.waitForText(shop::detailFacts, u"self-hosted"_s, 20s))
        return false;
    viewer.press(u"select"_s);
    const bool plays = viewer.screen().waitUntil(
        [](const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) >= 1; }, 30s);
    viewer.press(u"back"_s);
    return plays && viewer.waitForText(shop::detailFacts, u"self-hosted"_s, 20s);
}

QStringList LogJourneyTest::lines() const
{
    QFile file(m_log);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The set's error output cannot be read.");
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

void LogJourneyTest::nothingIsLoggedByDefault()
{
    QVERIFY(playFoundTape());
    QCOMPARE(lines().join(u'\n'), QString());
}

void LogJourneyTest::enabledCategoriesAreLoggedInLines()
{
    qputenv("QT_LOGGING_RULES", "quillmere.*=true");
    QVERIFY(playFoundTape());
    const QStringList all = lines();
    for (const QString& pattern :
         {u"quillmere\\.http: GET /api/tv/status: status 200, \\d+ bytes, \\d+ ms"_s,
          u"quillmere\\.hub: /api/tv/tapes: answered, \\d+ ms"_s, u"quillmere\\.screen: RewinderyView appears"_s,
          u"quillmere\\.focus: StoreDoor at QRectF\\(.*\\) of LandingView"_s,
          u"quillmere\\.playback: /.*: Shown, Playing, at \\d.*"_s,
          u"quillmere\\.video: video .*(h264|H.264).*; sound .*"_s, u"quillmere\\.video: ALSA: .*"_s}) {
        const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
        QVERIFY2(!all.filter(whole).isEmpty(), qPrintable(pattern + u"\n"_s + all.join(u'\n')));
    }
    // The search text appears in the query of URLs, which must not be logged.
    QCOMPARE(all.filter(m_word), QStringList());
    QCOMPARE(all.filter(u"?"_s), QStringList());
}

QUILLMERE_TEST(LogJourneyTest, QCoreApplication)

} // namespace quillmere

#include "LogJourneyTest.moc"
