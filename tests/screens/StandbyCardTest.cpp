#include "BroadcastFixture.h"
#include "Rows.h"
#include "StationPalette.h"
#include "TestMain.h"
#include "Typography.h"

#include <QAccessible>

namespace quillmere {

namespace {

const QString heading = u"5 O'CLOCK NEWS"_s;
const QString checkingLine = u"CHECKING THE TOWER…"_s;
const QString watchingLine = u"TRANSMISSION WILL RESUME — THIS SET IS WATCHING THE TOWER"_s;
const QString station = u"QUILLMERE TELEVISION"_s;
constexpr double stripBottom = 92; // of the tuner strip, which may cover the top of the card
constexpr double margin = 40;      // above and below the tallest card
const QString next = u"2025-01-02T13:01:01Z"_s;
const QString sentence = u"Joint special session of the harbour board, the library and the commission of parks. "_s;

struct Scene : StandbyFixture
{
    using StandbyFixture::StandbyFixture;

    QRectF cardArea() const { return areaOnCanvas(card()); }
    QRectF tickerArea() const { return areaOnCanvas(item("TickerCrawl")); }
    /** The card's texts, from top to bottom. */
    QStringList words() const { return TestScreen::words(standby()); }
};

} // namespace

/** The standby card, shown instead of the picture when nothing is on air: layout with every kind of text. */
class StandbyCardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cardHasDesignedGeometry_data() { rowsOfDisplaySizes(); }
    void cardHasDesignedGeometry()
    {
        QFETCH(QSize, size);
        Scene scene(programme(u"Harbour Council"_s, u"A note"_s), size);
        const QRectF card = scene.cardArea();
        const QRectF ticker = scene.tickerArea();
        QVERIFY(std::abs(card.center().x() - 960) <= 0.5);
        QVERIFY(std::abs(card.center().y() - ticker.top() / 2) <= 0.5);
        QVERIFY(card.width() <= 1500);
        const QRectF title = scene.areaOf(heading);
        QCOMPARE(title.top(), card.top() + 56);
        // The letter spacing after the last letter belongs to the text but is not visible.
        QVERIFY(std::abs(title.center().x() - 4 - card.center().x()) <= 0.5);
        QCOMPARE(card.width(), title.width() + 2 * 90);

        const QRectF rule = scene.areaOnCanvas(scene.rule());
        QCOMPARE(rule.size(), QSizeF(420, 3));
        QCOMPARE(rule.top(), title.bottom() + 24);
        double above = rule.bottom();
        for (const QString& words :
             {u"Harbour Council"_s, u"A note"_s, watchingLine, station, u"no broadcast scheduled"_s}) {
            const QRectF area = scene.areaOf(words);
            QVERIFY2(std::abs(area.top() - above - 24) < 0.01, qPrintable(words));
            QVERIFY2(std::abs(area.center().x() - card.center().x()) < 16, qPrintable(words));
            above = area.bottom();
        }
        QVERIFY(std::abs(above + 56 - card.bottom()) < 0.01);

        const QRectF disc = scene.areaOnCanvas(scene.statusDot());
        QCOMPARE(disc.size(), QSizeF(14, 14));
        QVERIFY(disc.right() < scene.areaOf(watchingLine).left());
        QVERIFY(std::abs(disc.center().y() - scene.areaOf(watchingLine).center().y()) < 1);
    }

