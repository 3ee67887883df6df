#include "Rows.h"
#include "StationTexts.h"
#include "TestMain.h"
#include "Typography.h"
#include "ViewerTexts.h"

#include <QFontInfo>
#include <QGlyphRun>
#include <QImage>
#include <QMetaProperty>
#include <QPainter>
#include <QRawFont>
#include <QTest>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

QList<QGlyphRun> glyphsOf(const QString& text, const QFont& font)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.glyphRuns();
}

QRawFont faceOf(const QFont& font)
{
    return QRawFont::fromFont(font);
}

const QList<QPair<const char*, QFont>>& designs()
{
    static const QList<QPair<const char*, QFont>> all{{"standard", Typography::standard(24)},
                                                      {"black", Typography::standard(46, QFont::Black, 2)},
                                                      {"monospaced", Typography::label(20)},
                                                      {"serif italic", Typography::serif(30, QFont::Normal, true)}};
    return all;
}

} // namespace

class FontsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextHasGlyphsInEveryFont_data()
    {
        rows<QString>({"text"}, {{"Chinese", u"市議會會議記錄 · 市议会会议"_s},
                                 {"Japanese", u"市議会の定例会議"_s},
                                 {"Korean", u"시의회 정기 회의"_s},
                                 {"Arabic", u"اجتماع مجلس المدينة"_s},
                                 {"Greek and Cyrillic", u"Συμβούλιο · Городской совет"_s},
                                 {"accents", u"Çöşkün Ñandú Łódź Việt Nam"_s},
                                 {"emoji", u"\U0001F6A2\U0001F4FC\U0001F389\U0001F469\U0000200D\U0001F680"_s},
                                 {"typographic characters", u"‘’“”…–—·•†€£°×÷½→←✓★"_s}});
        for (const char16_t* text : viewerTexts)
            QTest::addRow("%s", qPrintable(QString::fromUtf16(text).left(60))) << QString::fromUtf16(text);
        const StationTexts station;
        const QMetaObject& texts = StationTexts::staticMetaObject;
        for (int i = texts.propertyOffset(); i < texts.propertyCount(); ++i)
            QTest::addRow("%s", texts.property(i).name()) << texts.property(i).read(&station).toString();
        for (const bool live : {true, false}) {
            QTest::addRow("lamp, %d", live) << StationTexts::lampText(live);
            QTest::addRow("tower, %d", live) << StationTexts::towerCaption(live);
        }
    }

    void everyTextHasGlyphsInEveryFont()
    {
        QFETCH(QString, text);
        for (const auto& [name, font] : designs()) {
            const auto runs = glyphsOf(text, font);
            QVERIFY(!runs.isEmpty() || text.trimmed().isEmpty());
            for (const QGlyphRun& run : runs) {
                QVERIFY2(!run.glyphIndexes().contains(0),
                         qPrintable(u"%1: a box from %2"_s.arg(QLatin1StringView(name), run.rawFont().familyName())));
            }
        }
    }

    void weightIsARealFontFace_data()
    {
        rows<QFont, QString, int>(
            {"font", "family", "weight"},
            {{"regular", Typography::standard(24), u"Inter"_s, 400},
             {"semibold", Typography::standard(20, QFont::DemiBold, 3), u"Inter"_s, 600},
             {"bold", Typography::standard(24, QFont::Bold), u"Inter"_s, 700},
             {"black", Typography::standard(78, QFont::Black, 14), u"Inter"_s, 900},
             {"monospaced semibold", Typography::label(20), u"JetBrains Mono"_s, 600},
             {"monospaced bold", Typography::monospaced(64, QFont::Bold), u"JetBrains Mono"_s, 700},
             {"serif", Typography::serif(30), u"Noto Serif"_s, 400}});
    }

    void weightIsARealFontFace()
    {
        QFETCH(QFont, font);
        QFETCH(QString, family);
        QFETCH(int, weight);
        const QRawFont face = faceOf(font);
        QVERIFY2(face.familyName().startsWith(family), qPrintable(face.familyName()));
        // The weight that the font file declares, not one that was emboldened artificially.
        const QByteArray os2 = face.fontTable("OS/2");
        QVERIFY(os2.size() > 6);
        QCOMPARE(int(quint8(os2[4])) * 256 + int(quint8(os2[5])), weight);
    }

    void italicIsARealFontFace_data()
    {
        rows<QFont, QFont>({"upright", "italic"},
                           {{"standard", Typography::standard(30), Typography::standard(30, QFont::Normal, 0, true)},
                            {"serif", Typography::serif(30), Typography::serif(30, QFont::Normal, true)}});
    }

    void italicIsARealFontFace()
    {
        QFETCH(const QFont, upright);
        QFETCH(const QFont, italic);
        QCOMPARE(faceOf(italic).familyName(), faceOf(upright).familyName());
        QCOMPARE(faceOf(italic).style(), QFont::StyleItalic);
        // An artificially slanted font would have the same "post" table as the upright one.
        QVERIFY(faceOf(italic).fontTable("post") != faceOf(upright).fontTable("post"));
    }

    void playSignIsNotDrawnAsEmoji()
    {
        for (const QGlyphRun& run : glyphsOf(u"▶︎"_s, Typography::standard(22)))
            QVERIFY2(!run.rawFont().familyName().contains(u"Emoji"_s), qPrintable(run.rawFont().familyName()));

        QImage drawn(60, 60, QImage::Format_RGB32);
        drawn.fill(Qt::black);
        QPainter painter(&drawn);
        painter.setFont(Typography::standard(40));
        painter.setPen(Qt::white);
        painter.drawText(drawn.rect(), Qt::AlignCenter, u"▶︎"_s);
        painter.end();
        int lit = 0;
        for (int y = 0; y < drawn.height(); ++y) {
            for (int x = 0; x < drawn.width(); ++x) {
                const QColor pixel = drawn.pixelColor(x, y);
                lit += pixel.lightness() > 128;
                QVERIFY(pixel.saturation() == 0);
            }
        }
        QVERIFY(lit > 100);
    }

    void emojiIsDrawnInColour()
    {
        bool inColour = false;
        for (const QGlyphRun& run : glyphsOf(u"\U0001F6A2"_s, Typography::standard(22)))
            inColour |= run.rawFont().familyName().contains(u"Emoji"_s);
        QVERIFY(inColour);
    }
};

QUILLMERE_TEST(FontsTest, QGuiApplication)

} // namespace quillmere

#include "FontsTest.moc"
