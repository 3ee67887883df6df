#include "X11Outputs.h"
#include "TestMain.h"

#include "ScriptedXServer.h"

#include <QTest>

namespace quillmere {

/** Switches the monitor of a ScriptedXServer over a real X11 connection. */
class X11OutputsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void monitorGoesOffAndOnAgain_data();
    void monitorGoesOffAndOnAgain();
    void refusalIsReported_data();
    void refusalIsReported();
    void missingServerIsReported();
};

void X11OutputsTest::monitorGoesOffAndOnAgain_data()
{
    QTest::addColumn<bool>("isEnabled");
    QTest::newRow("power saving in use") << true;
    QTest::newRow("power saving not in use") << false;
}

void X11OutputsTest::monitorGoesOffAndOnAgain()
{
    QFETCH(const bool, isEnabled);
    const ScriptedXServer server({.isEnabled = isEnabled});
    X11Outputs outputs;
    for (int i = 0; i < 3; ++i) {
        QVERIFY(outputs.switchOff());
        QVERIFY(!server.isMonitorOn());
        outputs.switchOn();
        QVERIFY(server.isMonitorOn());
        QCOMPARE(server.isEnabled(), isEnabled);
    }
}

void X11OutputsTest::refusalIsReported_data()
{
    QTest::addColumn<bool>("offersDpms");
    QTest::newRow("without the extension") << false;
    QTest::newRow("with the extension") << true;
}

void X11OutputsTest::refusalIsReported()
{
    QFETCH(const bool, offersDpms);
    const ScriptedXServer server({.offersDpms = offersDpms, .refuses = true});
    X11Outputs outputs;
    QVERIFY(!outputs.switchOff());
    QVERIFY(server.isMonitorOn());
    QVERIFY(!server.isEnabled());
}

void X11OutputsTest::missingServerIsReported()
{
    qputenv("DISPLAY", "/nowhere/x");
    X11Outputs outputs;
    QVERIFY(!outputs.switchOff());
    outputs.switchOn();
}

QUILLMERE_TEST(X11OutputsTest, QCoreApplication)

} // namespace quillmere

#include "X11OutputsTest.moc"