    void textsAndPlateHaveDesignedLook()
    {
        Scene scene(programme(u"Harbour Council"_s, u"A note"_s));
        const QColor parchment = StationPalette::parchment();
        scene.verifyLook(heading, Typography::standard(92, QFont::Black, 8), parchment);
        scene.verifyLook(u"Harbour Council"_s, Typography::standard(30), StationPalette::faded(parchment, 0.9));
        scene.verifyLook(u"A note"_s, Typography::standard(24), StationPalette::faded(parchment, 0.6));
        scene.verifyLook(watchingLine, Typography::standard(21, QFont::DemiBold, 3),
                         StationPalette::faded(parchment, 0.7));
        scene.verifyLook(station, Typography::monospaced(28, QFont::DemiBold, 28 * 0.18), StationPalette::olive());

        const QImage picture = scene.currentPicture();
        const QRectF card = scene.cardArea();
        const double y = card.top() + 20;
        const auto at = [&](double x) { return scene.at(picture, x, y); };
        // The plate lets three per cent of the colour bars through.
        QVERIFY2(isClose(at(card.left() + 12), StationPalette::soot(), 6), qPrintable(at(card.left() + 12).name()));
        for (const double x : {card.left(), card.left() + 1})
            QVERIFY2(at(x).red() > 60 && at(x).red() < 90, qPrintable(at(x).name()));
        QVERIFY(isClose(at(card.left() + 2), at(card.left() + 12)));
        // Left of the card is the yellow bar, whose red value is 192 without a shadow.
        const double middle = card.center().y();
        const auto beside = [&](double distance) { return scene.at(picture, card.left() - distance, middle).red(); };
        QVERIFY2(beside(2) > 135 && beside(2) < 160, qPrintable(QString::number(beside(2))));
        QVERIFY(beside(15) > beside(2) && beside(30) > beside(15) && beside(30) < 190);
        QVERIFY(beside(62) >= 191);
    }

    void statusLineShowsCheckingOrWatching()
    {
        Scene scene(programme({}));
        QVERIFY(scene.text(watchingLine) && !scene.text(checkingLine));
        const auto discColor = [&] {
            const QPointF centre = scene.areaOnCanvas(scene.statusDot()).center();
            return scene.at(scene.currentPicture(), centre.x(), centre.y());
        };
        QVERIFY(isClose(discColor(), StationPalette::brick()));
        scene.canvas->setProperty("checking", true);
        scene.waitForFrame();
        QVERIFY(scene.text(checkingLine) && !scene.text(watchingLine));
        QVERIFY(isClose(discColor(), StationPalette::olive()));
    }

    void missingTextsAreOmitted_data()
    {
        rows<QString, QString, QStringList>({"title", "note", "rows"},
                                            {{"title and note", u"A"_s, u"B"_s, {u"A"_s, u"B"_s}},
                                             {"no note", u"A"_s, {}, {u"A"_s}},
                                             {"no title", {}, u"B"_s, {u"B"_s}},
                                             {"neither", {}, {}, {}}});
    }

    void missingTextsAreOmitted()
    {
        QFETCH(QString, title);
        QFETCH(QString, note);
        QFETCH(QStringList, rows);
        Scene scene(programme(title, note));
        QCOMPARE(scene.words(),
                 QStringList{heading} + rows + QStringList({watchingLine, station, u"no broadcast scheduled"_s}));
        double above = scene.areaOnCanvas(scene.rule()).bottom();
        for (const QString& words : rows + QStringList{watchingLine}) {
            QVERIFY2(std::abs(scene.areaOf(words).top() - above - 24) < 0.01, qPrintable(words));
            above = scene.areaOf(words).bottom();
        }
        // Texts that arrive later are shown.
        scene.setNews(programme(u"later"_s, u"later still"_s));
        QVERIFY(scene.text(u"later"_s) && scene.text(u"later still"_s));
    }

    void cardCountsDownToNextBroadcast()
    {
        Scene scene(programme({}, {}, u"2025-01-02T13:01:01Z"_s, u"Tonight at one"_s));
        QCOMPARE(scene.words().mid(3), QStringList({u"1d 01:01:01"_s, u"Tonight at one"_s}));
        scene.clock.advance(1s);
        QCOMPARE(scene.words().at(3), u"1d 01:01:00"_s);
        scene.setNews(programme({}, {}, u"2025-01-01 17:00"_s, u"Tonight at one"_s));
        QCOMPARE(scene.words().mid(3), QStringList{u"no broadcast scheduled"_s});
    }

