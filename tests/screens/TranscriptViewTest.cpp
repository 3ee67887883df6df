#include "TranscriptHouse.h"

#include "StationMotion.h"
#include "StationPalette.h"

#include <QElapsedTimer>

/** The transcript's screen: what it says, and how it is read. */
class TranscriptViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_house.reset(); }
    void theHeaderTellsWhatItIsOf_data();
    void theHeaderTellsWhatItIsOf();
    void aLongHeaderHasTheRoomThatThePageCanSpare_data();
    void aLongHeaderHasTheRoomThatThePageCanSpare();
    void aLongFailureIsToldToItsEnd();
    void untilTheHubAnswersAWheelTurns();
    void whereThereIsNoTranscriptThereIsAWayBack();
    void theWayBackStandsOutOnThePage();
    void aFailureIsToldInTheHubsWords();
    void theWordsAreCountedWhereTheyAreKnown_data();
    void theWordsAreCountedWhereTheyAreKnown();
    void everyParagraphIsAPassage();
    void thePassageWithTheFocusStandsOut();
    void theArrowsGoFromPassageToPassage();
    void whatIsScrolledUpGoesUnderTheHeader();
    void rightToLeftPassagesStandAtTheirOwnSide();
    void aPassageLongerThanThePageIsReadToItsEnd();
    void aPageIsTurned_data();
    void aPageIsTurned();
    void pagesAreTurnedBackToTheBeginning();
    void pagesEndWithTheTranscript();
    void pagesGoThroughWhatIsLongerThanOne();
    void theHubsWordsAreNoMarkup();
    void onlyPassagesNearTheScreenExist();
    void theFirstPageOfALongTranscriptComesSoon();
    void aHeldArrowFindsEveryPassage();

private:
    TranscriptHouse& open(bool hasTranscript = true, const VHSCover& cover = sampleCover())
    {
        m_house = std::make_unique<TranscriptHouse>(hasTranscript, cover);
        return *m_house;
    }

    std::unique_ptr<TranscriptHouse> m_house;
};

void TranscriptViewTest::theHeaderTellsWhatItIsOf_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("caption");
    QTest::newRow("with a date") << u"March 5, 2024"_s << u"THE SPOKEN RECORD · HARBOR COMMISSION · MARCH 5, 2024"_s;
    QTest::newRow("without") << QString() << u"THE SPOKEN RECORD · HARBOR COMMISSION"_s;
}

void TranscriptViewTest::theHeaderTellsWhatItIsOf()
{
    QFETCH(const QString, date);
    QFETCH(const QString, caption);
    VHSCover cover = sampleCover();
    cover.title = u"The Fog Horn"_s;
    cover.bodyName = u"Harbor Commission"_s;
    cover.dateLabel = date;
    TranscriptHouse& house = open(true, cover);
    QCOMPARE(house.shown().mid(0, 2), (QStringList{caption, u"The Fog Horn"_s}));
    house.read(TranscriptHouse::paragraphs(1));
    QCOMPARE(house.shown().mid(0, 3), (QStringList{caption, u"The Fog Horn"_s, u"12,408 words"_s}));
}

void TranscriptViewTest::aLongHeaderHasTheRoomThatThePageCanSpare_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("body");
    QTest::addColumn<bool>("isWhole");
    const QString title = u"Joint special session of the harbour board and the water commission "_s;
    const QString body = u"Joint Committee on Committees and their Committees "_s;
    QTest::newRow("long") << title.repeated(5) << body.repeated(4) << true;
    QTest::newRow("Arabic") << u"اجتماع مجلس المدينة حول الميزانية "_s.repeated(8) << u"مجلس المدينة "_s.repeated(12)
                            << true;
    QTest::newRow("endless") << title.repeated(14) << body.repeated(19) << false;
    QTest::newRow("without a space") << QString(900, u'W') << QString(900, u'W') << false;
}

