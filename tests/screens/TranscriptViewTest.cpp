#include "Rows.h"
#include "StationMotion.h"
#include "StationPalette.h"
#include "TestMain.h"
#include "TranscriptFixture.h"

#include <QElapsedTimer>

namespace quillmere {

/** The screen of a transcript: texts and navigation. */
class TranscriptViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headerShowsTitleBodyAndDate_data()
    {
        rows<QString, QString>(
            {"date", "caption"},
            {{"with a date", u"March 5, 2024"_s, u"THE SPOKEN RECORD · HARBOR COMMISSION · MARCH 5, 2024"_s},
             {"without a date", {}, u"THE SPOKEN RECORD · HARBOR COMMISSION"_s}});
    }

    void headerShowsTitleBodyAndDate()
    {
        QFETCH(const QString, date);
        QFETCH(const QString, caption);
        VHSCover cover = sampleCover();
        cover.title = u"The Fog Horn"_s;
        cover.bodyName = u"Harbor Commission"_s;
        cover.dateLabel = date;
        TranscriptFixture fixture(true, cover);
        QCOMPARE(fixture.shown().mid(0, 2), (QStringList{caption, u"The Fog Horn"_s}));
        fixture.read(TranscriptFixture::paragraphs(1));
        QCOMPARE(fixture.shown().mid(0, 3), (QStringList{caption, u"The Fog Horn"_s, u"12,408 words"_s}));
    }

    void longHeaderUsesUpToHalfOfScreen_data()
    {
        const QString title = u"Joint special session of the harbour board and the water commission "_s;
        const QString body = u"Joint Committee on Committees and their Committees "_s;
        const QString word(900, u'W');
        rows<QString, QString, bool>(
            {"title", "body", "isComplete"},
            {{"long", title.repeated(5), body.repeated(4), true},
             {"Arabic", u"اجتماع مجلس المدينة حول الميزانية "_s.repeated(8), u"مجلس المدينة "_s.repeated(12), true},
             {"endless", title.repeated(14), body.repeated(19), false},
             {"one long word", word, word, false}});
    }

