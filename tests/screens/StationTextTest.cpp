#include "FrontFixture.h"
#include "Rows.h"
#include "StationTextItem.h"
#include "TestMain.h"

#include <QTextBlock>
#include <QTextDocument>

namespace quillmere {

namespace {

/** The bounding rectangle of the pixels of a text on black. */
QRect ink(const QImage& picture)
{
    QRect area;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != qRgb(0, 0, 0))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

/** One text in a window, white on black, 100 points from the top left corner. */
struct OneText : TestScreen
{
    OneText(const QString& text, const QString& properties, double scale = 1) : TestScreen(QSize(1100, 800) * scale)
    {
        const QString root = u"Item { property string text; scale: %1; transformOrigin: Item.TopLeft; "_s.arg(scale);
        const QString station =
            u"StationText { x: 100; y: 100; text: parent.text; color: 'white'; font: Typography.standard(26); "_s;
        QQuickItem* const frame = load(root + station + properties + u"} }"_s, {{u"text"_s, text}});
        item = qobject_cast<StationTextItem*>(first(frame, "StationText"));
    }
    const QTextDocument* document() const { return item->document()->textDocument(); }

    StationTextItem* item = nullptr;
};

const QString wrapped = u"width: 400; wraps: true; "_s;
const QString judge = u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s;

void addScripts()
{
    rows<QString>({"words"},
                  {{"Latin", u"The council meets "_s},
                   {"Arabic", u"اجتماع مجلس المدينة حول الميزانية "_s},
                   {"Devanagari", u"नगर परिषद की बैठक "_s},
                   {"Thai", u"การประชุมสภาเมือง ที่นี่ "_s},
                   {"Chinese", u"市議會定期會議 "_s},
                   {"Japanese", u"市議会の定例会議 "_s},
                   {"Korean", u"시의회 정기 회의 "_s},
                   {"Hebrew", u"ישיבת מועצת העיר "_s},
                   {"Tamil", u"நகர சபை கூட்டம் "_s},
                   {"emoji", u"\U0001F6A2\U0001F4FC "_s + judge + u' '},
                   {"symbols", u"◈ ★ ⏏ ☎ "_s},
                   {"stacked marks", u"Z\u0338\u0322\u0313\u0351a\u0336\u0301\u0302\u0303\u0304lg\u0337o "_s},
                   {"mixed scripts", u"Council اجتماع परिषद สภา 市議會 \U0001F6A2 "_s}});
}

} // namespace

/** Texts on screens: line breaks, elision, positions. */
class StationTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainTextIsDrawnAsByQtQuickText_data()
    {
        const QString standard = u"font: Typography.standard(30)"_s;
        const QString narrow = standard + u"; width: 300"_s;
        const QString right = standard + u"; width: 900; height: 200; verticalAlignment: Text.AlignVCenter; "
                                         "horizontalAlignment: Text.AlignRight"_s;
        const QString bottom = standard + u"; width: 901; height: 200; verticalAlignment: Text.AlignBottom; "
                                          "horizontalAlignment: Text.AlignHCenter"_s;
        const QString wraps = u"wraps: true"_s;
        const QString spacedLines =
            u"wrapMode: Text.Wrap; lineHeightMode: Text.FixedHeight; lineHeight: 45; bottomPadding: -8"_s;
        const QString wrapAndElide = u"wrapMode: Text.Wrap; elide: Text.ElideRight"_s;
        rows<QString, QString, QString>(
            {"properties", "stationTextProperties", "quickTextProperties"},
            {{"one line", standard, {}, {}},
             {"spaced", u"font: Typography.label(20)"_s, {}, {}},
             {"black", u"font: Typography.standard(52, Font.Black)"_s, {}, {}},
             {"italic", u"font: Typography.standard(30, Font.Normal, 0, true)"_s, {}, {}},
             {"wrapped", narrow, wraps, u"wrapMode: Text.Wrap"_s},
             {"wrapped and centred", narrow + u"; horizontalAlignment: Text.AlignHCenter"_s, wraps,
              u"wrapMode: Text.Wrap"_s},
             {"spaced lines", narrow, u"wraps: true; lineSpacing: 8"_s, spacedLines},
             {"elided", narrow, {}, u"elide: Text.ElideRight"_s},
             {"elided on second line", standard + u"; width: 310; maximumLineCount: 2"_s, wraps, wrapAndElide},
             {"elided by height", narrow + u"; height: 100"_s, wraps, wrapAndElide},
             {"in a box", right, {}, {}},
             {"centred in a box", bottom, {}, {}}});
    }

