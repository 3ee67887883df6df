#include "BroadcastFixture.h"
#include "Rows.h"
#include "StationPalette.h"
#include "TestMain.h"
#include "TunerList.h"

#include <QFontMetricsF>

#include <cmath>

namespace quillmere {

namespace {

const QString longName =
    u"The Joint Committee on Harbours, Ferries, Footbridges, Fog Horns and Lanterns. "_s.repeated(4);

NewsStatus newsOf(const QMap<QString, QString>& channels)
{
    NewsStatus news;
    for (auto channel = channels.cbegin(); channel != channels.cend(); ++channel)
        news.channels.insert(channel.key(), {channel.value(), u"/live/"_s + channel.key()});
    return news;
}

NewsStatus newsOf(int channels)
{
    QMap<QString, QString> labels;
    for (int number = 6; labels.size() < channels; ++number)
        labels.insert(QString::number(number), u"Committee room %1"_s.arg(number));
    return newsOf(labels);
}

struct Scene : TunerStripFixture
{
    using TunerStripFixture::TunerStripFixture;

    /** The text item of the number or the label of a button. */
    static QQuickItem* partOf(const QQuickItem* button, const QString& name)
    {
        return first(button->findChild<QQuickItem*>(name), "StationText");
    }

    QString picked() const { return canvas->property("picked").toString(); }
    void setStations(const QList<TunerStation>& stations)
    {
        canvas->setProperty("stations", QVariant::fromValue(stations));
        waitUntilIdle();
    }
    void setCurrent(const TunerStation& station)
    {
        canvas->setProperty("station", QVariant::fromValue(station));
        waitUntilIdle();
    }
};

} // namespace

/** The tuner strip: appearance and focus movement. */
class TunerStripTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stripHasDesignedGeometry_data() { rowsOfDisplaySizes(); }
    void stripHasDesignedGeometry()
    {
        QFETCH(QSize, size);
        Scene scene(newsOf(2), size);
        const QRectF strip = scene.areaOnCanvas(scene.strip());
        QCOMPARE(strip.topLeft(), QPointF(0, 0));
        QCOMPARE(strip.width(), 1920.0);
        const QRectF caption = scene.areaOf(u"CHANNELS"_s);
        QCOMPARE(caption.left(), 50.0);
        QVERIFY(std::abs(caption.center().y() - strip.center().y()) < 1);
        QRectF before = caption;
        const auto buttons = scene.buttons();
        QCOMPARE(buttons.size(), 3);
        for (QQuickItem* button : buttons) {
            const QRectF area = scene.areaOnCanvas(button);
            QCOMPARE(area.left(), before.right() + 18);
            QCOMPARE(area.top(), 14.0);
            QCOMPARE(area.bottom(), strip.bottom() - 14);
            // Relative to the plate, which is scaled up when focused.
            QQuickItem* const plate = TestScreen::first(button, "StationPlate");
            const auto areaOnPlate = [&](const QString& part) {
                const QQuickItem* const text = scene.partOf(button, part);
                return text->mapRectToItem(plate, QRectF(QPointF(), text->size()));
            };
            const QRectF number = areaOnPlate(u"number"_s);
            const QRectF label = areaOnPlate(u"label"_s);
            QCOMPARE(label.left(), number.right() + 10);
            QVERIFY(number.left() >= 20 && label.right() <= area.width() - 20);
            QVERIFY(number.top() >= 10 && number.bottom() <= area.height() - 10);
            for (const QString& part : {u"number"_s, u"label"_s})
                QVERIFY(scene.partOf(button, part)->property("contentWidth").toDouble() <= areaOnPlate(part).width());
            before = area;
        }
    }

    void stripFillsTopOfDisplay_data()
    {
        rows<QSize>({"size"}, {{"wide", {1920, 1080}}, {"wider", {2560, 1080}}, {"taller", {1024, 768}}});
    }

    void stripFillsTopOfDisplay()
    {
        QFETCH(QSize, size);
        Scene scene(newsOf(1), size);
        const QImage picture = scene.currentPicture();
        const int bottom = int(scene.strip()->height() * scene.factor());
        const QColor background(34, 32, 28); // soot with an opacity of 0.9 over black
        for (const QPoint point :
             {QPoint(0, 0), QPoint(size.width() - 1, 0), QPoint(0, bottom - 2), QPoint(size.width() - 1, bottom - 2)})
            QVERIFY2(isClose(picture.pixelColor(point), background), qPrintable(picture.pixelColor(point).name()));
        QCOMPARE(picture.pixelColor(0, bottom + 2), QColor(Qt::black));
        QVERIFY(std::abs(TestScreen::area(scene.text(u"CHANNELS"_s)).left() - 50 * scene.factor()) < 1);
        scene.press(Qt::Key_Right);
        QCOMPARE(scene.focusedName(), u"6 Committee room 6"_s);
        QVERIFY(QRectF(0, 0, size.width(), bottom).contains(TestScreen::area(scene.focused())));
    }

