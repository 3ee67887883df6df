#include "WaylandOutputs.h"
#include "TestMain.h"

#include "ScriptedCompositor.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Switches the outputs of a ScriptedCompositor over a real Wayland connection. */
class WaylandOutputsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void outputsGoOffAndOnAgain_data();
    void outputsGoOffAndOnAgain();
    void connectionLastsOnlyWhileOutputsAreOff_data() { protocols(); }
    void connectionLastsOnlyWhileOutputsAreOff();
    void outputsGoOffManyTimes_data() { protocols(); }
    void outputsGoOffManyTimes();
    void outputStaysOffIfItWasOff_data() { protocols(); }
    void outputStaysOffIfItWasOff();
    void refusalIsReported_data();
    void refusalIsReported();
    void configurationIsUsedIfPowerIsRefused();
    void slowOutputIsWaitedFor();
    void configurationRestoresOutput();
    void outputIsEnabledWhenOldStateIsRefused();
    void configurationIsTriedAgainIfOutputsChange_data();
    void configurationIsTriedAgainIfOutputsChange();
    void outputUnpluggedWhileOffIsIgnored_data() { protocols(); }
    void outputUnpluggedWhileOffIsIgnored();
    void missingCompositorIsReported();
    void silentCompositorTimesOut();

private:
    static void protocols();
};

void WaylandOutputsTest::protocols()
{
    QTest::addColumn<ScriptedCompositor::Options>("options");
    QTest::newRow("power") << ScriptedCompositor::Options{.offersPower = true};
    QTest::newRow("configuration") << ScriptedCompositor::Options{.offersConfiguration = true};
}

void WaylandOutputsTest::outputsGoOffAndOnAgain_data()
{
    protocols();
    QTest::newRow("both") << ScriptedCompositor::Options{.offersPower = true, .offersConfiguration = true};
    QTest::newRow("power of three") << ScriptedCompositor::Options{.offersPower = true, .outputs = 3};
    QTest::newRow("configuration of three") << ScriptedCompositor::Options{.offersConfiguration = true, .outputs = 3};
}

void WaylandOutputsTest::outputsGoOffAndOnAgain()
{
    QFETCH(const ScriptedCompositor::Options, options);
    const ScriptedCompositor compositor(options);
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    QCOMPARE(compositor.outputsOn(), 0);
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), options.outputs);
    QCOMPARE(compositor.protocolError(), QString());
}

void WaylandOutputsTest::connectionLastsOnlyWhileOutputsAreOff()
{
    QFETCH(const ScriptedCompositor::Options, options);
    const ScriptedCompositor compositor(options);
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    QTRY_COMPARE(compositor.clients(), 1);
    outputs.switchOn();
    QTRY_COMPARE(compositor.clients(), 0);
}

void WaylandOutputsTest::outputsGoOffManyTimes()
{
    QFETCH(const ScriptedCompositor::Options, options);
    const ScriptedCompositor compositor(options);
    WaylandOutputs outputs;
    for (int i = 0; i < 20; ++i) {
        QVERIFY(outputs.switchOff());
        QCOMPARE(compositor.outputsOn(), 0);
        outputs.switchOn();
        QCOMPARE(compositor.outputsOn(), 1);
    }
}

void WaylandOutputsTest::outputStaysOffIfItWasOff()
{
    QFETCH(ScriptedCompositor::Options, options);
    options.outputs = 2;
    options.outputsOff = 1;
    const ScriptedCompositor compositor(options);
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    QCOMPARE(compositor.outputsOn(), 0);
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), 1);
}

void WaylandOutputsTest::refusalIsReported_data()
{
    using Options = ScriptedCompositor::Options;
    QTest::addColumn<Options>("options");
    QTest::newRow("nothing offered") << Options{};
    QTest::newRow("power refused") << Options{.offersPower = true, .refuses = true};
    QTest::newRow("power failed") << Options{.offersPower = true, .sendsFailed = true};
    QTest::newRow("configuration refused") << Options{.offersConfiguration = true, .refuses = true};
    QTest::newRow("both refused") << Options{.offersPower = true, .offersConfiguration = true, .refuses = true};
    QTest::newRow("power without outputs") << Options{.offersPower = true, .outputs = 0};
    QTest::newRow("configuration without outputs") << Options{.offersConfiguration = true, .outputs = 0};
}

