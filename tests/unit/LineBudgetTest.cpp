#include "LineBudget.h"

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
    void textsThatFitAreShownCompletely();
    void emptyTextTakesNoLine();
    void earlierTextGetsLinesFirst_data();
    void earlierTextGetsLinesFirst();
    void gapReducesLines();
    void textIsCutAtLastLineThatFits_data();
    void textIsCutAtLastLineThatFits();
    void everyTextKeepsOneLineWithoutSpace();
    void textWrapsAsOnScreen_data();
    void textWrapsAsOnScreen();
};

void LineBudgetTest::textsThatFitAreShownCompletely()
{
    QCOMPARE(linesThatFit({text(lines(3)), text(lines(7))}, 10 * lineHeight() + 1), (QList<int>{3, 7}));
}

void LineBudgetTest::emptyTextTakesNoLine()
{
    QCOMPARE(linesThatFit({text({}, 4, 1000), text(lines(5))}, 3 * lineHeight() + 1), (QList<int>{0, 3}));
    QCOMPARE(linesThatFit({}, 100), QList<int>());
}

void LineBudgetTest::earlierTextGetsLinesFirst_data()
{
    QTest::addColumn<QList<int>>("requested");
    QTest::addColumn<QList<int>>("least");
    QTest::addColumn<int>("available"); // in lines
    QTest::addColumn<QList<int>>("shown");
    using Lines = QList<int>;
    QTest::newRow("last text is cut") << Lines{3, 4, 9} << Lines{1, 1, 1} << 12 << Lines{3, 4, 5};
    QTest::newRow("last two texts are cut") << Lines{5, 9, 9} << Lines{1, 1, 1} << 10 << Lines{5, 4, 1};
    QTest::newRow("all texts are cut") << Lines{90, 90, 90} << Lines{2, 2, 4} << 15 << Lines{9, 2, 4};
    QTest::newRow("minimum for each text") << Lines{90, 90, 90} << Lines{2, 2, 4} << 8 << Lines{2, 2, 4};
    QTest::newRow("short texts leave lines to the first") << Lines{90, 1, 1} << Lines{2, 2, 4} << 8 << Lines{6, 1, 1};
    QTest::newRow("less than all minimums") << Lines{90, 90, 90} << Lines{2, 2, 4} << 6 << Lines{2, 2, 2};
    QTest::newRow("one line for some texts") << Lines{90, 90, 90} << Lines{2, 2, 4} << 4 << Lines{2, 1, 1};
}

void LineBudgetTest::earlierTextGetsLinesFirst()
{
    QFETCH(const QList<int>, requested);
    QFETCH(const QList<int>, least);
    QFETCH(const int, available);
    QList<WrappedText> texts;
    for (qsizetype i = 0; i < requested.size(); ++i)
        texts.append(text(lines(requested.at(i)), least.at(i)));
    QTEST(linesThatFit(texts, available * lineHeight() + 1), "shown");
}

void LineBudgetTest::gapReducesLines()
{
    const QList<WrappedText> texts{text(lines(2), 1, 24), text(lines(9), 1, 24)};
    QCOMPARE(linesThatFit(texts, 48 + 5 * lineHeight() + 1), (QList<int>{2, 3}));
    QCOMPARE(linesThatFit(texts, 47 + 5 * lineHeight()), (QList<int>{2, 2}));
}

void LineBudgetTest::textIsCutAtLastLineThatFits_data()
{
    QTest::addColumn<QString>("words");
    QTest::newRow("English") << u"Joint special session of the harbour board "_s.repeated(200);
    QTest::newRow("one word") << QString(5000, u'W');
    QTest::newRow("Chinese") << u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(100);
    QTest::newRow("Arabic") << u"اجتماع مجلس المدينة "_s.repeated(200);
    QTest::newRow("emoji") << u"\U0001F6A2\U0001F4FC "_s.repeated(400);
    QTest::newRow("lines") << QString(5000, u'\n');
}

void LineBudgetTest::textIsCutAtLastLineThatFits()
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

void LineBudgetTest::everyTextKeepsOneLineWithoutSpace()
{
    QCOMPARE(linesThatFit({text(lines(2)), text({}), text(lines(9), 4)}, 5), (QList<int>{1, 0, 1}));
}

void LineBudgetTest::textWrapsAsOnScreen_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("shown");
    QTest::newRow("blank") << u" "_s << 1;
    QTest::newRow("one line") << u"A line"_s << 1;
    QTest::newRow("line break at the end") << u"A line\n"_s << 1;
    QTest::newRow("line breaks") << u"one\n\nthree"_s << 3;
    QTest::newRow("a word too long") << QString(100, u'W') << 3;
}

void LineBudgetTest::textWrapsAsOnScreen()
{
    QFETCH(const QString, words);
    QTEST(linesThatFit({text(words)}, 1000).constFirst(), "shown");
}

QUILLMERE_TEST(LineBudgetTest, QGuiApplication)

} // namespace quillmere

#include "LineBudgetTest.moc"
