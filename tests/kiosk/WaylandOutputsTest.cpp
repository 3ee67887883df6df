#include "WaylandOutputs.h"

#include "ScriptedCompositor.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(ScriptedCompositor::Terms)

/** Switching a compositor's outputs off and on, as a client of a real connection. */
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
    void outputThatWasOffStaysOff_data() { protocols(); }
    void outputThatWasOffStaysOff();
    void refusalIsReported_data();
    void refusalIsReported();
    void configurationIsUsedIfPowerIsRefused();
    void slowOutputIsWaitedFor();
    void configurationRestoresOutput();
    void outputWhoseOldStateIsRefusedComesBack();
    void configurationIsTriedAgainIfOutputsChange_data();
    void configurationIsTriedAgainIfOutputsChange();
    void outputUnpluggedWhileOffIsForgotten_data() { protocols(); }
    void outputUnpluggedWhileOffIsForgotten();
    void missingCompositorIsReported();
    void silentCompositorIsGivenUp();

private:
    static void protocols();
};

void WaylandOutputsTest::protocols()
{
    QTest::addColumn<ScriptedCompositor::Terms>("terms");
    QTest::newRow("power") << ScriptedCompositor::Terms{.offersPower = true};
    QTest::newRow("configuration") << ScriptedCompositor::Terms{.offersConfiguration = true};
}

void WaylandOutputsTest::outputsGoOffAndOnAgain_data()
{
    protocols();
    QTest::newRow("both") << ScriptedCompositor::Terms{.offersPower = true, .offersConfiguration = true};
    QTest::newRow("power of three") << ScriptedCompositor::Terms{.offersPower = true, .outputs = 3};
    QTest::newRow("configuration of three") << ScriptedCompositor::Terms{.offersConfiguration = true, .outputs = 3};
}

void WaylandOutputsTest::outputsGoOffAndOnAgain()
{
    QFETCH(const ScriptedCompositor::Terms, terms);
    const ScriptedCompositor compositor(terms);
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    QCOMPARE(compositor.outputsOn(), 0);
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), terms.outputs);
    QCOMPARE(compositor.complaint(), QString());
}

void WaylandOutputsTest::connectionLastsOnlyWhileOutputsAreOff()
{
    QFETCH(const ScriptedCompositor::Terms, terms);
    const ScriptedCompositor compositor(terms);
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    QTRY_COMPARE(compositor.clients(), 1);
    outputs.switchOn();
    QTRY_COMPARE(compositor.clients(), 0);
}

void WaylandOutputsTest::outputsGoOffManyTimes()
{
    QFETCH(const ScriptedCompositor::Terms, terms);
    const ScriptedCompositor compositor(terms);
    WaylandOutputs outputs;
    for (int i = 0; i < 20; ++i) {
        QVERIFY(outputs.switchOff());
        QCOMPARE(compositor.outputsOn(), 0);
        outputs.switchOn();
        QCOMPARE(compositor.outputsOn(), 1);
    }
}

void WaylandOutputsTest::outputThatWasOffStaysOff()
{
    QFETCH(ScriptedCompositor::Terms, terms);
    terms.outputs = 2;
    terms.outputsOff = 1;
    const ScriptedCompositor compositor(terms);
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    QCOMPARE(compositor.outputsOn(), 0);
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), 1);
}

void WaylandOutputsTest::refusalIsReported_data()
{
    using Terms = ScriptedCompositor::Terms;
    QTest::addColumn<Terms>("terms");
    QTest::newRow("nothing offered") << Terms{};
    QTest::newRow("power refused") << Terms{.offersPower = true, .refuses = true};
    QTest::newRow("power failed") << Terms{.offersPower = true, .saysFailed = true};
    QTest::newRow("configuration refused") << Terms{.offersConfiguration = true, .refuses = true};
    QTest::newRow("both refused") << Terms{.offersPower = true, .offersConfiguration = true, .refuses = true};
    QTest::newRow("power without outputs") << Terms{.offersPower = true, .outputs = 0};
    QTest::newRow("configuration without outputs") << Terms{.offersConfiguration = true, .outputs = 0};
}

void WaylandOutputsTest::refusalIsReported()
{
    QFETCH(const ScriptedCompositor::Terms, terms);
    const ScriptedCompositor compositor(terms);
    WaylandOutputs outputs;
    QVERIFY(!outputs.switchOff());
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), terms.outputs);
    QTRY_COMPARE(compositor.clients(), 0);
}

void WaylandOutputsTest::configurationIsUsedIfPowerIsRefused()
{
    const ScriptedCompositor compositor({.offersPower = true, .offersConfiguration = true, .saysFailed = true});
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

void WaylandOutputsTest::outputWhoseOldStateIsRefusedComesBack()
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
    const ScriptedCompositor compositor({.offersConfiguration = true, .changesMeanwhile = changes});
    WaylandOutputs outputs;
    QCOMPARE(outputs.switchOff(), succeeds);
    QCOMPARE(compositor.outputsOn(), succeeds ? 0 : 1);
}

void WaylandOutputsTest::outputUnpluggedWhileOffIsForgotten()
{
    QFETCH(ScriptedCompositor::Terms, terms);
    terms.outputs = 2;
    ScriptedCompositor compositor(terms);
    WaylandOutputs outputs;
    QVERIFY(outputs.switchOff());
    compositor.unplug();
    QTRY_VERIFY(!compositor.isUnplugging());
    outputs.switchOn();
    QCOMPARE(compositor.outputsOn(), 1);
    QCOMPARE(compositor.complaint(), QString());
}

void WaylandOutputsTest::missingCompositorIsReported()
{
    qputenv("WAYLAND_DISPLAY", "nobody-there");
    WaylandOutputs outputs;
    QVERIFY(!outputs.switchOff());
    outputs.switchOn();
}

void WaylandOutputsTest::silentCompositorIsGivenUp()
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

QTEST_GUILESS_MAIN(WaylandOutputsTest)
#include "WaylandOutputsTest.moc"