void TranscriptViewTest::aLongHeaderHasTheRoomThatThePageCanSpare()
{
    QFETCH(const QString, title);
    QFETCH(const QString, body);
    QFETCH(const bool, isWhole);
    VHSCover cover = sampleCover();
    cover.title = title;
    cover.bodyName = body;
    TranscriptHouse& house = open(true, cover);
    house.read(TranscriptHouse::paragraphs(3));
    const auto texts = Stage::texts(house.view);
    QVERIFY(texts.at(0)->property("lineCount").toInt() > 1);
    QVERIFY(texts.at(1)->property("lineCount").toInt() > 2);
    for (qsizetype i = 0; i < 2; ++i) {
        QCOMPARE(texts.at(i)->property("truncated").toBool(), !isWhole);
        QVERIFY(texts.at(i)->property("contentWidth").toDouble() <= texts.at(i)->width());
    }
    // Half of the display at most; a cut title leaves less of that half than a line.
    const double height = Stage::first(house.view, "TranscriptHeader")->height();
    QVERIFY(height <= 540);
    QVERIFY(isWhole || height > 540 - 54);
    QVERIFY(house.page->height() >= 540);
    QCOMPARE(house.number(), 1);
    QVERIFY(house.place().top() >= 0 && house.place().bottom() <= house.page->height());
}

void TranscriptViewTest::aLongFailureIsToldToItsEnd()
{
    TranscriptHouse& house = open();
    house.http.fail(house.http.waitingFor(u"/api/meetings/42/transcript"_s), u"No route to the hub.\n"_s.repeated(16));
    QTRY_COMPARE(house.controller->state(), TranscriptController::Empty);
    house.stage.settle();
    const QQuickItem* const message = house.text(house.controller->message());
    QVERIFY(message->property("lineCount").toInt() > 12);
    QVERIFY(!message->property("truncated").toBool());
    QVERIFY(Stage::area(house.focused()).bottom() < 1080 - 40);
}

void TranscriptViewTest::untilTheHubAnswersAWheelTurns()
{
    TranscriptHouse& house = open();
    QVERIFY(Stage::first(house.view, "Spinner")->isVisible());
    QVERIFY(house.text(u"Pulling the transcript…"_s));
    house.read(TranscriptHouse::paragraphs(1));
    QVERIFY(!Stage::first(house.view, "Spinner")->isVisible());
    QVERIFY(!house.text(u"Pulling the transcript…"_s));
}

void TranscriptViewTest::whereThereIsNoTranscriptThereIsAWayBack()
{
    TranscriptHouse& house = open(false);
    QCOMPARE(house.http.count(), 0);
    house.stage.settle();
    QVERIFY(house.text(u"No transcript has been harvested for this tape yet."_s));
    QVERIFY(!house.column->isVisible());
    QCOMPARE(house.focused()->property("text").toString(), u"Back to the tape"_s);
    QCOMPARE(house.dismissals->count(), 0);
    house.press(Qt::Key_Select);
    QCOMPARE(house.dismissals->count(), 1);
}

void TranscriptViewTest::theWayBackStandsOutOnThePage()
{
    TranscriptHouse& house = open(false);
    house.stage.settle();
    const QPoint plate = house.focused()->mapToScene(QPointF(20, house.focused()->height() / 2)).toPoint();
    QCOMPARE(house.stage.picture().pixelColor(plate), StationPalette::inkNavy());
}

void TranscriptViewTest::aFailureIsToldInTheHubsWords()
{
    TranscriptHouse& house = open();
    house.answer({}, 503);
    house.stage.settle();
    QVERIFY(house.text(u"Couldn't reach the transcript. "_s + HubError::http(503).errorDescription()));
    QCOMPARE(house.focused()->property("text").toString(), u"Back to the tape"_s);
}

void TranscriptViewTest::theWordsAreCountedWhereTheyAreKnown_data()
{
    QTest::addColumn<qint64>("words");
    QTest::addColumn<QString>("line");
    QTest::newRow("none") << qint64(0) << QString();
    QTest::newRow("less than none") << qint64(-5) << QString();
    QTest::newRow("one") << qint64(1) << u"1 words"_s;
    QTest::newRow("a million") << qint64(1234567) << u"1,234,567 words"_s;
}

