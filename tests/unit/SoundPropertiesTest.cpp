#include "QuillmereTVApp.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

namespace quillmere {

/** Tests the stream properties that the program sets for the sound servers before playing. */
class SoundPropertiesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qunsetenv("PULSE_PROP");
        qunsetenv("PIPEWIRE_PROPS");
    }

    void mediaRoleIsVideo()
    {
        QuillmereTVApp::prepareSound();
        QVERIFY(qgetenv("PULSE_PROP").split(' ').contains("media.role=video"));
        QVERIFY(qgetenv("PIPEWIRE_PROPS").contains("media.role = Movie "));
    }

    void propertiesSetByUserAreKept_data()
    {
        rows<QByteArray, QByteArray>({"own", "other"}, {{"PulseAudio", "PULSE_PROP", "PIPEWIRE_PROPS"},
                                                        {"PipeWire", "PIPEWIRE_PROPS", "PULSE_PROP"}});
    }

    void propertiesSetByUserAreKept()
    {
        QFETCH(QByteArray, own);
        QFETCH(QByteArray, other);
        qputenv(own, "media.role=music");
        QuillmereTVApp::prepareSound();
        QCOMPARE(qgetenv(own), "media.role=music");
        QVERIFY(qgetenv(other).contains("media.role"));
    }
};

QUILLMERE_TEST(SoundPropertiesTest, TestMain::NoApplication)

} // namespace quillmere

#include "SoundPropertiesTest.moc"