    void textsHaveDesignedFontsAndNumberOfCurrentStationIsRed()
    {
        Scene scene(newsOf(2));
        QCOMPARE(scene.fontOf(u"CHANNELS"_s).pixelSize(), 20);
        QCOMPARE(scene.colorOf(u"CHANNELS"_s).rgba(), StationPalette::faded(StationPalette::parchment(), 0.6).rgba());
        QCOMPARE(scene.fontOf(u"7"_s).pixelSize(), 26);
        QCOMPARE(scene.fontOf(u"7"_s).weight(), QFont::Black);
        QCOMPARE(scene.fontOf(u"Committee room 7"_s).pixelSize(), 24);
        QCOMPARE(scene.fontOf(u"Committee room 7"_s).weight(), QFont::Normal);
        // Move the focus away, because the focused button has other colours.
        scene.press({Qt::Key_Right, Qt::Key_Right});
        scene.waitUntilIdle();
        QCOMPARE(scene.colorOf(u"5"_s).rgba(), StationPalette::onAirRed().rgba());
        QCOMPARE(scene.colorOf(u"6"_s).rgba(), StationPalette::parchment().rgba());
        const QColor label = StationPalette::faded(StationPalette::parchment(), 0.85);
        QCOMPARE(scene.colorOf(u"5 O'Clock News"_s).rgba(), label.rgba());
        QCOMPARE(scene.colorOf(u"Committee room 6"_s).rgba(), label.rgba());
        scene.setCurrent({u"6"_s, u"Committee room 6"_s, u"/live/6"_s});
        QCOMPARE(scene.colorOf(u"5"_s).rgba(), StationPalette::parchment().rgba());
        QCOMPARE(scene.colorOf(u"6"_s).rgba(), StationPalette::onAirRed().rgba());
        QCOMPARE(scene.focusedName(), u"7 Committee room 7"_s);
    }

    void stripIsEnteredAtCurrentStation()
    {
        Scene scene(newsOf(30), {1920, 1080}, 20);
        QCOMPARE(scene.focusedName(), u"25 Committee room 25"_s);
        const QRectF area = scene.areaOnCanvas(scene.focused());
        QVERIFY(area.left() >= 300 && area.right() <= 1920 - 300);
    }

    void selectPicksFocusedStation()
    {
        Scene scene(newsOf(2));
        QCOMPARE(scene.focusedName(), u"5 5 O'Clock News"_s);
        scene.press(Qt::Key_Right);
        QCOMPARE(scene.focusedName(), u"6 Committee room 6"_s);
        QCOMPARE(scene.picked(), QString());
        scene.press(Qt::Key_Select);
        QCOMPARE(scene.picked(), u"/live/6"_s);
        scene.press({Qt::Key_Left, Qt::Key_Left, Qt::Key_Select});
        QCOMPARE(scene.picked(), u"/live/news/index.m3u8"_s);
    }

    void everyChannelOfFiftyIsReachable()
    {
        Scene scene(newsOf(50));
        const QRectF caption = scene.areaOf(u"CHANNELS"_s);
        for (int number = 6; number < 56; ++number) {
            scene.press(Qt::Key_Right);
            QCOMPARE(scene.focusedName(), u"%1 Committee room %1"_s.arg(number));
        }
        scene.press(Qt::Key_Right);
        QCOMPARE(scene.focusedName(), u"55 Committee room 55"_s);
        scene.waitUntilIdle();
        const QRectF last = scene.areaOnCanvas(scene.focused());
        QVERIFY(std::abs(last.right() - (1920 - 50)) < 1);
        // Only the buttons near the visible range exist.
        QVERIFY(scene.buttons().size() < 15);
        for (int number = 54; number >= 5; --number)
            scene.press(Qt::Key_Left);
        scene.waitUntilIdle();
        QCOMPARE(scene.focusedName(), u"5 5 O'Clock News"_s);
        QCOMPARE(scene.areaOf(u"CHANNELS"_s), caption);
    }

    void focusMovesToNewCurrentStation()
    {
        const NewsStatus news = newsOf(30);
        Scene scene(news);
        scene.setCurrent(news.stations().at(25));
        QCOMPARE(scene.focusedName(), u"30 Committee room 30"_s);
        QVERIFY(scene.areaOnCanvas(scene.focused()).right() < 1920);
        scene.press(Qt::Key_Left);
        scene.setCurrent(news.stations().at(2));
        QCOMPARE(scene.focusedName(), u"29 Committee room 29"_s);
    }

