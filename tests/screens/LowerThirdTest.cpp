#include "BroadcastFixture.h"
#include "StationMotion.h"
#include "StationPalette.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

#include <cmath>

using namespace std::chrono_literals;

namespace quillmere {

namespace {

const QString sentence = u"Joint special session of the harbour board, the library and the commission of parks. "_s;
const QString lowerThird =
    u"property bool lit: true; property real above: 0; "
    "Rectangle { anchors.fill: parent; color: 'black' } "
    "Loader { anchors.fill: parent; anchors.topMargin: canvas.above; active: canvas.lit; sourceComponent: LowerThird { "
    "clock: canvas.clock; stationLabel: canvas.station.label; "
    "program: canvas.news.programTitle; note: canvas.news.programNote; "
    "tagline: canvas.news.tagline; ticker: canvas.news.ticker } }"_s;

NewsStatus newsOf(const QString& program, const QString& note = {}, const QString& tagline = {})
{
    NewsStatus news;
    news.programTitle = program;
    news.programNote = note;
    news.tagline = tagline;
    news.ticker = {u"not shown here"_s};
    return news;
}

/** The lower third after it has slid in. */
struct Scene : BroadcastFixture
{
    explicit Scene(const NewsStatus& news, QSize size = {1920, 1080}) : BroadcastFixture(lowerThird, size, news)
    {
        if (!QTest::qWaitFor([this] { return slideProgress() == 1; }))
            QTest::qFail("the lower third does not appear", __FILE__, __LINE__);
        waitUntilIdle();
    }

    QQuickItem* third() const { return item("LowerThird"); }
    QQuickItem* panel() const { return third()->findChild<QQuickItem*>(u"panel"_s); }
    QRectF panelArea() const { return areaOnCanvas(panel()); }
    void setStation(const QString& label)
    {
        canvas->setProperty("station", QVariant::fromValue(TunerStation{u"5"_s, label, {}}));
        waitForFrame();
    }
    double slideProgress() const { return third()->property("slideProgress").toDouble(); }
};

bool isClose(QColor seen, QColor wanted, int tolerance = 2)
{
    return std::abs(seen.red() - wanted.red()) <= tolerance && std::abs(seen.green() - wanted.green()) <= tolerance &&
           std::abs(seen.blue() - wanted.blue()) <= tolerance;
}

QColor onBlack(QColor color, double opacity)
{
    return QColor::fromRgbF(color.redF() * float(opacity), color.greenF() * float(opacity),
                            color.blueF() * float(opacity));
}

} // namespace

/** The lower third, shown over the live picture for its first seconds: layout and animation. */
class LowerThirdTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lowerThirdHasDesignedGeometry_data();
    void lowerThirdHasDesignedGeometry();
    void textsHaveDesignedFonts();
    void missingTextsAreOmitted_data();
    void missingTextsAreOmitted();
    void lowerThirdSlidesInFromBottomEdge();
    void lowerThirdDisappearsAfterEightSecondsPermanently();
    void newLowerThirdAppearsAgain();
    void slideUsesEaseInOutCurve();
    void textIsNotElidedWhileItFits_data();
    void textIsNotElidedWhileItFits();
    void titleIsElidedAtLastLineThatFits_data();
    void titleIsElidedAtLastLineThatFits();
    void longTextsStayInsidePanel_data();
    void longTextsStayInsidePanel();
};

void LowerThirdTest::lowerThirdHasDesignedGeometry_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("720p") << QSize(1280, 720);
    QTest::newRow("1080p") << QSize(1920, 1080);
    QTest::newRow("2160p") << QSize(3840, 2160);
}

void LowerThirdTest::lowerThirdHasDesignedGeometry()
{
    QFETCH(QSize, size);
    Scene scene(newsOf(u"Harbour Council"_s, u"A note"_s), size);
    const QRectF panel = scene.panelArea();
    QCOMPARE(panel.left(), 70.0);
    QCOMPARE(panel.bottom(), 1080.0 - 24);
    const QRectF live = scene.areaOf(u"LIVE"_s);
    const QRectF badge = scene.areaOnCanvas(scene.text(u"LIVE"_s)->parentItem());
    QCOMPARE(badge.topLeft().x(), panel.left() + 24);
    QCOMPARE(badge.width(), live.width() + 2 * 18);
    QCOMPARE(badge.height(), live.height() + 2 * 8);
    const QRectF label = scene.areaOf(u"5 O'CLOCK NEWS"_s);
    const QRectF station = scene.areaOnCanvas(scene.text(u"5 O'CLOCK NEWS"_s)->parentItem());
    QCOMPARE(station.left(), badge.right() + 16);
    QCOMPARE(station.left(), label.left() - 18);
    QCOMPARE(station.right(), label.right() + 18);
    // As tall as the badge, which is one point taller than the label's own padding requires.
    QCOMPARE(station.top(), badge.top());
    QCOMPARE(station.bottom(), badge.bottom());
    QVERIFY(std::abs(station.top() - (label.top() - 10)) < 1.1 &&
            std::abs(station.bottom() - (label.bottom() + 10)) < 1.1);
    QCOMPARE(badge.top(), panel.top() + 24);
    const QRectF title = scene.areaOf(u"Harbour Council"_s);
    const QRectF detail = scene.areaOf(u"A note"_s);
    QCOMPARE(title.left(), panel.left() + 24);
    QCOMPARE(detail.left(), title.left());
    QVERIFY(title.top() > station.bottom());
    QCOMPARE(detail.top(), title.bottom() + 6);
    QCOMPARE(detail.bottom(), panel.bottom() - 24);

    const QImage picture = scene.currentPicture();
    const QColor ground = scene.at(picture, panel.left() + 8, panel.center().y());
    QVERIFY2(isClose(ground, onBlack(StationPalette::soot(), 0.88)), qPrintable(ground.name()));
    const QColor red = scene.at(picture, badge.left() + 6, badge.center().y());
    QVERIFY2(isClose(red, StationPalette::onAirRed()), qPrintable(red.name()));
    const QColor besides = scene.at(picture, panel.left() - 3, panel.center().y());
    QCOMPARE(besides, QColor(Qt::black));
}

