#include "BroadcastFixture.h"
#include "Rows.h"
#include "StationMotion.h"
#include "StationPalette.h"
#include "TestMain.h"
#include "Typography.h"

#include <QSignalSpy>

namespace quillmere {

namespace {

const QString sentence = u"Joint special session of the harbour board, the library and the commission of parks. "_s;

NewsStatus newsOf(const QString& title, const QString& note = {}, const QString& tagline = {})
{
    NewsStatus news = programme(title, note);
    news.tagline = tagline;
    news.ticker = {u"not shown here"_s};
    return news;
}

struct Scene : LowerThirdFixture
{
    using LowerThirdFixture::LowerThirdFixture;

    QRectF panelArea() const { return areaOnCanvas(panel()); }
    void recreate()
    {
        canvas->setProperty("lit", false);
        canvas->setProperty("lit", true);
    }
};

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
    void lowerThirdHasDesignedGeometry_data() { rowsOfDisplaySizes(); }
    void lowerThirdHasDesignedGeometry()
    {
        QFETCH(QSize, size);
        Scene scene(newsOf(u"Harbour Council"_s, u"A note"_s), size);
        const QRectF panel = scene.panelArea();
        QCOMPARE(panel.left(), 70.0);
        QCOMPARE(panel.bottom(), 1080.0 - 24);
        const QRectF live = scene.areaOf(u"LIVE"_s);
        const QRectF badge = scene.areaOnCanvas(scene.text(u"LIVE"_s)->parentItem());
        QCOMPARE(badge, QRectF(panel.left() + 24, panel.top() + 24, live.width() + 2 * 18, live.height() + 2 * 8));
        const QRectF label = scene.areaOf(u"5 O'CLOCK NEWS"_s);
        const QRectF station = scene.areaOnCanvas(scene.text(u"5 O'CLOCK NEWS"_s)->parentItem());
        // As tall as the badge, which is one point taller than the label's own padding requires.
        QCOMPARE(station, QRectF(badge.right() + 16, badge.top(), label.width() + 2 * 18, badge.height()));
        QCOMPARE(station.left(), label.left() - 18);
        QVERIFY(std::abs(station.top() - (label.top() - 10)) < 1.1 &&
                std::abs(station.bottom() - (label.bottom() + 10)) < 1.1);
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
        QCOMPARE(scene.at(picture, panel.left() - 3, panel.center().y()), QColor(Qt::black));
    }

    void textsHaveDesignedFonts()
    {
        Scene scene(newsOf(u"Harbour Council"_s, u"A note"_s));
        const QColor parchment = StationPalette::parchment();
        scene.verifyLook(u"LIVE"_s, Typography::standard(30, QFont::Black, 4), Qt::white);
        scene.verifyLook(u"5 O'CLOCK NEWS"_s, Typography::standard(26, QFont::DemiBold, 4), parchment);
        scene.verifyLook(u"Harbour Council"_s, Typography::standard(40, QFont::Black), parchment);
        scene.verifyLook(u"A note"_s, Typography::standard(26), StationPalette::faded(parchment, 0.75));
    }

    void missingTextsAreOmitted_data()
    {
        rows<NewsStatus, QStringList>({"news", "rows"},
                                      {{"everything", newsOf(u"A"_s, u"B"_s, u"C"_s), {u"A"_s, u"B"_s}},
                                       {"no note", newsOf(u"A"_s, {}, u"C"_s), {u"A"_s, u"C"_s}},
                                       {"title only", newsOf(u"A"_s), {u"A"_s}},
                                       {"nothing", newsOf({}), {u"5 O'Clock News"_s}}});
    }

    void missingTextsAreOmitted()
    {
        QFETCH(NewsStatus, news);
        QFETCH(QStringList, rows);
        Scene scene(news);
        QCOMPARE(TestScreen::words(scene.third()), QStringList({u"LIVE"_s, u"5 O'CLOCK NEWS"_s}) + rows);
        QCOMPARE(scene.areaOf(rows.constLast()).bottom(), scene.panelArea().bottom() - 24);
    }

    void lowerThirdSlidesInFromBottomEdge()
    {
        Scene scene(newsOf(u"A"_s));
        scene.recreate();
        QVERIFY(scene.slideProgress() < 0.1);
        QVERIFY(scene.panelArea().top() > 1000);
        const QSignalSpy moves(scene.panel(), &QQuickItem::yChanged);
        QTRY_COMPARE(scene.slideProgress(), 1.0);
        QVERIFY(moves.count() > 1);
        QCOMPARE(scene.panelArea().bottom(), 1056.0);
        QCOMPARE(TestScreen::animationTimes(scene.third()), QList<int>{500});
        QCOMPARE(TestScreen::animationCurves(scene.third()), QList<QEasingCurve>{StationMotion::easeInOut()});
    }

    void lowerThirdDisappearsAfterEightSecondsUntilCreatedAgain()
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
        scene.recreate();
        QTRY_COMPARE(scene.slideProgress(), 1.0);
        scene.clock.advance(8s);
        QTRY_VERIFY(!scene.panel()->isVisible());
    }

    void textIsNotElidedWhileItFits_data()
    {
        const QString name = u"5 O'Clock News"_s;
        rows<QString, QString>(
            {"title", "station"},
            {{"title of three lines", sentence.repeated(2), name},
             {"title of twelve lines", sentence.repeated(8), name},
             {"station name of three lines", u"A"_s, sentence.repeated(2)},
             {"long title and long station name", sentence.repeated(5), sentence.repeated(5)},
             {"Chinese", u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(6), u"市議會定期會議"_s.repeated(10)},
             {"line breaks", u"one\ntwo\nthree\nfour\nfive"_s, u"A"_s}});
    }

    void textIsNotElidedWhileItFits()
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

    void titleIsElidedAtLastLineThatFits_data()
    {
        // `above` is the height in points of an item above it.
        rows<QString, double>(
            {"note", "above"},
            {{"with a note", u"A note"_s, 0}, {"without a note", {}, 0}, {"below the tuner strip", u"A note"_s, 92}});
    }

    void titleIsElidedAtLastLineThatFits()
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

    void longTextsStayInsidePanel_data()
    {
        rows<QString>({"text"},
                      {{"300 characters", u"Joint special session of the harbour board "_s.repeated(7).left(300)},
                       {"one word", QString(300, u'W')},
                       {"Chinese", u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(15).left(300)},
                       {"Arabic", u"اجتماع مجلس المدينة "_s.repeated(15)},
                       {"line breaks", u"one\ntwo\nthree\nfour"_s},
                       {"emoji", u"\U0001F6A2\U0001F4FC "_s.repeated(60)},
                       {"a million characters", QString(1'000'000, u'W')}});
    }

    void longTextsStayInsidePanel()
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
};

QUILLMERE_TEST(LowerThirdTest, QGuiApplication)

} // namespace quillmere

#include "LowerThirdTest.moc"