    void longHeaderUsesUpToHalfOfScreen()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, body);
        QFETCH(const bool, isComplete);
        VHSCover cover = sampleCover();
        cover.title = title;
        cover.bodyName = body;
        TranscriptFixture fixture(TranscriptFixture::paragraphs(3), cover);
        const auto texts = TestScreen::texts(fixture.view);
        QVERIFY(texts.at(0)->property("lineCount").toInt() > 1);
        QVERIFY(texts.at(1)->property("lineCount").toInt() > 2);
        for (qsizetype i = 0; i < 2; ++i) {
            QCOMPARE(texts.at(i)->property("truncated").toBool(), !isComplete);
            QVERIFY(texts.at(i)->property("contentWidth").toDouble() <= texts.at(i)->width());
        }
        // At most half of the display; an elided title leaves less than one line of that half unused.
        const double height = TestScreen::first(fixture.view, "TranscriptHeader")->height();
        QVERIFY(height <= 540);
        QVERIFY(isComplete || height > 540 - 54);
        QVERIFY(fixture.page->height() >= 540);
        QCOMPARE(fixture.focusedNumber(), 1);
        QVERIFY(fixture.focusedArea().top() >= 0 && fixture.focusedArea().bottom() <= fixture.page->height());
    }

    void longFailureMessageIsShownCompletely()
    {
        TranscriptFixture fixture;
        fixture.http.fail(fixture.http.waitingFor(u"/api/meetings/42/transcript"_s),
                          u"No route to the hub.\n"_s.repeated(16));
        QTRY_COMPARE(fixture.controller->state(), TranscriptController::Empty);
        fixture.waitUntilIdle();
        const QQuickItem* const message = fixture.text(fixture.controller->message());
        QVERIFY(message->property("lineCount").toInt() > 12);
        QVERIFY(!message->property("truncated").toBool());
        QVERIFY(TestScreen::area(fixture.focused()).bottom() < 1080 - 40);
    }

    void spinnerIsShownUntilHubAnswers()
    {
        TranscriptFixture fixture;
        QVERIFY(TestScreen::first(fixture.view, "Spinner")->isVisible());
        QVERIFY(fixture.text(u"Pulling the transcript…"_s));
        fixture.read(TranscriptFixture::paragraphs(1));
        QVERIFY(!TestScreen::first(fixture.view, "Spinner")->isVisible());
        QVERIFY(!fixture.text(u"Pulling the transcript…"_s));
    }

    void backButtonIsShownWithoutTranscript()
    {
        TranscriptFixture fixture(false);
        QCOMPARE(fixture.http.count(), 0);
        fixture.waitUntilIdle();
        QVERIFY(fixture.text(u"No transcript has been harvested for this tape yet."_s));
        QVERIFY(!fixture.column->isVisible());
        // The button has contrast to the page.
        const QPoint plate = fixture.focused()->mapToScene(QPointF(20, fixture.focused()->height() / 2)).toPoint();
        QCOMPARE(fixture.picture().pixelColor(plate), StationPalette::inkNavy());
        QCOMPARE(fixture.focused()->property("text").toString(), u"Back to the tape"_s);
        QCOMPARE(fixture.dismissals->count(), 0);
        fixture.pressAndWait(Qt::Key_Select);
        QCOMPARE(fixture.dismissals->count(), 1);
    }

    void failureShowsErrorDescription()
    {
        TranscriptFixture fixture;
        fixture.answer({}, 503);
        fixture.waitUntilIdle();
        QVERIFY(fixture.text(u"Couldn't reach the transcript. "_s + HubError::http(503).errorDescription()));
        QCOMPARE(fixture.focused()->property("text").toString(), u"Back to the tape"_s);
    }

    void wordCountIsShownWhenPositive_data()
    {
        rows<qint64, QString>({"words", "line"}, {{"none", 0, {}},
                                                  {"negative", -5, {}},
                                                  {"one", 1, u"1 words"_s},
                                                  {"more than a million", 1234567, u"1,234,567 words"_s}});
    }

    void wordCountIsShownWhenPositive()
    {
        QFETCH(const qint64, words);
        QFETCH(const QString, line);
        TranscriptFixture fixture;
        fixture.answer(TranscriptFixture::record(TranscriptFixture::paragraphs(1), words));
        QCOMPARE(fixture.shown().size(), line.isEmpty() ? 3 : 4);
        QVERIFY(line.isEmpty() || fixture.text(line));
    }

    void everyParagraphIsOnePassage()
    {
        TranscriptFixture fixture(TranscriptFixture::paragraphs(3));
        QCOMPARE(fixture.column->itemCount(), 3);
        qreal end = 0;
        for (int row = 0; row < 3; ++row) {
            const QQuickItem* const passage = fixture.column->itemAt(row);
            QVERIFY(passage->property("text").toString().startsWith(QString::number(row + 1)));
            QCOMPARE(passage->y(), row == 0 ? 0 : end + 26);
            end = passage->y() + passage->height();
            const QQuickItem* const words = fixture.passageText(row);
            QCOMPARE(words->position(), QPointF(24, 16));
            QCOMPARE(words->width(), passage->width() - 48);
            QCOMPARE(passage->height(), words->height() + 32);
        }
        QCOMPARE(fixture.column->position(), QPointF(110, 40));
        QCOMPARE(fixture.column->width(), 1700);
        QCOMPARE(fixture.page->contentExtent(), end + 80);
    }

    void focusedPassageIsHighlighted()
    {
        TranscriptFixture fixture(TranscriptFixture::paragraphs(2));
        const QImage picture = fixture.picture();
        const auto hasColour = [&](int row, QPointF point, QColor colour) {
            const QColor seen = picture.pixelColor(fixture.column->itemAt(row)->mapToScene(point).toPoint());
            const auto isNear = [](int a, int b) { return std::abs(a - b) <= 1; };
            return isNear(seen.red(), colour.red()) && isNear(seen.green(), colour.green()) &&
                   isNear(seen.blue(), colour.blue());
        };
        QVERIFY(hasColour(0, {3, 60}, StationPalette::teal()));
        QVERIFY(hasColour(1, {3, 60}, StationPalette::cream()));
        QVERIFY(
            hasColour(0, {1690, 60}, StationPalette::mixed(StationPalette::cream(), StationPalette::amber(), 0.35)));
        QVERIFY(hasColour(1, {1690, 60}, StationPalette::cream()));
        const auto ink = [&](int row) { return fixture.passageText(row)->property("color").value<QColor>().name(); };
        QCOMPARE(ink(0), StationPalette::inkNavy().name());
        QCOMPARE(ink(1), StationPalette::mixed(StationPalette::cream(), StationPalette::inkNavy(), 0.72).name());
        QCOMPARE(TestScreen::animationTimes(fixture.column->itemAt(0)), QList<int>{150});
        QCOMPARE(TestScreen::animationCurves(fixture.column->itemAt(0)), QList<QEasingCurve>{StationMotion::easeOut()});
    }

    void arrowsMoveFocusAndScrolledTextIsHiddenBelowHeader()
    {
        TranscriptFixture fixture(TranscriptFixture::paragraphs(12));
        const QRect header(0, 0, 1920, int(fixture.page->mapToScene(QPointF()).y()));
        const QImage before = fixture.picture().copy(header);
        for (int number = 1; number < 12; ++number) {
            QCOMPARE(fixture.focusedNumber(), number);
            fixture.press(Qt::Key_Down);
        }
        QVERIFY(fixture.page->targetPosition() > 0);
        QCOMPARE(fixture.picture().copy(header), before);
        QCOMPARE(fixture.focusedNumber(), 12);
        QVERIFY(fixture.focusedArea().bottom() <= fixture.page->height());
        fixture.pressAndWait(Qt::Key_Down);
        QCOMPARE(fixture.focusedNumber(), 12);
        for (int number = 12; number > 1; --number) {
            QCOMPARE(fixture.focusedNumber(), number);
            fixture.press(Qt::Key_Up);
        }
        fixture.waitUntilIdle();
        QCOMPARE(fixture.focusedNumber(), 1);
        QCOMPARE(fixture.page->position(), 0);
    }

    void rightToLeftPassagesAreAlignedRight()
    {
        const QString hebrew = u"ישיבת ועדת הנמל נפתחת עכשיו "_s.repeated(16);
        TranscriptFixture fixture(hebrew + u'\n' + TranscriptFixture::paragraphs(1) + u"قصير"_s);
        QCOMPARE(fixture.column->itemCount(), 3);
        const auto ink = [&fixture](int row) {
            const QQuickItem* const passage = fixture.column->itemAt(row);
            const QImage picture = fixture.picture();
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

    void arrowsScrollPassageLongerThanPageToItsEnd()
    {
        QString line;
        for (int i = 1; line.size() < 20'000; ++i)
            line += u"%1 words without an end, "_s.arg(i);
        TranscriptFixture fixture(u"1. "_s + line.first(19'997) + u'\n' +
                                  TranscriptFixture::paragraphs(1).replace(u"1."_s, u"2."_s));
        QCOMPARE(fixture.column->model()->rowCount(), 2);
        QVERIFY(fixture.focused()->height() > 5 * fixture.page->height());
        int presses = 0;
        qreal bottom = fixture.focusedArea().bottom();
        for (; fixture.focusedNumber() == 1 && presses < 40; ++presses) {
            QVERIFY2(presses == 0 || fixture.focusedArea().bottom() <= bottom, "the passage scrolls upwards");
            // No part of it is skipped.
            QVERIFY(bottom - fixture.focusedArea().bottom() < fixture.page->height());
            bottom = fixture.focusedArea().bottom();
            fixture.pressAndWait(Qt::Key_Down);
        }
        QCOMPARE(fixture.focusedNumber(), 2);
        QVERIFY(bottom <= fixture.page->height() + 1);
        QVERIFY(presses > 6);
    }

    void pageKeyShowsNextPage_data()
    {
        rows<Qt::Key>({"key"}, {{"play/pause", Qt::Key_MediaTogglePlayPause}, {"page down", Qt::Key_PageDown}});
    }

    void pageKeyShowsNextPage()
    {
        QFETCH(const Qt::Key, key);
        TranscriptFixture fixture(TranscriptFixture::paragraphs(40));
        int last = 0;
        for (int row = 0; row < 40 && !last; ++row) {
            const QQuickItem* const passage = fixture.column->itemAt(row);
            if (!passage || fixture.column->y() + passage->y() + passage->height() > fixture.page->height())
                last = row;
        }
        QVERIFY(last > 1);
        fixture.pressAndWait(key);
        // The first passage that was not completely visible begins the new page.
        QCOMPARE(fixture.focusedNumber(), last + 1);
        QCOMPARE(fixture.focusedArea().top(), fixture.page->revealMargin());
    }

    void pageUpReturnsToBeginning()
    {
        TranscriptFixture fixture(TranscriptFixture::paragraphs(40));
        for (int i = 0; i < 3; ++i)
            fixture.pressAndWait(Qt::Key_PageDown);
        QVERIFY(fixture.focusedNumber() > 9);
        for (int last = fixture.focusedNumber(); last > 1; last = fixture.focusedNumber()) {
            fixture.pressAndWait(Qt::Key_PageUp);
            QVERIFY(fixture.focusedNumber() < last);
            QVERIFY(fixture.focusedArea().top() >= fixture.page->revealMargin());
            // The first passage of the previous page is the last of this one.
            const QQuickItem* const passage = fixture.column->itemAt(last - 1);
            QVERIFY(fixture.focusedNumber() == 1 ||
                    passage->mapToItem(fixture.page, QPointF()).y() < fixture.page->height());
        }
        QCOMPARE(fixture.page->position(), 0);
    }

    void pageDownStopsAtEndOfTranscript()
    {
        TranscriptFixture fixture(TranscriptFixture::paragraphs(11));
        for (int i = 0; i < 6; ++i)
            fixture.pressAndWait(Qt::Key_PageDown);
        QCOMPARE(fixture.focusedNumber(), 11);
        QCOMPARE(fixture.page->position(), fixture.page->contentExtent() - fixture.page->height());
    }

    void pageKeysScrollPassageLongerThanPage()
    {
        const QString line = u"Words without an end, "_s.repeated(900);
        TranscriptFixture fixture(TranscriptFixture::paragraphs(2) + u"3. "_s + line + u"\n4. The end."_s);
        int pages = 0;
        for (; fixture.focusedNumber() < 4 && pages < 40; ++pages)
            fixture.pressAndWait(Qt::Key_PageDown);
        QCOMPARE(fixture.focusedNumber(), 4);
        QVERIFY2(pages > 6, qPrintable(QString::number(pages)));
        fixture.pressAndWait(Qt::Key_PageUp);
        QCOMPARE(fixture.focusedNumber(), 3);
        QCOMPARE(fixture.focusedArea().top(), 0);
        fixture.pressAndWait(Qt::Key_PageUp);
        QCOMPARE(fixture.focusedNumber(), 1);
    }

    void textsOfHubAreNotParsedAsMarkup()
    {
        const QString markup = u"<b>Not bold</b> <img src=\"https://hub.example/picture.png\"> &amp;"_s;
        VHSCover cover = sampleCover();
        cover.title = markup;
        TranscriptFixture fixture(markup, cover);
        QCOMPARE(fixture.shown().count(markup), 2);
        QCOMPARE(fixture.http.count(), 1);
        QVERIFY(TestScreen::textsArePlain(fixture.view));
    }

    void firstPageOfLongTranscriptAppearsQuickly()
    {
        TranscriptFixture fixture;
        const QByteArray record = TranscriptFixture::record(TranscriptFixture::paragraphs(11200));
        QVERIFY(record.size() > 5'000'000);
        QElapsedTimer time;
        time.start();
        fixture.answer(record);
        fixture.waitForFrame();
        // On an idle machine it takes a fifth of that.
        QVERIFY2(time.elapsed() < 1500 * QUILLMERE_SLOWDOWN, qPrintable(QString::number(time.elapsed())));
        qInfo("the first page came after %lld ms", time.elapsed());
        QCOMPARE(fixture.focusedNumber(), 1);
        QVERIFY(fixture.column->itemAt(3));
    }

    void onlyPassagesNearViewportExistAndRepeatedArrowReachesEachOne()
    {
        TranscriptFixture fixture(TranscriptFixture::paragraphs(12000));
        QCOMPARE(fixture.column->model()->rowCount(), 12000);
        QVERIFY(fixture.column->itemCount() < 12);
        constexpr int presses = 200;
        QElapsedTimer time;
        time.start();
        for (int i = 1; i <= presses; ++i) {
            fixture.press(Qt::Key_Down);
            QCOMPARE(fixture.focusedNumber(), i + 1);
        }
        qInfo("a passage took %.1f ms", double(time.elapsed()) / presses);
        fixture.waitUntilIdle();
        QVERIFY(fixture.focusedArea().top() >= 0 && fixture.focusedArea().bottom() <= fixture.page->height());
        for (int i = 0; i < 30; ++i)
            fixture.press(Qt::Key_PageDown);
        fixture.waitUntilIdle();
        QVERIFY(fixture.focusedNumber() > presses + 90);
        QVERIFY(fixture.column->itemCount() < 20);
    }
};

QUILLMERE_TEST(TranscriptViewTest, QGuiApplication)

} // namespace quillmere

#include "TranscriptViewTest.moc"