void LowerThirdTest::textsHaveDesignedFonts()
{
    Scene scene(newsOf(u"Harbour Council"_s, u"A note"_s));
    struct Face
    {
        QString words;
        int size;
        int weight;
        double spacing;
        QColor color;
    };
    const QColor parchment = StationPalette::parchment();
    for (const Face& face : {Face{u"LIVE"_s, 30, QFont::Black, 4, Qt::white},
                             {u"5 O'CLOCK NEWS"_s, 26, QFont::DemiBold, 4, parchment},
                             {u"Harbour Council"_s, 40, QFont::Black, 0, parchment},
                             {u"A note"_s, 26, QFont::Normal, 0, StationPalette::faded(parchment, 0.75)}}) {
        QVERIFY2(scene.text(face.words), qPrintable(face.words));
        const QFont font = scene.fontOf(face.words);
        QCOMPARE(font.pixelSize(), face.size);
        QCOMPARE(int(font.weight()), face.weight);
        QCOMPARE(font.letterSpacing(), face.spacing);
        QCOMPARE(scene.colorOf(face.words).rgba(), face.color.rgba());
    }
}

void LowerThirdTest::missingTextsAreOmitted_data()
{
    QTest::addColumn<NewsStatus>("news");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("everything") << newsOf(u"A"_s, u"B"_s, u"C"_s) << QStringList{u"A"_s, u"B"_s};
    QTest::newRow("no note") << newsOf(u"A"_s, {}, u"C"_s) << QStringList{u"A"_s, u"C"_s};
    QTest::newRow("title only") << newsOf(u"A"_s) << QStringList{u"A"_s};
    QTest::newRow("nothing") << newsOf({}) << QStringList{u"5 O'Clock News"_s};
}

void LowerThirdTest::missingTextsAreOmitted()
{
    QFETCH(NewsStatus, news);
    QFETCH(QStringList, rows);
    Scene scene(news);
    QCOMPARE(TestScreen::words(scene.third()), QStringList({u"LIVE"_s, u"5 O'CLOCK NEWS"_s}) + rows);
    QCOMPARE(scene.areaOf(rows.constLast()).bottom(), scene.panelArea().bottom() - 24);
}

void LowerThirdTest::lowerThirdSlidesInFromBottomEdge()
{
    Scene scene(newsOf(u"A"_s));
    scene.canvas->setProperty("lit", false);
    scene.canvas->setProperty("lit", true);
    QVERIFY(scene.slideProgress() < 0.1);
    QVERIFY(scene.panelArea().top() > 1000);
    const QSignalSpy moves(scene.panel(), &QQuickItem::yChanged);
    QTRY_COMPARE(scene.slideProgress(), 1.0);
    QVERIFY(moves.count() > 1);
    QCOMPARE(scene.panelArea().bottom(), 1056.0);
    QCOMPARE(TestScreen::animationTimes(scene.third()), QList<int>{500});
}

void LowerThirdTest::lowerThirdDisappearsAfterEightSecondsPermanently()
{
    Scene scene(newsOf(u"A"_s));
    scene.clock.advance(7999ms);
    scene.waitUntilIdle();
    QCOMPARE(scene.slideProgress(), 1.0);
    const QSignalSpy fades(scene.panel(), &QQuickItem::opacityChanged);
    scene.clock.advance(1ms);
    QTRY_VERIFY(!scene.panel()->isVisible());
    QVERIFY(fades.count() > 1);
    QVERIFY(scene.panelArea().top() >= 1080);
    scene.setNews(newsOf(u"another programme"_s));
    scene.clock.advance(60s);
    scene.waitUntilIdle();
    QVERIFY(!scene.panel()->isVisible());
}

