#include "TapePlayer.h"

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
    void playPauseAndTheArrowsStayHere();
    void aTapeThatEqualsTheDefaultOneIsTaken();
    void theTapeStartsWhereTheScreenIsTold();
    void playbackEndsAsSoonAsTheScreenLeaves();

private:
    std::unique_ptr<QQuickItem> make(const Tape& tape, double startAt = 0);
    static bool says(const QQuickItem& view, const QString& text);

    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_view;
};

std::unique_ptr<QQuickItem> TapePlayerViewTest::make(const Tape& tape, double startAt)
{
    QQmlComponent component(&m_engine);
    component.setData("import Quillmere.Playback\nTapePlayerView {}", {});
    QObject* const made =
        component.createWithInitialProperties({{u"tape"_s, QVariant::fromValue(tape)}, {u"startAt"_s, startAt}});
    if (!made)
        qWarning("%s", qPrintable(component.errorString()));
    return std::unique_ptr<QQuickItem>(qobject_cast<QQuickItem*>(made));
}

bool TapePlayerViewTest::says(const QQuickItem& view, const QString& text)
{
    const auto items = view.childItems();
    return std::any_of(items.begin(), items.end(),
                       [&text](const QQuickItem* item) { return item->property("text").toString() == text; });
}

void TapePlayerViewTest::initTestCase()
{
    m_engine.addImportPath(u":/qt/qml"_s);
    m_view = make({});
    QVERIFY(m_view);
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
    QVERIFY(says(*m_view, u"This tape has no playable copy on the shelf."_s));
}

void TapePlayerViewTest::backLeavesOnce()
{
    QSignalSpy dismissed(m_view.get(), SIGNAL(dismissed()));
    QTest::keyClick(&m_window, Qt::Key_Back);
    QCOMPARE(dismissed.count(), 1);
}

void TapePlayerViewTest::playPauseAndTheArrowsStayHere()
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_MediaTogglePlayPause, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &press);
    QVERIFY(press.isAccepted());
    QKeyEvent left(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &left);
    QVERIFY(left.isAccepted());
}

void TapePlayerViewTest::aTapeThatEqualsTheDefaultOneIsTaken()
{
    Tape tape;
    tape.streamURLPath = u"/recordings/none/index.m3u8"_s;
    QCOMPARE(tape, Tape{});
    const auto view = make(tape);
    QVERIFY(view);
    QVERIFY(!says(*view, u"This tape has no playable copy on the shelf."_s));
}

void TapePlayerViewTest::theTapeStartsWhereTheScreenIsTold()
{
    const auto view = make({}, 3725.5);
    QVERIFY(view);
    QCOMPARE(view->findChild<TapePlayer*>()->property("startAt").toDouble(), 3725.5);
}

void TapePlayerViewTest::playbackEndsAsSoonAsTheScreenLeaves()
{
    Tape tape;
    tape.streamURLPath = u"/recordings/none/index.m3u8"_s;
    const auto view = make(tape);
    QVERIFY(view);
    const VideoPlayer* const player = view->findChild<TapePlayer*>()->player();
    QVERIFY(player->item());
    QMetaObject::invokeMethod(view.get(), "disappeared");
    QVERIFY(!player->item());
}

QTEST_MAIN(TapePlayerViewTest)
#include "TapePlayerViewTest.moc"