    void focusStaysOnStationWhenListChanges()
    {
        Scene scene(newsOf(2));
        scene.press(Qt::Key_Right);
        QList<TunerStation> stations = newsOf(2).stations();
        stations.prepend({u"1"_s, u"Early"_s, u"/live/1"_s});
        scene.setStations(stations);
        QCOMPARE(scene.focusedName(), u"6 Committee room 6"_s);
        stations.removeAt(2);
        scene.setStations(stations);
        QVERIFY(scene.focusedName() == u"7 Committee room 7"_s || scene.focusedName() == u"5 5 O'Clock News"_s);
    }

    void nameIsElidedOnlyAtEndOfStrip_data()
    {
        // `longest` is the greatest width of a plate, in points.
        rows<QSize, int>({"size", "longest"}, {{"720p", {1280, 720}, 1820},
                                               {"1080p", {1920, 1080}, 1820},
                                               {"wider", {2560, 1080}, 2460},
                                               {"taller", {1024, 768}, 1820}});
    }

    void nameIsElidedOnlyAtEndOfStrip()
    {
        QFETCH(const QSize, size);
        QFETCH(const int, longest);
        const QString roomName = u"City Council chambers at the old custom fixture beside the harbour: room "_s;
        QMap<QString, QString> channels{{u"6"_s, roomName + u"A"_s}, {u"7"_s, roomName + u"B"_s}};
        for (const int letters : {100, 125, 135, 145, 170, 300})
            channels.insert(QString::number(letters), roomName.repeated(5).left(letters));
        Scene scene(newsOf(channels), size);
        const QFontMetricsF numbers(TunerList::numberFont());
        const QFontMetricsF labels(TunerList::labelFont());
        int elided = 0;
        int complete = 0;
        QString name;
        do {
            scene.waitUntilIdle();
            name = scene.focusedName();
            const auto words = [&scene](const QString& part) {
                return scene.partOf(scene.focused(), part)->property("text").toString();
            };
            const double wanted = 2 * 46 + 10 + std::ceil(numbers.horizontalAdvance(words(u"number"_s))) +
                                  std::ceil(labels.horizontalAdvance(words(u"label"_s)));
            QCOMPARE(scene.focused()->width(), std::min(wanted, double(longest)));
            (wanted > longest ? elided : complete) += 1;
            // The scaled-up plate is inside the display and does not overlap its neighbours.
            const QRectF plate = TestScreen::area(TestScreen::first(scene.focused(), "StationPlate"));
            QVERIFY2(plate.left() >= 0 && plate.right() <= size.width(), qPrintable(name));
            const auto buttons = scene.buttons();
            for (const QQuickItem* button : buttons)
                QVERIFY(button == scene.focused() || !TestScreen::area(button).intersects(plate));
            scene.press(Qt::Key_Right);
        } while (scene.focusedName() != name);
        QVERIFY(elided >= 1 && complete >= 4);
    }

    void textsStayInsidePlates_data()
    {
        rows<QString>({"label"},
                      {{"300 characters", u"Joint special session of the harbour board "_s.repeated(7).left(300)},
                       {"Chinese", u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(15).left(300)},
                       {"Arabic", u"اجتماع مجلس المدينة "_s.repeated(15)},
                       {"line breaks", u"one\ntwo\nthree\nfour"_s},
                       {"blank", u" "_s},
                       {"a million characters", QString(1'000'000, u'W')}});
    }

    void textsStayInsidePlates()
    {
        QFETCH(QString, label);
        Scene scene(newsOf({{u"6"_s, label}, {QString(400, u'8'), label}}));
        for (int round = 0; round < 3; ++round) {
            QRectF before;
            const auto buttons = scene.buttons();
            for (QQuickItem* button : buttons) {
                QVERIFY(button->width() <= 1820);
                const auto texts = TestScreen::texts(button);
                for (QQuickItem* text : texts) {
                    const QQuickItem* const container = text->parentItem();
                    QVERIFY(scene.areaOnCanvas(button).contains(scene.areaOnCanvas(container)) ||
                            button->hasActiveFocus());
                    QVERIFY(container->clip() || text->property("contentWidth").toDouble() <= container->width() + 24);
                    QVERIFY(container->clip() || (text->x() == 0 && text->width() == container->width()));
                }
                QVERIFY(!scene.areaOnCanvas(button).intersects(before));
                before = scene.areaOnCanvas(button);
            }
            scene.press(Qt::Key_Right);
            scene.waitUntilIdle();
        }
    }

