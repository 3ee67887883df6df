#include "QuillmereTVApp.h"

#include <QTest>

/** What the sound servers are told of the set before it plays anything. */
class SoundAnnouncementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aStreamIsAnnouncedAsAFilm();
    void theUsersOwnAnnouncementStays_data();
    void theUsersOwnAnnouncementStays();
};

void SoundAnnouncementTest::init()
{
    qunsetenv("PULSE_PROP");
    qunsetenv("PIPEWIRE_PROPS");
}

void SoundAnnouncementTest::aStreamIsAnnouncedAsAFilm()
{
    QuillmereTVApp::prepareSound();
    QVERIFY(qgetenv("PULSE_PROP").split(' ').contains("media.role=video"));
    QVERIFY(qgetenv("PIPEWIRE_PROPS").contains("media.role = Movie "));
}

void SoundAnnouncementTest::theUsersOwnAnnouncementStays_data()
{
    QTest::addColumn<QByteArray>("own");
    QTest::addColumn<QByteArray>("other");
    QTest::newRow("PulseAudio") << QByteArray("PULSE_PROP") << QByteArray("PIPEWIRE_PROPS");
    QTest::newRow("PipeWire") << QByteArray("PIPEWIRE_PROPS") << QByteArray("PULSE_PROP");
}

void SoundAnnouncementTest::theUsersOwnAnnouncementStays()
{
    QFETCH(QByteArray, own);
    QFETCH(QByteArray, other);
    qputenv(own, "media.role=music");
    QuillmereTVApp::prepareSound();
    QCOMPARE(qgetenv(own), "media.role=music");
    QVERIFY(qgetenv(other).contains("media.role"));
}

QTEST_APPLESS_MAIN(SoundAnnouncementTest)
#include "SoundAnnouncementTest.moc"
