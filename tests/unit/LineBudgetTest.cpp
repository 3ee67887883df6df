#include "LineBudget.h"

#include "Rows.h"
#include "TestMain.h"
#include "Typography.h"

#include <QFontMetricsF>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr double width = 1000; // width of every line in points

QFont font()
{
    return Typography::standard(24);
}

double lineHeight()
{
    return std::ceil(QFontMetricsF(font()).height());
}

/** A text of `count` lines. */
QString lines(int count)
{
    return QStringList(count, u"A line"_s).join(u'\n');
}

WrappedText text(const QString& words, int minimumLines = 1, double gap = 0)
{
    return {words, font(), width, gap, minimumLines};
}

} // namespace

/** Tests how texts that share a height divide its lines between them. */
class LineBudgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsThatFitAreShownCompletely()
    {
        QCOMPARE(linesThatFit({text(lines(3)), text(lines(7))}, 10 * lineHeight() + 1), (QList<int>{3, 7}));
    }

    void emptyTextTakesNoLine()
    {
        QCOMPARE(linesThatFit({text({}, 4, 1000), text(lines(5))}, 3 * lineHeight() + 1), (QList<int>{0, 3}));
        QCOMPARE(linesThatFit({}, 100), QList<int>());
        // Without space, every other text keeps one line.
        QCOMPARE(linesThatFit({text(lines(2)), text({}), text(lines(9), 4)}, 5), (QList<int>{1, 0, 1}));
    }

    void earlierTextGetsLinesFirst_data()
    {
        using Lines = QList<int>;
        rows<Lines, Lines, int, Lines>(
            {"requested", "least", "availableLines", "shown"},
            {{"last text is cut", Lines{3, 4, 9}, Lines{1, 1, 1}, 12, Lines{3, 4, 5}},
             {"last two texts are cut", Lines{5, 9, 9}, Lines{1, 1, 1}, 10, Lines{5, 4, 1}},
             {"all texts are cut", Lines{90, 90, 90}, Lines{2, 2, 4}, 15, Lines{9, 2, 4}},
             {"minimum for each text", Lines{90, 90, 90}, Lines{2, 2, 4}, 8, Lines{2, 2, 4}},
             {"short texts leave lines to the first", Lines{90, 1, 1}, Lines{2, 2, 4}, 8, Lines{6, 1, 1}},
             {"less than all minimums", Lines{90, 90, 90}, Lines{2, 2, 4}, 6, Lines{2, 2, 2}},
             {"one line for some texts", Lines{90, 90, 90}, Lines{2, 2, 4}, 4, Lines{2, 1, 1}}});
    }

    void earlierTextGetsLinesFirst()
    {
        QFETCH(const QList<int>, requested);
        QFETCH(const QList<int>, least);
        QFETCH(const int, availableLines);
        QList<WrappedText> texts;
        for (qsizetype i = 0; i < requested.size(); ++i)
            texts.append(text(lines(requested.at(i)), least.at(i)));
        QTEST(linesThatFit(texts, availableLines * lineHeight() + 1), "shown");
    }

    void gapReducesLines()
    {
        const QList<WrappedText> texts{text(lines(2), 1, 24), text(lines(9), 1, 24)};
        QCOMPARE(linesThatFit(texts, 48 + 5 * lineHeight() + 1), (QList<int>{2, 3}));
        QCOMPARE(linesThatFit(texts, 47 + 5 * lineHeight()), (QList<int>{2, 2}));
    }

    void textIsCutAtLastLineThatFits_data()
    {
        rows<QString>({"words"}, {{"English", u"Joint special session of the harbour board "_s.repeated(200)},
                                  {"one word", QString(5000, u'W')},
                                  {"Chinese", u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(100)},
                                  {"Arabic", u"اجتماع مجلس المدينة "_s.repeated(200)},
                                  {"emoji", u"\U0001F6A2\U0001F4FC "_s.repeated(400)},
                                  {"lines", QString(5000, u'\n')}});
    }

    void textIsCutAtLastLineThatFits()
    {
        QFETCH(const QString, words);
        int before = 0;
        for (const double height : {100.0, 200.0, 300.0, 400.0}) {
            const int shown = linesThatFit({text(words)}, height).constFirst();
            QVERIFY(shown > before);
            before = shown;
            // Lines of other scripts may be up to twice as tall.
            QVERIFY(shown * lineHeight() <= height + 1);
            QVERIFY((shown + 1) * lineHeight() * 2 > height);
        }
    }

    void textWrapsAsOnScreen()
    {
        const auto shown = [](const QString& words) { return linesThatFit({text(words)}, 1000).constFirst(); };
        QCOMPARE(shown(u" "_s), 1);
        QCOMPARE(shown(u"A line"_s), 1);
        QCOMPARE(shown(u"A line\n"_s), 1);
        QCOMPARE(shown(u"one\n\nthree"_s), 3);
        QCOMPARE(shown(QString(100, u'W')), 3);
    }
};

QUILLMERE_TEST(LineBudgetTest, QGuiApplication)

} // namespace quillmere

#include "LineBudgetTest.moc"
