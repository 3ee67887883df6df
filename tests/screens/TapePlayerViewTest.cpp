#include "Tape.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/** The player screen as QML makes it, with a tape that has nothing to play. */
class TapePlayerViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theGroundIsBlackToTheEdgesAndSaysWhatIsMissing();
    void backLeavesOnce();
    void playPauseStaysHere();

private:
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_view;
};

void TapePlayerViewTest::initTestCase()
{
    m_engine.addImportPath(u":/qt/qml"_s);
    QQmlComponent component(&m_engine);
    component.setData("import Quillmere.Playback\nTapePlayerView {}", {});
    std::unique_ptr<QObject> made(component.createWithInitialProperties({{u"tape"_s, QVariant::fromValue(Tape{})}}));
    QVERIFY2(made, qPrintable(component.errorString()));
    m_view.reset(qobject_cast<QQuickItem*>(made.release()));
    m_window.setColor(Qt::blue);
    m_window.resize(1920, 1080);
    m_view->setParentItem(m_window.contentItem());
    m_view->setSize({1920, 1080});
    m_window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m_window));
    m_view->forceActiveFocus();
}

void TapePlayerViewTest::theGroundIsBlackToTheEdgesAndSaysWhatIsMissing()
{
    const QImage picture = m_window.grabWindow();
    for (const QPoint corner : {QPoint(0, 0), QPoint(1919, 0), QPoint(0, 1079), QPoint(1919, 1079)})
        QCOMPARE(picture.pixelColor(corner), QColor(Qt::black));
    const auto items = m_view->childItems();
    QVERIFY(std::any_of(items.begin(), items.end(), [](const QQuickItem* item) {
        return item->property("text").toString() == u"This tape has no playable copy on the shelf."_s;
    }));
}

void TapePlayerViewTest::backLeavesOnce()
{
    QSignalSpy dismissed(m_view.get(), SIGNAL(dismissed()));
    QTest::keyClick(&m_window, Qt::Key_Back);
    QCOMPARE(dismissed.count(), 1);
}

void TapePlayerViewTest::playPauseStaysHere()
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_MediaTogglePlayPause, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &press);
    QVERIFY(press.isAccepted());
    QKeyEvent left(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &left);
    QVERIFY(!left.isAccepted());
}

QTEST_MAIN(TapePlayerViewTest)
#include "TapePlayerViewTest.moc"
