#include "FrontFixture.h"
#include "Rows.h"
#include "TestMain.h"

namespace quillmere {

/** The layout of the front screen at every size and with every text. */
class LandingLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void doorsHaveDesignedGeometry_data() { rowsOfDisplaySizes(); }

    void doorsHaveDesignedGeometry()
    {
        QFETCH(QSize, size);
        FrontFixture fixture(size);
        const double factor = size.width() / 1920.0;
        const QRectF news = TestScreen::area(fixture.newsDoor());
        const QRectF store = TestScreen::area(fixture.storeDoor());
        QCOMPARE(news.size() / factor, QSizeF(620, 620));
        QCOMPARE(store.size() / factor, QSizeF(620, 620));
        QCOMPARE((store.left() - news.right()) / factor, 64.0);
        QCOMPARE(news.top(), store.top());
        QVERIFY(std::abs((news.left() + store.right()) / 2 - size.width() / 2.0) < 1);

        // The unfocused shop entry: colours of its outline and of its fill, next to its edges.
        const QImage picture = fixture.picture();
        const auto at = [&](double x, double y) {
            return picture.pixelColor(int(store.left() + x * factor), int(store.top() + y * factor));
        };
        QVERIFY(at(310, 1.6).red() > 80);
        QVERIFY(at(1.6, 310).red() > 80);
        QVERIFY(at(310, 6).red() < 25);
        QVERIFY(at(6, 310).red() < 25);
        QVERIFY(at(1, 1).red() < 25);
    }

    void longSubtitleShrinksTelevisionThenIsElided_data()
    {
        // "fitting": how many repetitions fit
        rows<QString, int>({"words", "fitting"}, {{"Latin", u"Joint session of the board. "_s, 11},
                                                  {"Arabic", u"اجتماع مجلس المدينة حول الميزانية "_s, 9},
                                                  {"Chinese", u"市議會定期會議與港口委員會"_s, 11}});
    }

    void longSubtitleShrinksTelevisionThenIsElided()
    {
        QFETCH(const QString, words);
        QFETCH(const int, fitting);
        FrontFixture fixture;
        const auto setTitle = [&](const QString& title) {
            fixture.setNews(true, title);
            fixture.waitForFrame();
            const auto texts = TestScreen::texts(TestScreen::first(fixture.newsDoor(), "DoorSubtitle"));
            return texts.constFirst();
        };
        const auto television = [&] { return fixture.newsDoor()->findChild<QQuickItem*>(u"television"_s)->height(); };
        const double ordinary = (setTitle(u"Harbour Council"_s), television());
        setTitle(words.repeated(3));
        QCOMPARE(television(), ordinary);
        // More than three lines, none of them elided.
        const QQuickItem* const longer = setTitle(words.repeated(fitting));
        QVERIFY(longer->property("lineCount").toInt() > 3);
        QVERIFY(!longer->property("truncated").toBool());
        QVERIFY(television() >= 110 && television() < ordinary);
        // Elided at the last line that fits above the television.
        const QQuickItem* const endless = setTitle(words.repeated(40).left(900));
        QVERIFY(endless->property("truncated").toBool());
        QVERIFY(endless->property("lineCount").toInt() >= 7);
        QVERIFY(television() >= 110 && television() < 110 + 27);
    }

    void textsStayInsideTheirDoorsAndDoNotOverlap_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("title");
        const QList<QPair<const char*, QString>> titles{
            {"no title", {}},
            {"plain", u"Harbour Council: regular session"_s},
            {"300 characters",
             u"Joint special session of the harbour board and the water commission "_s.repeated(5).left(300)},
            {"one word of 300 characters", QString(300, u'W')},
            {"Chinese", u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(15).left(300)},
            {"Arabic", u"اجتماع مجلس المدينة "_s.repeated(15)},
            {"line breaks", u"one\ntwo\nthree\nfour\nfive\nsix\nseven\neight"_s},
            {"emoji", u"\U0001F6A2\U0001F4FC "_s.repeated(60)},
        };
        for (const QSize size : {QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
            for (const auto& [name, title] : titles)
                QTest::addRow("%s at %d", name, size.width()) << size << title;
        }
    }

    void textsStayInsideTheirDoorsAndDoNotOverlap()
    {
        QFETCH(QSize, size);
        QFETCH(QString, title);
        FrontFixture fixture(size);
        fixture.store->setLastError(u"The hub answered "_s + title);
        for (const bool live : {true, false}) {
            fixture.setNews(live, title, title);
            fixture.waitForFrame();
            const double factor = size.width() / 1920.0;
            for (QQuickItem* door : {fixture.newsDoor(), fixture.storeDoor()}) {
                const QRectF frame = TestScreen::area(TestScreen::first(door, "CardPlate"))
                                         .marginsRemoved(QMarginsF(24, 24, 24, 24) * factor);
                QRectF above;
                for (QQuickItem* text : TestScreen::texts(door)) {
                    const QRectF area = TestScreen::area(text);
                    QVERIFY2(frame.contains(area), qPrintable(text->property("text").toString()));
                    QVERIFY(text->property("contentHeight").toDouble() <= text->height() + 0.5);
                    QVERIFY(text->property("contentWidth").toDouble() <= text->width() + 0.5);
                    QVERIFY(!above.intersects(area));
                    above = area;
                }
            }
            const QRectF windowArea({0, 0}, QSizeF(size));
            for (QQuickItem* text : TestScreen::texts(fixture.view)) {
                QVERIFY(windowArea.contains(TestScreen::area(text)));
                const double width = text->property("contentWidth").toDouble();
                // When Qt elides joined Arabic letters, the text can be up to one letter too wide.
                QVERIFY2(width <= text->width() + 24, qPrintable(u"%1 of %2"_s.arg(width).arg(text->width())));
            }
        }
    }
};

QUILLMERE_TEST(LandingLayoutTest, QGuiApplication)

} // namespace quillmere

#include "LandingLayoutTest.moc"
