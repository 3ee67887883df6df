#include "Picture.h"
#include "Rows.h"
#include "TestMain.h"
#include "TextReader.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the text reader and picture measurements that the tour, the journey tests and the benchmarks use. */
class ScreenReadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneWrongLetterInEightIsAccepted_data()
    {
        const QString line = u"every one plays right here"_s;
        rows<QString, QString, bool>({"text", "searched", "contained"},
                                     {{"the same", u"Tuning in…"_s, u"Tuning in…"_s, true},
                                      {"punctuation and case", u"TUNING, IN"_s, u"Tuning in…"_s, true},
                                      {"inside a longer text", u"x Press > to refresh y"_s, u"to refresh"_s, true},
                                      {"across a line break", u"every one plays\nright here"_s, line, true},
                                      {"a wrong letter", u"Tun1ng in"_s, u"Tuning in…"_s, true},
                                      {"a missing letter", u"Tunng in"_s, u"Tuning in…"_s, true},
                                      {"two wrong letters", u"Tun1nq in"_s, u"Tuning in…"_s, false},
                                      {"a short word must be right", u"LlVE"_s, u"LIVE"_s, false},
                                      {"a wrong digit", u"269 tapes in stock"_s, u"268 tapes in stock"_s, false},
                                      {"a missing digit", u"26 tapes in stock"_s, u"268 tapes in stock"_s, false},
                                      {"an extra digit", u"2168 tapes in stock"_s, u"268 tapes in stock"_s, false},
                                      {"empty", {}, u"LIVE"_s, false}});
    }

    void oneWrongLetterInEightIsAccepted()
    {
        QFETCH(QString, text);
        QFETCH(QString, searched);
        QTEST(TextReader::contains(text, searched), "contained");
    }

    void recordingPositionIsReadFromBlocks_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<int>("seconds");
        for (const QSize size : {QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
            for (const int seconds : {0, 1, 5, 330, 4095})
                QTest::addRow("%d at %d", seconds, size.width()) << size << seconds;
        }
    }

    void recordingPositionIsReadFromBlocks()
    {
        QFETCH(QSize, screen);
        QFETCH(int, seconds);
        QImage image(screen, QImage::Format_RGB32);
        image.fill(QColor(90, 60, 40));
        QPainter painter(&image);
        const int top = screen.height() * 660 / 720;
        for (int bit = 0; bit < 12; ++bit) {
            const int left = (11 - bit) * screen.width() / 12;
            const QColor compressed = (seconds >> bit & 1) != 0 ? QColor(240, 236, 244) : QColor(14, 18, 10);
            painter.fillRect(left, top, screen.width() / 12 + 1, screen.height() - top, compressed);
        }
        painter.end();
        QCOMPARE(picture::recordedSeconds(image), std::optional(seconds));
    }

    void pictureWithoutBlocksHasNoPosition()
    {
        QImage image(1920, 1080, QImage::Format_RGB32);
        image.fill(QColor(90, 120, 140));
        QCOMPARE(picture::recordedSeconds(image), std::nullopt);
    }

    void canvasIsCentredOnScreenOfOtherRatio()
    {
        QCOMPARE(picture::pixels({1920, 1080}, {100, 200, 300, 400}), QRect(100, 200, 300, 400));
        QCOMPARE(picture::pixels({3840, 2160}, {100, 200, 300, 400}), QRect(200, 400, 600, 800));
        QCOMPARE(picture::pixels({1920, 1200}, {0, 0, 1920, 1080}), QRect(0, 60, 1920, 1080));
    }

    void differenceBelowToleranceIsIgnored()
    {
        QImage one(1920, 1080, QImage::Format_RGB32);
        one.fill(QColor(100, 100, 100));
        QImage other = one;
        other.fill(QColor(104, 100, 100));
        QCOMPARE(picture::difference(one, other, {0, 0, 1920, 1080}, 8), 0.0);
        QCOMPARE(picture::difference(one, other, {0, 0, 1920, 1080}, 3), 1.0);
        QCOMPARE(picture::shareOf(one, {0, 0, 1920, 1080}, QColor(100, 100, 104), 8), 1.0);
        QCOMPARE(picture::difference(one, QImage(1280, 720, QImage::Format_RGB32), {0, 0, 1920, 1080}), 1.0);
    }
};

QUILLMERE_TEST(ScreenReadingTest, QCoreApplication)

} // namespace quillmere

#include "ScreenReadingTest.moc"