void TranscriptViewTest::theWordsAreCountedWhereTheyAreKnown()
{
    QFETCH(const qint64, words);
    QFETCH(const QString, line);
    TranscriptHouse& house = open();
    house.answer(TranscriptHouse::record(TranscriptHouse::paragraphs(1), words));
    QCOMPARE(house.shown().size(), line.isEmpty() ? 3 : 4);
    QVERIFY(line.isEmpty() || house.text(line));
}

void TranscriptViewTest::everyParagraphIsAPassage()
{
    TranscriptHouse& house = open();
    house.read(TranscriptHouse::paragraphs(3));
    QCOMPARE(house.column->existing(), 3);
    qreal end = 0;
    for (int row = 0; row < 3; ++row) {
        const QQuickItem* const passage = house.column->itemAt(row);
        QVERIFY(passage->property("text").toString().startsWith(QString::number(row + 1)));
        QCOMPARE(passage->y(), row == 0 ? 0 : end + 26);
        end = passage->y() + passage->height();
        const QQuickItem* const words = Stage::texts(house.column->itemAt(row)).constFirst();
        QCOMPARE(words->position(), QPointF(24, 16));
        QCOMPARE(words->width(), passage->width() - 48);
        QCOMPARE(passage->height(), words->height() + 32);
    }
    QCOMPARE(house.column->position(), QPointF(110, 40));
    QCOMPARE(house.column->width(), 1700);
    QCOMPARE(house.page->contentExtent(), end + 80);
}

void TranscriptViewTest::thePassageWithTheFocusStandsOut()
{
    TranscriptHouse& house = open();
    house.read(TranscriptHouse::paragraphs(2));
    const QImage picture = house.stage.picture();
    const auto looks = [&](int row, QPointF point, QColor colour) {
        const QColor seen = picture.pixelColor(house.column->itemAt(row)->mapToScene(point).toPoint());
        const auto isNear = [](int a, int b) { return std::abs(a - b) <= 1; };
        return isNear(seen.red(), colour.red()) && isNear(seen.green(), colour.green()) &&
               isNear(seen.blue(), colour.blue());
    };
    QVERIFY(looks(0, {3, 60}, StationPalette::teal()));
    QVERIFY(looks(1, {3, 60}, StationPalette::cream()));
    QVERIFY(looks(0, {1690, 60}, StationPalette::mixed(StationPalette::cream(), StationPalette::amber(), 0.35)));
    QVERIFY(looks(1, {1690, 60}, StationPalette::cream()));
    const auto ink = [&house](int row) {
        return Stage::texts(house.column->itemAt(row)).constFirst()->property("color").value<QColor>().name();
    };
    QCOMPARE(ink(0), StationPalette::inkNavy().name());
    QCOMPARE(ink(1), StationPalette::mixed(StationPalette::cream(), StationPalette::inkNavy(), 0.72).name());
    QCOMPARE(Stage::animationTimes(house.column->itemAt(0)), QList<int>{150});
    QCOMPARE(Stage::animationCurves(house.column->itemAt(0)), QList<QEasingCurve>{StationMotion::easeOut()});
}

void TranscriptViewTest::theArrowsGoFromPassageToPassage()
{
    TranscriptHouse& house = open();
    house.read(TranscriptHouse::paragraphs(12));
    for (int number = 1; number < 12; ++number) {
        QCOMPARE(house.number(), number);
        house.stage.press(Qt::Key_Down);
    }
    house.stage.settle();
    QCOMPARE(house.number(), 12);
    QVERIFY(house.place().bottom() <= house.page->height());
    house.press(Qt::Key_Down);
    QCOMPARE(house.number(), 12);
    for (int number = 12; number > 1; --number) {
        QCOMPARE(house.number(), number);
        house.stage.press(Qt::Key_Up);
    }
    house.stage.settle();
    QCOMPARE(house.number(), 1);
    QCOMPARE(house.page->position(), 0);
}