void WaylandOutputsTest::refusalIsReported()
{
    QFETCH(const ScriptedCompositor::Options, options);
    const ScriptedCompositor compositor(options);
    WaylandOutputs outputs;
    QVERIFY(!outputs.switchOff());
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), options.outputs);
    QTRY_COMPARE(compositor.clients(), 0);
}

void WaylandOutputsTest::configurationIsUsedIfPowerIsRefused()
{
    const ScriptedCompositor compositor({.offersPower = true, .offersConfiguration = true, .sendsFailed = true});
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    QCOMPARE(compositor.outputsOn(), 0);
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), 1);
}

void WaylandOutputsTest::slowOutputIsWaitedFor()
{
    const ScriptedCompositor compositor({.offersPower = true, .isSlow = true});
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    QCOMPARE(compositor.outputsOn(), 0);
    outputs.switchOn();
    QTRY_COMPARE(compositor.outputsOn(), 1);
}

void WaylandOutputsTest::outputIsEnabledWhenOldStateIsRefused()
{
    const ScriptedCompositor compositor({.offersConfiguration = true, .refusesState = true});
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    QCOMPARE(compositor.outputsOn(), 0);
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), 1);
}

void WaylandOutputsTest::configurationRestoresOutput()
{
    const ScriptedCompositor compositor({.offersConfiguration = true});
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    outputs.switchOn();
    QCOMPARE(compositor.lastEnabled(), u"1920 at 100,200 turned 2 scaled 1.5"_s);
}

void WaylandOutputsTest::configurationIsTriedAgainIfOutputsChange_data()
{
    QTest::addColumn<int>("changes");
    QTest::addColumn<bool>("succeeds");
    QTest::newRow("once") << 1 << true;
    QTest::newRow("twice") << 2 << true;
    QTest::newRow("for ever") << 1000000 << false;
}

void WaylandOutputsTest::configurationIsTriedAgainIfOutputsChange()
{
    QFETCH(const int, changes);
    QFETCH(const bool, succeeds);
    const ScriptedCompositor compositor({.offersConfiguration = true, .cancelledConfigurations = changes});
    WaylandOutputs outputs;
    QCOMPARE(outputs.switchOff(), succeeds);
    QCOMPARE(compositor.outputsOn(), succeeds ? 0 : 1);
}

void WaylandOutputsTest::outputUnpluggedWhileOffIsIgnored()
{
    QFETCH(ScriptedCompositor::Options, options);
    options.outputs = 2;
    ScriptedCompositor compositor(options);
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    compositor.unplug();
    QTRY_VERIFY(!compositor.isUnplugging());
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), 1);
    QCOMPARE(compositor.protocolError(), QString());
}

void WaylandOutputsTest::missingCompositorIsReported()
{
    qputenv("WAYLAND_DISPLAY", "nobody-there");
    WaylandOutputs outputs;
    QVERIFY(!outputs.switchOff());
    outputs.switchOn();
}

void WaylandOutputsTest::silentCompositorTimesOut()
{
    const QTemporaryDir folder;
    QLocalServer silent;
    QVERIFY(silent.listen(folder.filePath(u"wayland"_s)));
    qputenv("WAYLAND_DISPLAY", silent.fullServerName().toUtf8());
    QElapsedTimer taken;
    taken.start();
    WaylandOutputs outputs;
    QVERIFY(!outputs.switchOff());
    QVERIFY(taken.elapsed() < 10000);
}

QUILLMERE_TEST(WaylandOutputsTest, QCoreApplication)

} // namespace quillmere

#include "WaylandOutputsTest.moc"
