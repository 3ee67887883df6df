#include "QuillmereTVApp.h"
#include "TestMain.h"

#include <QTest>

namespace quillmere {

/** Tests the stream properties that the program sets for the sound servers before playing. */
class SoundPropertiesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void mediaRoleIsVideo();
    void propertiesSetByUserAreKept_data();
    void propertiesSetByUserAreKept();
};

void SoundPropertiesTest::init()
{
    qunsetenv("PULSE_PROP");
    qunsetenv("PIPEWIRE_PROPS");
}

void SoundPropertiesTest::mediaRoleIsVideo()
{
    QuillmereTVApp::prepareSound();
    QVERIFY(qgetenv("PULSE_PROP").split(' ').contains("media.role=video"));
    QVERIFY(qgetenv("PIPEWIRE_PROPS").contains("media.role = Movie "));
}

void SoundPropertiesTest::propertiesSetByUserAreKept_data()
{
    QTest::addColumn<QByteArray>("own");
    QTest::addColumn<QByteArray>("other");
    QTest::newRow("PulseAudio") << QByteArray("PULSE_PROP") << QByteArray("PIPEWIRE_PROPS");
    QTest::newRow("PipeWire") << QByteArray("PIPEWIRE_PROPS") << QByteArray("PULSE_PROP");
}

void SoundPropertiesTest::propertiesSetByUserAreKept()
{
    QFETCH(QByteArray, own);
    QFETCH(QByteArray, other);
    qputenv(own, "media.role=music");
    QuillmereTVApp::prepareSound();
    QCOMPARE(qgetenv(own), "media.role=music");
    QVERIFY(qgetenv(other).contains("media.role"));
}

QUILLMERE_TEST(SoundPropertiesTest, TestMain::NoApplication)

} // namespace quillmere

#include "SoundPropertiesTest.moc"