void TranscriptViewTest::whatIsScrolledUpGoesUnderTheHeader()
{
    TranscriptHouse& house = open();
    house.read(TranscriptHouse::paragraphs(12));
    const QRect header(0, 0, 1920, int(house.page->mapToScene(QPointF()).y()));
    const QImage before = house.stage.picture().copy(header);
    for (int i = 0; i < 6; ++i)
        house.stage.press(Qt::Key_Down);
    QVERIFY(house.page->aim() > 0);
    QCOMPARE(house.stage.picture().copy(header), before);
}

void TranscriptViewTest::rightToLeftPassagesStandAtTheirOwnSide()
{
    TranscriptHouse& house = open();
    const QString hebrew = u"ישיבת ועדת הנמל נפתחת עכשיו "_s.repeated(16);
    house.read(hebrew + u'\n' + TranscriptHouse::paragraphs(1) + u"قصير"_s);
    QCOMPARE(house.column->existing(), 3);
    const auto ink = [&house](int row) {
        const QQuickItem* const passage = house.column->itemAt(row);
        const QImage picture = house.stage.picture();
        const int line = int(passage->mapToScene(QPointF(0, passage->height() - 34)).y());
        int first = picture.width();
        int last = 0;
        for (int x = 120; x < 1800; ++x) {
            for (int y = line - 12; y < line + 12; ++y) {
                if (picture.pixelColor(x, y).lightness() < 128) {
                    first = std::min(first, x);
                    last = std::max(last, x);
                }
            }
        }
        return std::pair(first, last);
    };
    QVERIFY(ink(0).second > 1770);
    QVERIFY(ink(1).first < 145);
    QVERIFY(ink(2).first > 1600);
    QVERIFY(ink(2).second > 1770);
}

