#include "LineBudget.h"

#include "Typography.h"

#include <QFontMetricsF>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double width = 1000; // points, of every line

QFont font()
{
    return Typography::standard(24);
}

double lineHeight()
{
    return std::ceil(QFontMetricsF(font()).height());
}

/** A text of so many lines. */
QString lines(int count)
{
    return QStringList(count, u"A line"_s).join(u'\n');
}

WrappedText text(const QString& words, int leastLines = 1, double gap = 0)
{
    return {words, font(), width, gap, leastLines};
}

} // namespace

/** How texts that share a height share its lines. */
class LineBudgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsThatFitAreShownWhole();
    void whatIsNotThereTakesNoRoom();
    void theEarlierTextGoesFirst_data();
    void theEarlierTextGoesFirst();
    void aGapCounts();
    void aTextIsCutAtTheLastLineThatFits_data();
    void aTextIsCutAtTheLastLineThatFits();
    void everyTextKeepsALineInNoRoom();
    void aTextWrapsAsTheScreenDoes_data();
    void aTextWrapsAsTheScreenDoes();
};

void LineBudgetTest::textsThatFitAreShownWhole()
{
    QCOMPARE(linesThatFit({text(lines(3)), text(lines(7))}, 10 * lineHeight() + 1), (QList<int>{3, 7}));
}

void LineBudgetTest::whatIsNotThereTakesNoRoom()
{
    QCOMPARE(linesThatFit({text({}, 4, 1000), text(lines(5))}, 3 * lineHeight() + 1), (QList<int>{0, 3}));
    QCOMPARE(linesThatFit({}, 100), QList<int>());
}

void LineBudgetTest::theEarlierTextGoesFirst_data()
{
    QTest::addColumn<QList<int>>("wanted");
    QTest::addColumn<QList<int>>("least");
    QTest::addColumn<int>("room"); // lines
    QTest::addColumn<QList<int>>("shown");
    using Lines = QList<int>;
    QTest::newRow("the last one is cut") << Lines{3, 4, 9} << Lines{1, 1, 1} << 12 << Lines{3, 4, 5};
    QTest::newRow("the last two are cut") << Lines{5, 9, 9} << Lines{1, 1, 1} << 10 << Lines{5, 4, 1};
    QTest::newRow("all are cut") << Lines{90, 90, 90} << Lines{2, 2, 4} << 15 << Lines{9, 2, 4};
    QTest::newRow("the least of each") << Lines{90, 90, 90} << Lines{2, 2, 4} << 8 << Lines{2, 2, 4};
    QTest::newRow("a short one leaves its least") << Lines{90, 1, 1} << Lines{2, 2, 4} << 8 << Lines{6, 1, 1};
    QTest::newRow("not even the least") << Lines{90, 90, 90} << Lines{2, 2, 4} << 6 << Lines{2, 2, 2};
    QTest::newRow("hardly any") << Lines{90, 90, 90} << Lines{2, 2, 4} << 4 << Lines{2, 1, 1};
}

void LineBudgetTest::theEarlierTextGoesFirst()
{
    QFETCH(const QList<int>, wanted);
    QFETCH(const QList<int>, least);
    QFETCH(const int, room);
    QList<WrappedText> texts;
    for (qsizetype i = 0; i < wanted.size(); ++i)
        texts.append(text(lines(wanted.at(i)), least.at(i)));
    QTEST(linesThatFit(texts, room * lineHeight() + 1), "shown");
}

void LineBudgetTest::aGapCounts()
{
    const QList<WrappedText> texts{text(lines(2), 1, 24), text(lines(9), 1, 24)};
    QCOMPARE(linesThatFit(texts, 48 + 5 * lineHeight() + 1), (QList<int>{2, 3}));
    QCOMPARE(linesThatFit(texts, 47 + 5 * lineHeight()), (QList<int>{2, 2}));
}

void LineBudgetTest::aTextIsCutAtTheLastLineThatFits_data()
{
    QTest::addColumn<QString>("words");
    QTest::newRow("English") << u"Joint special session of the harbour board "_s.repeated(200);
    QTest::newRow("one word") << QString(5000, u'W');
    QTest::newRow("Chinese") << u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(100);
    QTest::newRow("Arabic") << u"اجتماع مجلس المدينة "_s.repeated(200);
    QTest::newRow("emoji") << u"\U0001F6A2\U0001F4FC "_s.repeated(400);
    QTest::newRow("lines") << QString(5000, u'\n');
}

void LineBudgetTest::aTextIsCutAtTheLastLineThatFits()
{
    QFETCH(const QString, words);
    int before = 0;
    for (const double height : {100.0, 200.0, 300.0, 400.0}) {
        const int shown = linesThatFit({text(words)}, height).constFirst();
        QVERIFY(shown > before);
        before = shown;
        // Lines of other scripts are up to twice as tall.
        QVERIFY(shown * lineHeight() <= height + 1);
        QVERIFY((shown + 1) * lineHeight() * 2 > height);
    }
}

void LineBudgetTest::everyTextKeepsALineInNoRoom()
{
    QCOMPARE(linesThatFit({text(lines(2)), text({}), text(lines(9), 4)}, 5), (QList<int>{1, 0, 1}));
}

void LineBudgetTest::aTextWrapsAsTheScreenDoes_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("shown");
    QTest::newRow("blank") << u" "_s << 1;
    QTest::newRow("one line") << u"A line"_s << 1;
    QTest::newRow("a break at its end") << u"A line\n"_s << 1;
    QTest::newRow("breaks") << u"one\n\nthree"_s << 3;
    QTest::newRow("a word too long") << QString(100, u'W') << 3;
}

void LineBudgetTest::aTextWrapsAsTheScreenDoes()
{
    QFETCH(const QString, words);
    QTEST(linesThatFit({text(words)}, 1000).constFirst(), "shown");
}

QTEST_MAIN(LineBudgetTest)
#include "LineBudgetTest.moc"