    void plainTextIsDrawnAsByQtQuickText()
    {
        QFETCH(const QString, properties);
        QFETCH(const QString, stationTextProperties);
        QFETCH(const QString, quickTextProperties);
        const QString text = u"Canvas { %1 { x: 100; y: 100; color: 'white'; "_s +
                             u"text: 'Joint session of the harbour board, 5 March 2024'; %2; %3 } }"_s;
        for (const QSize size : {QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
            TestScreen one(size);
            QQuickItem* const root = one.load(text.arg(u"StationText"_s, properties, stationTextProperties));
            const auto* const item = qobject_cast<StationTextItem*>(TestScreen::first(root, "StationText"));
            TestScreen other(size);
            const QQuickItem* const toolkit = TestScreen::first(
                other.load(text.arg(u"Text"_s, properties, u"textFormat: Text.PlainText; "_s + quickTextProperties)),
                "QQuickText");
            QCOMPARE(item->size(), toolkit->size());
            QCOMPARE(item->baselineOffset(), toolkit->baselineOffset());
            QCOMPARE(item->lineCount(), toolkit->property("lineCount").toInt());
            QCOMPARE(item->isTruncated(), toolkit->property("truncated").toBool());
            QVERIFY(!ink(one.picture()).isEmpty());
            QVERIFY(one.picture() == other.picture());
        }
    }

    void lineHeightIsThatOfOwnFont_data() { addScripts(); }

    void lineHeightIsThatOfOwnFont()
    {
        QFETCH(QString, words);
        const OneText line(words, {});
        const OneText latin(u"The council meets"_s, {});
        QCOMPARE(line.item->height(), latin.item->height());
        QCOMPARE(line.item->baselineOffset(), latin.item->baselineOffset());
        QCOMPARE(line.item->lineCount(), 1);

        const OneText text(words.repeated(9), wrapped + u"lineSpacing: 6"_s);
        QVERIFY(text.item->lineCount() > 1);
        QCOMPARE(text.item->height(), text.item->lineCount() * 38.0 - 6);
        QCOMPARE(text.item->contentHeight(), text.item->height());
        QVERIFY(!text.item->isTruncated());
    }

    void linesAreEvenlySpaced_data() { rows<double>({"scale"}, {{"720p", 2.0 / 3}, {"1080p", 1.0}, {"2160p", 2.0}}); }

    void linesAreEvenlySpaced()
    {
        QFETCH(const double, scale);
        // Each line begins with an upright stroke in the item's own font and continues with letters from another font.
        const QString lines =
            u"I\nI اجتماع\nI\nI परिषद\nI ประชุมที่\nI 市議會\nI \U0001F6A2\nI Z\u0313\u0301\u0302\u0303\nI ◈\nI"_s;
        OneText text(lines, u"wraps: true; width: 700; lineSpacing: 30"_s, scale);
        const QImage picture = text.picture();
        const int stem = [&] {
            const int middle = int((100 + 16) * scale);
            int x = int(100 * scale);
            while (qGray(picture.pixel(x, middle)) < 200)
                ++x;
            return x;
        }();
        QList<int> bottoms;
        for (int y = int(100 * scale); y < picture.height() - 1; ++y) {
            if (qGray(picture.pixel(stem, y)) > 128 && qGray(picture.pixel(stem, y + 1)) <= 128)
                bottoms.append(y);
        }
        QCOMPARE(bottoms.size(), 10);
        for (qsizetype i = 1; i < bottoms.size(); ++i)
            QVERIFY2(std::abs(bottoms.at(i) - bottoms.constFirst() - double(i) * 62 * scale) <= 1,
                     qPrintable(QString::number(i)));
    }

    void letterTallerThanLineIsNotClipped()
    {
        // Once with a tall item and once with a very low one.
        const QString tall = u"ٱلْمَجْلِسُ ۞ Z\u0313\u0301\u0302\u0303\u0304\u0305\u0316\u0317\u0318\u0319"_s;
        OneText text(tall, {});
        OneText tight(tall, u"height: 20"_s);
        const QRect whole = ink(text.picture());
        QVERIFY(whole.top() < 100 || whole.bottom() > 131);
        QCOMPARE(ink(tight.picture()).size(), whole.size());
    }

    void emojiSequenceIsDrawnAsOneGlyph_data()
    {
        rows<QString>({"sign"}, {{"judge", judge},
                                 {"family", u"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"_s},
                                 {"kiss", u"\U0001F469\u200D\u2764\uFE0F\u200D\U0001F48B\u200D\U0001F468"_s},
                                 {"flag", u"\U0001F1EB\U0001F1F7"_s},
                                 {"rainbow flag", u"\U0001F3F3\uFE0F\u200D\U0001F308"_s},
                                 {"keycap", u"1\uFE0F\u20E3"_s},
                                 {"skin tone", u"\U0001F44D\U0001F3FD"_s},
                                 {"selected scales", u"\u2696\uFE0F"_s}});
    }

    void emojiSequenceIsDrawnAsOneGlyph()
    {
        QFETCH(QString, sign);
        const double ship = OneText(u"\U0001F6A2"_s, {}).item->implicitWidth();
        OneText one(sign, {});
        QCOMPARE(one.item->implicitWidth(), ship);
        // The drawn width equals the measured width, both where the item breaks the line and where the document does.
        QVERIFY(ink(one.picture()).width() <= ship + 2);
        QVERIFY(ink(one.picture()).width() > ship - 8);
        OneText many(sign.repeated(10), wrapped);
        QVERIFY(ink(many.picture()).width() <= 10 * ship + 2);
        QCOMPARE(many.item->text(), sign.repeated(10));
    }

    void textIsElidedAtLastLineThatFits_data() { addScripts(); }

    void textIsElidedAtLastLineThatFits()
    {
        QFETCH(QString, words);
        for (const auto& [height, lines] : {std::pair(20, 1), {63, 1}, {64, 2}, {100, 3}, {130, 4}}) {
            const OneText text(words.repeated(60), wrapped + u"height: %1"_s.arg(height));
            QCOMPARE(text.item->lineCount(), lines);
            QVERIFY(text.item->isTruncated());
            QVERIFY(text.item->contentWidth() <= 400);
            QCOMPARE(text.document()->firstBlock().layout()->lineCount(), lines);
            QVERIFY(text.document()->toPlainText().endsWith(u'…'));
        }
        // The same elision, but the item is only as tall as its lines.
        const OneText low(words.repeated(60), wrapped + u"maximumHeight: 100"_s);
        QCOMPARE(low.item->lineCount(), 3);
        QCOMPARE(low.item->height(), 96.0);
        QVERIFY(low.item->isTruncated());
        const OneText two(words.repeated(60), wrapped + u"maximumLineCount: 2"_s);
        QCOMPARE(two.item->lineCount(), 2);
        QCOMPARE(two.item->height(), 64.0);
        QVERIFY(two.item->isTruncated());
    }

    void singleLineIsElidedAtItsEnd_data() { addScripts(); }

    void singleLineIsElidedAtItsEnd()
    {
        QFETCH(QString, words);
        OneText text(words.repeated(30), u"width: 400"_s);
        QCOMPARE(text.item->lineCount(), 1);
        QVERIFY(text.item->isTruncated());
        QVERIFY(text.item->contentWidth() <= 400);
        QVERIFY(text.item->contentWidth() > 340);
        QVERIFY(text.item->implicitWidth() > 1000);
        const QRect drawn = ink(text.picture());
        QVERIFY(drawn.left() > 90 && drawn.right() < 510);
    }

    void textThatFitsIsNotElided()
    {
        const QString line = u"Harbor Day"_s;
        const double width = OneText(line, {}).item->implicitWidth();
        QVERIFY(!OneText(line, u"width: %1"_s.arg(width, 0, 'g', 17)).item->isTruncated());
        QVERIFY(OneText(line, u"width: %1"_s.arg(width - 1, 0, 'g', 17)).item->isTruncated());
        const OneText block(u"The council meets. "_s.repeated(9), wrapped);
        const OneText fits(u"The council meets. "_s.repeated(9), wrapped + u"height: %1"_s.arg(block.item->height()));
        QVERIFY(!fits.item->isTruncated());
        QCOMPARE(fits.item->lineCount(), block.item->lineCount());
        const OneText roomy(u"Harbor Day"_s, wrapped + u"maximumHeight: 500"_s);
        QCOMPARE(roomy.item->height(), 32.0);
        const OneText tiny(u"Harbor Day"_s, wrapped + u"maximumHeight: -20"_s);
        QCOMPARE(tiny.item->lineCount(), 1);
    }

    void elidedItemKeepsItsFullText()
    {
        const QString words = u"The council meets. "_s.repeated(9);
        OneText text(words, u"width: 200"_s);
        QCOMPARE(text.item->text(), words);
        text.item->setWidth(5000);
        QVERIFY(!text.item->isTruncated());
        QCOMPARE(text.document()->toPlainText(), words);
        text.item->setWidth(200);
        QVERIFY(text.item->isTruncated());
    }

    void linesAreBrokenAgainWhenWidthChanges()
    {
        const QString words = u"The council meets. "_s.repeated(9);
        for (const QString& properties : {wrapped, wrapped + u"maximumLineCount: 20"_s}) {
            OneText text(words, properties);
            const int lines = text.item->lineCount();
            text.item->setWidth(200);
            QVERIFY(text.item->lineCount() > lines);
            QCOMPARE(text.item->height(), text.item->lineCount() * 32.0);
            text.item->setWidth(400);
            QCOMPARE(text.item->lineCount(), lines);
            QCOMPARE(text.picture(), OneText(words, properties).picture());
        }
    }

    void newTextReplacesOldOne()
    {
        for (const QString& properties : {QString(), u"width: 120"_s, wrapped}) {
            OneText text(judge + u" Council of the harbour "_s, properties);
            for (const QString& next : {u"1\uFE0F\u20E3 meets"_s, u"اجتماع"_s, QString(), u"1\u20E3 meets"_s}) {
                text.item->setText(next);
                QCOMPARE(text.picture(), OneText(next, properties).picture());
            }
        }
    }

    void widthBoundToImplicitWidthIsUpdatedAtOnce()
    {
        for (const QString& properties : {QString(), u"wraps: true; "_s, u"wraps: true; maximumLineCount: 1; "_s}) {
            OneText text(u"Harbor"_s, properties + u"width: Math.min(implicitWidth, 300)"_s);
            const double harbor = OneText(u"Harbor"_s, {}).item->implicitWidth();
            QCOMPARE(text.item->width(), harbor);
            text.item->setText(u"Harbor Day Parade and Regatta of the whole County"_s);
            QCOMPARE(text.item->width(), 300.0);
            const bool goesOn = properties == u"wraps: true; "_s;
            QCOMPARE(text.item->lineCount() > 1, goesOn);
            QCOMPARE(text.item->isTruncated(), !goesOn);
            text.item->setText(u"Harbor"_s);
            QCOMPARE(text.item->width(), harbor);
            QCOMPARE(text.item->lineCount(), 1);
            QVERIFY(!text.item->isTruncated());
        }
    }

    void alignmentFollowsScriptDirection()
    {
        for (const QString& properties : {u"width: 400"_s, wrapped, wrapped + u"maximumLineCount: 3"_s}) {
            OneText latin(u"Council"_s, properties);
            QVERIFY(ink(latin.picture()).left() < 110);
            OneText arabic(u"اجتماع"_s, properties);
            QVERIFY(ink(arabic.picture()).right() > 490);
            OneText aligned(u"اجتماع"_s, u"horizontalAlignment: Text.AlignLeft; "_s + properties);
            QVERIFY(ink(aligned.picture()).left() < 110);
        }
    }

    void emptyTextHasHeightOfOneLine()
    {
        for (const QString& properties : {QString(), wrapped, u"width: 100"_s}) {
            const OneText text({}, properties);
            QCOMPARE(text.item->height(), 32.0);
            QCOMPARE(text.item->contentWidth(), 0.0);
        }
    }

    void lineBreaksBecomeSpacesInSingleLine()
    {
        const OneText text(u"one\r\ntwo\nthree\u2028four\u2029five\vsix"_s, {});
        QCOMPARE(text.document()->toPlainText(), u"one two three four five six"_s);
        QCOMPARE(text.item->lineCount(), 1);
        const OneText lines(u"one\r\ntwo\nthree\u2028four\u2029five\vsix"_s, wrapped);
        QCOMPARE(lines.item->lineCount(), 6);
        QCOMPARE(lines.document()->blockCount(), 1);
    }

    void anyCodePointIsAccepted_data()
    {
        rows<QString>({"text"}, {{"object replacement characters", u"a\uFFFCb\uFFFC"_s},
                                 {"noncharacters", u"a"_s + QChar(0xFDD0) + u'b' + QChar(0xFDD1)},
                                 {"lone surrogates", u"a"_s + QChar(0xD83D) + u'b' + QChar(0xDC69)},
                                 {"null characters", QString(QChar(0)) + u"a"_s + QChar(0)},
                                 {"control characters", u"a\u0001\u001b[31m\u007f\tb"_s},
                                 {"bidirectional controls", u"\u202eabc\u202c \u2067def\u2069"_s},
                                 {"lone joiners", u"\u200d\u200d\ufe0f\u20e3"_s},
                                 {"markup", u"<b>a</b>&amp;<img src='file:///etc/passwd'>"_s}});
    }

    void anyCodePointIsAccepted()
    {
        QFETCH(const QString, text);
        for (const QString& properties : {QString(), u"width: 40"_s, wrapped, wrapped + u"height: 40"_s}) {
            OneText accepted(text.repeated(5), properties);
            QCOMPARE(accepted.item->text(), text.repeated(5));
            QCOMPARE(accepted.document()->blockCount(), 1);
            QVERIFY(!accepted.picture().isNull());
        }
    }
};

QUILLMERE_TEST(StationTextTest, QGuiApplication)

} // namespace quillmere

#include "StationTextTest.moc"