    void tickerFillsBottomOfDisplay_data()
    {
        rows<QSize>({"size"}, {{"wide", {1920, 1080}}, {"wider", {2560, 1080}}, {"taller", {1024, 768}}});
    }

    void tickerFillsBottomOfDisplay()
    {
        QFETCH(QSize, size);
        Scene scene(programme({}), size);
        const QRectF ticker = TestScreen::area(scene.item("TickerCrawl"));
        QVERIFY(std::abs(ticker.left()) < 0.01 && std::abs(ticker.right() - size.width()) < 0.01);
        QVERIFY(std::abs(ticker.bottom() - size.height()) < 0.01);
        const QRectF bars = TestScreen::area(scene.item("ColorBars"));
        QVERIFY(bars.marginsAdded({1, 1, 1, 1}).contains(QRectF({}, QSizeF(size))));
    }

    void tickerHasAccessibleText()
    {
        NewsStatus news;
        news.ticker = {u"One"_s, u"Two"_s};
        Scene scene(news);
        QAccessible::setActive(true);
        QAccessibleInterface* const ticker = QAccessible::queryAccessibleInterface(scene.item("TickerCrawl"));
        QVERIFY(ticker);
        QCOMPARE(ticker->role(), QAccessible::StaticText);
        QCOMPARE(ticker->text(QAccessible::Name), u"One   ·   Two"_s);
    }

    void textIsNotElidedWhileItFits_data()
    {
        const QString a = u"A"_s;
        const QString arabic = u"اجتماع مجلس المدينة "_s;
        rows<QString, QString, QString>(
            {"title", "note", "label"},
            {{"long title", sentence.repeated(8), a, a},
             {"long note", a, sentence.repeated(15), a},
             {"long label", a, a, sentence.repeated(12)},
             {"all three", sentence.repeated(4), sentence.repeated(4), sentence.repeated(4)},
             {"title only", sentence.repeated(10), {}, {}},
             {"line breaks", u"one\ntwo\nthree\n"_s, u"one\n\ntwo"_s, a},
             {"Chinese", u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(8), u"市議會定期會議"_s.repeated(20), a},
             {"Arabic", arabic.repeated(12), arabic.repeated(20), a}});
    }