    void elidedNameScrollsWhenFocused_data()
    {
        rows<QSize>({"size"},
                    {{"720p", {1280, 720}}, {"1080p", {1920, 1080}}, {"wider", {2560, 1080}}, {"2160p", {3840, 2160}}});
    }

    void elidedNameScrollsWhenFocused()
    {
        QFETCH(const QSize, size);
        Scene scene(newsOf({{u"6"_s, longName}, {u"7"_s, u"Parks"_s}}), size);
        const QQuickItem* const text = scene.text(longName);
        const QQuickItem* const container = text->parentItem();
        QVERIFY(text->property("truncated").toBool());

        scene.press(Qt::Key_Right);
        scene.waitUntilIdle();
        // First its beginning is shown, and the whole text is laid out.
        QVERIFY(!text->property("truncated").toBool());
        QCOMPARE(text->x(), 0.0);
        const double overflow = text->width() - container->width();
        QVERIFY(overflow > 100);
        scene.clock.advance(1499ms);
        scene.waitForFrame();
        QCOMPARE(text->x(), 0.0);
        scene.clock.advance(1ms);
        // Then it moves with the clock, by whole pixels.
        const auto hasMoved = [&](double points) { return std::abs(text->x() + points) <= 0.51 / scene.factor(); };
        for (const int half : {1, 2, 3, 4}) {
            scene.clock.advance(500ms);
            QTRY_VERIFY(hasMoved(std::min(overflow, half * 60.0)));
            const double pixels = TestScreen::area(container).left() - TestScreen::area(text).left();
            QVERIFY2(std::abs(std::remainder(pixels, 1)) < 0.001, qPrintable(QString::number(pixels)));
        }
        // The end stands still for two seconds; then the beginning is shown again.
        scene.clock.advance(60s);
        QTRY_VERIFY(hasMoved(overflow));
        scene.waitForFrame();
        QVERIFY(std::abs(scene.areaOnCanvas(text).right() - scene.areaOnCanvas(container).right()) <= 1);
        scene.clock.advance(1999ms);
        scene.waitForFrame();
        QVERIFY(text->x() < 0);
        scene.clock.advance(1ms);
        QCOMPARE(text->x(), 0.0);
        scene.clock.advance(1500ms);
        scene.clock.advance(1s);
        QTRY_VERIFY(text->x() < -100);

        // Without focus it is elided as before.
        scene.press(Qt::Key_Right);
        scene.waitUntilIdle();
        QCOMPARE(text->x(), 0.0);
        QVERIFY(text->property("truncated").toBool());
    }

    void rightToLeftNameScrollsFromItsRightEnd()
    {
        const QString label = u"اجتماع مجلس المدينة "_s.repeated(20);
        Scene scene(newsOf({{u"6"_s, label}}));
        const QQuickItem* const text = scene.text(label);
        const QQuickItem* const container = text->parentItem();
        scene.press(Qt::Key_Right);
        scene.waitUntilIdle();
        QVERIFY(std::abs(scene.areaOnCanvas(text).right() - scene.areaOnCanvas(container).right()) <= 1);
        scene.clock.advance(1500ms);
        scene.clock.advance(1s);
        QTRY_VERIFY(scene.areaOnCanvas(text).right() > scene.areaOnCanvas(container).right() + 100);
        scene.clock.advance(60s);
        QTRY_VERIFY(std::abs(scene.areaOnCanvas(text).left() - scene.areaOnCanvas(container).left()) <= 1);
    }

    void noFrameIsDrawnUnlessElidedNameIsFocused()
    {
        Scene scene(newsOf({{u"6"_s, longName}, {u"7"_s, u"Parks"_s}}));
        const auto isStill = [&] {
            scene.waitUntilIdle();
            const int frames = scene.frames();
            for (int second = 0; second < 5; ++second) {
                scene.clock.advance(1s);
                QTest::qWait(50);
            }
            return scene.frames() == frames;
        };
        QVERIFY(isStill());
        scene.press(Qt::Key_Right);
        QVERIFY(!isStill());
        // It stands still at its end.
        scene.clock.advance(60s);
        scene.waitUntilIdle();
        const int frames = scene.frames();
        scene.clock.advance(1s);
        scene.waitUntilIdle();
        QCOMPARE(scene.frames(), frames);
        scene.press(Qt::Key_Right);
        QVERIFY(isStill());
    }
};

QUILLMERE_TEST(TunerStripTest, QGuiApplication)

} // namespace quillmere

#include "TunerStripTest.moc"