void TranscriptViewTest::aPassageLongerThanThePageIsReadToItsEnd()
{
    TranscriptHouse& house = open();
    QString line;
    for (int i = 1; line.size() < 20'000; ++i)
        line += u"%1 words without an end, "_s.arg(i);
    house.read(u"1. "_s + line.first(19'997) + u'\n' + TranscriptHouse::paragraphs(1).replace(u"1."_s, u"2."_s));
    QCOMPARE(house.column->model()->rowCount(), 2);
    QVERIFY(house.focused()->height() > 5 * house.page->height());
    int presses = 0;
    qreal bottom = house.place().bottom();
    for (; house.number() == 1 && presses < 40; ++presses) {
        QVERIFY2(presses == 0 || house.place().bottom() <= bottom, "it goes on");
        // Nothing of it is passed over.
        QVERIFY(bottom - house.place().bottom() < house.page->height());
        bottom = house.place().bottom();
        house.press(Qt::Key_Down);
    }
    QCOMPARE(house.number(), 2);
    QVERIFY(bottom <= house.page->height() + 1);
    QVERIFY(presses > 6);
}

void TranscriptViewTest::aPageIsTurned_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("play/pause") << int(Qt::Key_MediaTogglePlayPause);
    QTest::newRow("page down") << int(Qt::Key_PageDown);
}

void TranscriptViewTest::aPageIsTurned()
{
    QFETCH(const int, key);
    TranscriptHouse& house = open();
    house.read(TranscriptHouse::paragraphs(40));
    int last = 0;
    for (int row = 0; row < 40 && !last; ++row) {
        const QQuickItem* const passage = house.column->itemAt(row);
        if (!passage || house.column->y() + passage->y() + passage->height() > house.page->height())
            last = row;
    }
    QVERIFY(last > 1);
    house.press(key);
    // The first that could not be read whole begins the new page.
    QCOMPARE(house.number(), last + 1);
    QCOMPARE(house.place().top(), house.page->lead());
}

void TranscriptViewTest::pagesAreTurnedBackToTheBeginning()
{
    TranscriptHouse& house = open();
    house.read(TranscriptHouse::paragraphs(40));
    for (int i = 0; i < 3; ++i)
        house.press(Qt::Key_PageDown);
    QVERIFY(house.number() > 9);
    for (int last = house.number(); last > 1; last = house.number()) {
        house.press(Qt::Key_PageUp);
        QVERIFY(house.number() < last);
        QVERIFY(house.place().top() >= house.page->lead());
        // What began the page before ends this one.
        const QQuickItem* const passage = house.column->itemAt(last - 1);
        QVERIFY(house.number() == 1 || passage->mapToItem(house.page, QPointF()).y() < house.page->height());
    }
    QCOMPARE(house.page->position(), 0);
}

void TranscriptViewTest::pagesEndWithTheTranscript()
{
    TranscriptHouse& house = open();
    house.read(TranscriptHouse::paragraphs(11));
    for (int i = 0; i < 6; ++i)
        house.press(Qt::Key_PageDown);
    QCOMPARE(house.number(), 11);
    QCOMPARE(house.page->position(), house.page->contentExtent() - house.page->height());
}

void TranscriptViewTest::pagesGoThroughWhatIsLongerThanOne()
{
    TranscriptHouse& house = open();
    const QString line = u"Words without an end, "_s.repeated(900);
    house.read(TranscriptHouse::paragraphs(2) + u"3. "_s + line + u"\n4. The end."_s);
    int pages = 0;
    for (; house.number() < 4 && pages < 40; ++pages)
        house.press(Qt::Key_PageDown);
    QCOMPARE(house.number(), 4);
    QVERIFY2(pages > 6, qPrintable(QString::number(pages)));
    house.press(Qt::Key_PageUp);
    QCOMPARE(house.number(), 3);
    QCOMPARE(house.place().top(), 0);
    house.press(Qt::Key_PageUp);
    QCOMPARE(house.number(), 1);
}

void TranscriptViewTest::theHubsWordsAreNoMarkup()
{
    const QString markup = u"<b>Not bold</b> <img src=\"https://hub.example/picture.png\"> &amp;"_s;
    VHSCover cover = sampleCover();
    cover.title = markup;
    TranscriptHouse& house = open(true, cover);
    house.read(markup);
    QCOMPARE(house.shown().count(markup), 2);
    QCOMPARE(house.http.count(), 1);
    for (const QQuickItem* text : Stage::texts(house.view))
        QCOMPARE(text->property("textFormat").toInt(), int(Qt::PlainText));
}

void TranscriptViewTest::onlyPassagesNearTheScreenExist()
{
    TranscriptHouse& house = open();
    house.read(TranscriptHouse::paragraphs(12000));
    QCOMPARE(house.column->model()->rowCount(), 12000);
    QVERIFY(house.column->existing() < 12);
    for (int i = 0; i < 30; ++i)
        house.stage.press(Qt::Key_PageDown);
    house.stage.settle();
    QVERIFY(house.number() > 90);
    QVERIFY(house.column->existing() < 20);
}

void TranscriptViewTest::theFirstPageOfALongTranscriptComesSoon()
{
    TranscriptHouse& house = open();
    const QByteArray record = TranscriptHouse::record(TranscriptHouse::paragraphs(11200));
    QVERIFY(record.size() > 5'000'000);
    QElapsedTimer time;
    time.start();
    house.answer(record);
    house.stage.waitForFrame();
    // On a machine with nothing else to do it takes a fifth of that.
    QVERIFY2(time.elapsed() < 1500 * QUILLMERE_SLOWDOWN, qPrintable(QString::number(time.elapsed())));
    qInfo("the first page came after %lld ms", time.elapsed());
    QCOMPARE(house.number(), 1);
    QVERIFY(house.column->itemAt(3));
}

void TranscriptViewTest::aHeldArrowFindsEveryPassage()
{
    TranscriptHouse& house = open();
    house.read(TranscriptHouse::paragraphs(12000));
    constexpr int presses = 200;
    QElapsedTimer time;
    time.start();
    for (int i = 1; i <= presses; ++i) {
        house.stage.press(Qt::Key_Down);
        QCOMPARE(house.number(), i + 1);
    }
    qInfo("a passage took %.1f ms", double(time.elapsed()) / presses);
    house.stage.settle();
    QVERIFY(house.place().top() >= 0 && house.place().bottom() <= house.page->height());
}

QTEST_MAIN(TranscriptViewTest)
#include "TranscriptViewTest.moc"