    void textIsNotElidedWhileItFits()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, note);
        QFETCH(const QString, label);
        const Scene scene(programme(title, note, next, label));
        for (const QString& words : {title, note, label}) {
            if (words.isEmpty())
                continue;
            QVERIFY2(scene.text(words), qPrintable(words));
            QVERIFY2(!scene.text(words)->property("truncated").toBool(), qPrintable(words));
        }
        QVERIFY(scene.cardArea().top() >= margin - 0.5);
        QVERIFY(scene.cardArea().bottom() <= scene.tickerArea().top() - margin + 0.5);
    }

    void countdownHasPriorityOverTitleAndTitleOverNote()
    {
        const QString label = u"The label. "_s.repeated(30);
        const QString title = u"The title. "_s.repeated(30);
        const QString note = u"The note. "_s.repeated(300);
        const Scene scene(programme(title, note, next, label));
        QVERIFY(!scene.text(label)->property("truncated").toBool());
        QVERIFY(!scene.text(title)->property("truncated").toBool());
        QVERIFY(scene.text(note)->property("truncated").toBool());
        QVERIFY(scene.text(note)->property("lineCount").toInt() > 4);

        // One endless text does not displace the others.
        const QString endless = sentence.repeated(50);
        const Scene crowded(programme(endless, endless + u'2', next, endless + u'3'));
        QCOMPARE(crowded.text(endless)->property("lineCount").toInt(), 2);
        QCOMPARE(crowded.text(endless + u'2')->property("lineCount").toInt(), 4);
        QVERIFY(crowded.text(endless + u'3')->property("lineCount").toInt() > 5);
        QCOMPARE(crowded.text(u"1d 01:01:01"_s)->property("truncated").toBool(), false);
    }

    void textIsElidedAtLastLineThatFits_data()
    {
        const QString a = u"A"_s;
        const QString endless = sentence.repeated(58);
        // `line` is the height of a line of the elided text, in points.
        rows<QString, QString, QString, double>(
            {"title", "note", "label", "line"},
            {{"title", endless, {}, a, 37},
             {"note", a, endless, {}, 30},
             {"label", {}, {}, endless, 30},
             {"all", endless, endless, endless, 30},
             {"Chinese", {}, u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(100), a, 40}});
    }

    void textIsElidedAtLastLineThatFits()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, note);
        QFETCH(const QString, label);
        QFETCH(const double, line);
        Scene scene(programme(title, note, next, label));
        for (const bool checking : {false, true}) {
            scene.canvas->setProperty("checking", checking);
            scene.waitForFrame();
            // One more line would make the card too tall.
            const double most = scene.tickerArea().top() - 2 * margin;
            QVERIFY2(scene.cardArea().height() <= most + 0.5 && scene.cardArea().height() > most - line,
                     qPrintable(u"%1 of %2"_s.arg(scene.cardArea().height()).arg(most)));
        }
    }

    void longTextsStayInsideCard_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QSize>("size");
        const QList<QPair<const char*, QString>> texts{
            {"300 characters", u"Joint special session of the harbour board "_s.repeated(7).left(300)},
            {"one word", QString(300, u'W')},
            {"Chinese", u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(15).left(300)},
            {"Arabic", u"اجتماع مجلس المدينة "_s.repeated(15)},
            {"more Arabic", u"اجتماع مجلس المدينة "_s.repeated(60)},
            {"line breaks", u"one\ntwo\nthree\nfour\nfive\nsix"_s},
            {"emoji", u"\U0001F6A2\U0001F4FC "_s.repeated(60)},
            {"a million characters", QString(1'000'000, u'W')},
        };
        for (const auto& [name, text] : texts) {
            for (const QSize size : {QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)})
                QTest::addRow("%s at %d", name, size.width()) << text << size;
        }
    }

    void longTextsStayInsideCard()
    {
        QFETCH(QString, text);
        QFETCH(QSize, size);
        Scene scene(programme(text, text, u"2025-01-02T13:01:01Z"_s, text), size);
        const QRectF card = scene.cardArea();
        QVERIFY2(card.width() <= 1500, qPrintable(QString::number(card.width())));
        // The strip may cover the empty edge of the card, but not its heading.
        QVERIFY2(scene.areaOf(heading).top() > stripBottom, qPrintable(QString::number(card.top())));
        QVERIFY(card.top() > margin - 1);
        QVERIFY(card.bottom() < scene.tickerArea().top() - margin + 1);
        QVERIFY(scene.text(watchingLine) && scene.text(station) && scene.text(u"1d 01:01:01"_s));
        const QRectF inside = card.marginsRemoved({90, 55.99, 90, 55.99});
        QRectF above;
        const auto texts = TestScreen::texts(scene.standby());
        for (const QQuickItem* item : texts) {
            const QRectF area = scene.areaOnCanvas(item);
            QVERIFY(area.top() >= inside.top() && area.bottom() <= inside.bottom());
            QVERIFY(item->property("contentHeight").toDouble() <= item->height() + 0.5);
            // When Qt elides joined Arabic letters, the text can be up to one letter too wide.
            QVERIFY(item->property("contentWidth").toDouble() <= inside.width() + 24);
            QVERIFY(!area.intersects(above));
            above = area;
        }
    }
};

QUILLMERE_TEST(StandbyCardTest, QGuiApplication)

} // namespace quillmere

#include "StandbyCardTest.moc"