void LowerThirdTest::newLowerThirdAppearsAgain()
{
    Scene scene(newsOf(u"A"_s));
    scene.clock.advance(8s);
    QTRY_VERIFY(!scene.panel()->isVisible());
    scene.canvas->setProperty("lit", false);
    scene.canvas->setProperty("lit", true);
    QTRY_COMPARE(scene.slideProgress(), 1.0);
    scene.clock.advance(8s);
    QTRY_VERIFY(!scene.panel()->isVisible());
}

void LowerThirdTest::slideUsesEaseInOutCurve()
{
    const Scene scene(newsOf(u"A"_s));
    QCOMPARE(TestScreen::animationCurves(scene.third()), QList<QEasingCurve>{StationMotion::easeInOut()});
}

void LowerThirdTest::textIsNotElidedWhileItFits_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("station");
    QTest::newRow("title of three lines") << sentence.repeated(2) << u"5 O'Clock News"_s;
    QTest::newRow("title of twelve lines") << sentence.repeated(8) << u"5 O'Clock News"_s;
    QTest::newRow("station name of three lines") << u"A"_s << sentence.repeated(2);
    QTest::newRow("long title and long station name") << sentence.repeated(5) << sentence.repeated(5);
    QTest::newRow("Chinese") << u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(6)
                             << u"市議會定期會議"_s.repeated(10);
    QTest::newRow("line breaks") << u"one\ntwo\nthree\nfour\nfive"_s << u"A"_s;
}

void LowerThirdTest::textIsNotElidedWhileItFits()
{
    QFETCH(const QString, title);
    QFETCH(const QString, station);
    Scene scene(newsOf(title, u"A note"_s));
    scene.setStation(station);
    QVERIFY(!scene.text(title)->property("truncated").toBool());
    QVERIFY(!scene.text(station.toUpper())->property("truncated").toBool());
    QVERIFY(scene.panelArea().top() >= 23.5);
    QCOMPARE(scene.panelArea().bottom(), 1056.0);
}

void LowerThirdTest::titleIsElidedAtLastLineThatFits_data()
{
    QTest::addColumn<QString>("note");
    QTest::addColumn<double>("above"); // points occupied by an item above it
    QTest::newRow("with a note") << u"A note"_s << 0.0;
    QTest::newRow("without a note") << QString() << 0.0;
    QTest::newRow("below the tuner strip") << u"A note"_s << 92.0;
}

void LowerThirdTest::titleIsElidedAtLastLineThatFits()
{
    QFETCH(const QString, note);
    QFETCH(const double, above);
    Scene scene(newsOf(sentence.repeated(50), note));
    scene.canvas->setProperty("above", above);
    scene.waitForFrame();
    const double top = scene.panelArea().top();
    // One more line of the title would exceed the space that must stay free.
    QVERIFY2(top >= above + 23.5 && top < above + 24 + 49, qPrintable(QString::number(top)));
    QCOMPARE(scene.panelArea().bottom(), 1056.0);
}

void LowerThirdTest::longTextsStayInsidePanel_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("300 characters") << u"Joint special session of the harbour board "_s.repeated(7).left(300);
    QTest::newRow("one word") << QString(300, u'W');
    QTest::newRow("Chinese") << u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(15).left(300);
    QTest::newRow("Arabic") << u"اجتماع مجلس المدينة "_s.repeated(15);
    QTest::newRow("line breaks") << u"one\ntwo\nthree\nfour"_s;
    QTest::newRow("emoji") << u"\U0001F6A2\U0001F4FC "_s.repeated(60);
    QTest::newRow("a million characters") << QString(1'000'000, u'W');
}

void LowerThirdTest::longTextsStayInsidePanel()
{
    QFETCH(QString, text);
    Scene scene(newsOf(text, text));
    scene.setStation(text);
    const QRectF panel = scene.panelArea();
    QVERIFY2(panel.width() <= 1200 && panel.top() >= 23.5,
             qPrintable(u"%1 by %2"_s.arg(panel.width()).arg(panel.height())));
    QCOMPARE(panel.bottom(), 1056.0);
    const QRectF inside = panel.marginsRemoved({24, 24, 24, 24});
    QRectF above;
    const auto texts = TestScreen::texts(scene.third());
    for (const QQuickItem* item : texts) {
        const QRectF area = scene.areaOnCanvas(item);
        QVERIFY2(inside.contains(area), qPrintable(item->property("text").toString()));
        QVERIFY(item->property("contentHeight").toDouble() <= item->height() + 0.5);
        // When Qt elides joined Arabic letters, the text can be up to one letter too wide.
        QVERIFY(item->property("contentWidth").toDouble() <= item->width() + 24);
        QVERIFY(!area.intersects(above));
        above = area;
    }
    QCOMPARE(texts.constLast()->property("lineCount").toInt(), 1);
}

QUILLMERE_TEST(LowerThirdTest, QGuiApplication)

} // namespace quillmere

#include "LowerThirdTest.moc"
