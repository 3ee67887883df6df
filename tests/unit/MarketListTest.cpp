#include "MarketList.h"

#include <QAbstractItemModelTester>
#include <QFontMetricsF>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/** The market picker's chips, and the viewer's place among them. */
class MarketListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void thereIsAChoiceFromTwoMarketsOn_data();
    void thereIsAChoiceFromTwoMarketsOn();
    void aChipIsSelectedByItsSlug_data();
    void aChipIsSelectedByItsSlug();
    void aChipSaysItsNameAndItsCount();
    void aChipIsAsLongAsItsTexts();
    void aLongNameIsBounded();
    void thereAreChipsForTheFirstMarketsOfVeryMany();
    void whatTheHubSaysAgainChangesNoChip();
    void anotherChoiceChangesOnlyWhichChipIsSelected();
    void pickingTellsTheSlug();
    void thePlaceBeginsAtTheChosenMarket_data();
    void thePlaceBeginsAtTheChosenMarket();
    void whileTheFocusIsElsewhereThePlaceGoesBackToTheChosenMarket();
    void aChoiceUnderTheFocusLeavesThePlaceThere();
    void thePlaceStaysOnItsMarket_data();
    void thePlaceStaysOnItsMarket();
    void aPickerThatGoesForgetsItsPlace();
    void whileTheChipsChangeNoMoveIsTaken();

private:
    static CatalogSummary summaryOf(const QStringList& slugs);
    QVariant chip(int row, MarketList::Role role) const { return m_list->index(row).data(role); }
    QStringList selected() const;

    std::unique_ptr<MarketList> m_list;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void MarketListTest::init()
{
    m_tester.reset();
    m_list = std::make_unique<MarketList>();
    m_tester = std::make_unique<QAbstractItemModelTester>(m_list.get());
}

/** Markets named after their slugs, the first with 1 tape, the next with 2... */
CatalogSummary MarketListTest::summaryOf(const QStringList& slugs)
{
    CatalogSummary summary;
    summary.tapes = 99;
    for (const QString& slug : slugs)
        summary.markets.append({slug, slug.toUpper(), {}, summary.markets.size() + 1});
    return summary;
}

QStringList MarketListTest::selected() const
{
    QStringList titles;
    for (int row = 0; row < m_list->rowCount(); ++row) {
        if (chip(row, MarketList::SelectedRole).toBool())
            titles.append(chip(row, MarketList::TitleRole).toString());
    }
    return titles;
}

void MarketListTest::thereIsAChoiceFromTwoMarketsOn_data()
{
    QTest::addColumn<QStringList>("markets");
    QTest::addColumn<QStringList>("chips");
    QTest::newRow("none") << QStringList() << QStringList();
    QTest::newRow("one") << QStringList{u"a"_s} << QStringList();
    QTest::newRow("two") << QStringList{u"b"_s, u"a"_s} << QStringList{u"All markets"_s, u"B"_s, u"A"_s};
    QTest::newRow("two of one slug") << QStringList{u"a"_s, u"a"_s} << QStringList{u"All markets"_s, u"A"_s, u"A"_s};
}

void MarketListTest::thereIsAChoiceFromTwoMarketsOn()
{
    QFETCH(QStringList, markets);
    QFETCH(QStringList, chips);
    QSignalSpy shown(m_list.get(), &MarketList::isShownChanged);
    m_list->show(summaryOf(markets), {});
    QStringList titles;
    for (int row = 0; row < m_list->rowCount(); ++row)
        titles.append(chip(row, MarketList::TitleRole).toString());
    QCOMPARE(titles, chips);
    QCOMPARE(m_list->isShown(), !chips.isEmpty());
    QCOMPARE(shown.count(), chips.isEmpty() ? 0 : 1);
    m_list->show({}, {});
    QVERIFY(!m_list->isShown());
    QCOMPARE(shown.count(), chips.isEmpty() ? 0 : 2);
}

void MarketListTest::aChipIsSelectedByItsSlug_data()
{
    QTest::addColumn<QString>("selection");
    QTest::addColumn<QStringList>("chips");
    QTest::newRow("all") << QString() << QStringList{u"All markets"_s};
    QTest::newRow("the first") << u"a"_s << QStringList{u"A"_s};
    QTest::newRow("the last") << u"b"_s << QStringList{u"B"_s};
    QTest::newRow("one that is not there") << u"c"_s << QStringList();
    QTest::newRow("in other letters") << u"A"_s << QStringList();
}

void MarketListTest::aChipIsSelectedByItsSlug()
{
    QFETCH(QString, selection);
    m_list->show(summaryOf({u"a"_s, u"b"_s}), selection);
    QTEST(selected(), "chips");
}

void MarketListTest::aChipSaysItsNameAndItsCount()
{
    CatalogSummary summary = summaryOf({u"a"_s, u"b"_s});
    summary.markets[1].name = u"Port\nHarbour"_s;
    summary.markets[1].tapes = 9007199254740993;
    m_list->show(summary, {});
    QCOMPARE(chip(0, MarketList::CountRole).toString(), u"99"_s);
    QCOMPARE(chip(1, MarketList::CountRole).toString(), u"1"_s);
    QCOMPARE(chip(2, MarketList::TitleRole).toString(), u"Port Harbour"_s);
    QCOMPARE(chip(2, MarketList::CountRole).toString(), u"9007199254740993"_s);
}

void MarketListTest::aChipIsAsLongAsItsTexts()
{
    m_list->show(summaryOf({u"a"_s, u"b"_s}), {});
    const double title = QFontMetricsF(MarketList::titleFont()).horizontalAdvance(u"All markets"_s);
    const double count = QFontMetricsF(MarketList::countFont()).horizontalAdvance(u"99"_s);
    const double room = chip(0, MarketList::ExtentRole).toDouble() - 22 - 10 - 22 - title - count;
    QVERIFY2(room >= 0 && room < 2, qPrintable(QString::number(room)));
}

void MarketListTest::aLongNameIsBounded()
{
    CatalogSummary summary = summaryOf({u"a"_s, u"b"_s});
    summary.markets[0].name = QString(100000, u'W');
    m_list->show(summary, {});
    QVERIFY(chip(1, MarketList::TitleRole).toString().size() <= MarketList::longestTitle + 1);
    QVERIFY(chip(1, MarketList::ExtentRole).toInt() < MarketList::widestTitle + 100);
}

void MarketListTest::thereAreChipsForTheFirstMarketsOfVeryMany()
{
    QStringList slugs;
    for (int i = 0; i < 10000; ++i)
        slugs.append(QString::number(i));
    m_list->show(summaryOf(slugs), u"499"_s);
    QCOMPARE(m_list->rowCount(), 1 + 500);
    QCOMPARE(selected(), QStringList{u"499"_s});
    QVERIFY(m_list->isShown());
}

void MarketListTest::whatTheHubSaysAgainChangesNoChip()
{
    m_list->show(summaryOf({u"a"_s, u"b"_s}), u"a"_s);
    QSignalSpy reset(m_list.get(), &MarketList::modelReset);
    QSignalSpy changed(m_list.get(), &MarketList::dataChanged);
    m_list->show(summaryOf({u"a"_s, u"b"_s}), u"a"_s);
    QCOMPARE(reset.count(), 0);
    QCOMPARE(changed.count(), 0);
    m_list->show(summaryOf({u"b"_s, u"a"_s}), u"a"_s);
    QCOMPARE(reset.count(), 1);
}

void MarketListTest::anotherChoiceChangesOnlyWhichChipIsSelected()
{
    m_list->show(summaryOf({u"a"_s, u"b"_s}), u"a"_s);
    QSignalSpy reset(m_list.get(), &MarketList::modelReset);
    QSignalSpy changed(m_list.get(), &MarketList::dataChanged);
    m_list->show(summaryOf({u"a"_s, u"b"_s}), u"b"_s);
    QCOMPARE(selected(), QStringList{u"B"_s});
    QCOMPARE(reset.count(), 0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(2).value<QList<int>>(), QList<int>{MarketList::SelectedRole});
}

void MarketListTest::pickingTellsTheSlug()
{
    QSignalSpy picked(m_list.get(), &MarketList::picked);
    m_list->show(summaryOf({u"a"_s, u"b"_s}), u"a"_s);
    m_list->pick(2);
    m_list->pick(0);
    m_list->pick(3);
    m_list->pick(-1);
    QCOMPARE(picked, (QList<QVariantList>{{u"b"_s}, {QString()}}));
}

void MarketListTest::thePlaceBeginsAtTheChosenMarket_data()
{
    QTest::addColumn<QString>("selection");
    QTest::addColumn<int>("place");
    QTest::newRow("all markets") << QString() << 0;
    QTest::newRow("a market") << u"b"_s << 2;
    QTest::newRow("of two the first") << u"c"_s << 3;
    QTest::newRow("one that is not there") << u"x"_s << -1;
}

void MarketListTest::thePlaceBeginsAtTheChosenMarket()
{
    QFETCH(QString, selection);
    m_list->show(summaryOf({u"a"_s, u"b"_s, u"c"_s, u"c"_s}), selection);
    QTEST(m_list->place(), "place");
}

void MarketListTest::whileTheFocusIsElsewhereThePlaceGoesBackToTheChosenMarket()
{
    m_list->show(summaryOf({u"a"_s, u"b"_s, u"c"_s}), u"b"_s);
    m_list->setHasFocus(true);
    m_list->setPlace(3);
    m_list->setHasFocus(false);
    QCOMPARE(m_list->place(), 3);
    m_list->show(summaryOf({u"b"_s, u"c"_s}), u"b"_s);
    QCOMPARE(m_list->place(), 1);
    m_list->show(summaryOf({u"b"_s, u"c"_s}), u"c"_s);
    QCOMPARE(m_list->place(), 2);
    // One that is not there has no chip to stand in sight.
    m_list->show(summaryOf({u"b"_s, u"c"_s}), u"x"_s);
    QCOMPARE(m_list->place(), 2);
    m_list->show(summaryOf({u"b"_s, u"c"_s, u"d"_s}), u"x"_s);
    QCOMPARE(m_list->place(), -1);
}

void MarketListTest::aChoiceUnderTheFocusLeavesThePlaceThere()
{
    m_list->show(summaryOf({u"a"_s, u"b"_s, u"c"_s}), u"b"_s);
    m_list->setHasFocus(true);
    m_list->setPlace(1);
    m_list->show(summaryOf({u"a"_s, u"b"_s, u"c"_s}), u"c"_s);
    QCOMPARE(m_list->place(), 1);
}

void MarketListTest::thePlaceStaysOnItsMarket_data()
{
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<int>("place");
    // Before: a, b, c, with the viewer at b, the third chip.
    QTest::newRow("the same") << QStringList{u"a"_s, u"b"_s, u"c"_s} << 2;
    QTest::newRow("moved") << QStringList{u"b"_s, u"a"_s} << 1;
    QTest::newRow("gone") << QStringList{u"a"_s, u"c"_s, u"d"_s} << 2;
    QTest::newRow("gone, fewer are left") << QStringList{u"c"_s, u"d"_s} << 2;
    QTest::newRow("of two the one that stayed") << QStringList{u"b"_s, u"b"_s} << 2;
}

void MarketListTest::thePlaceStaysOnItsMarket()
{
    QFETCH(QStringList, after);
    m_list->show(summaryOf({u"a"_s, u"b"_s, u"c"_s}), {});
    m_list->setHasFocus(true);
    m_list->setPlace(2);
    m_list->show(summaryOf(after), {});
    QTEST(m_list->place(), "place");
}

void MarketListTest::aPickerThatGoesForgetsItsPlace()
{
    m_list->show(summaryOf({u"a"_s, u"b"_s}), {});
    m_list->setHasFocus(true);
    m_list->setPlace(2);
    m_list->show(summaryOf({u"a"_s}), {});
    QCOMPARE(m_list->place(), -1);
    m_list->show(summaryOf({u"a"_s, u"b"_s}), {});
    QCOMPARE(m_list->place(), 0);
}

void MarketListTest::whileTheChipsChangeNoMoveIsTaken()
{
    m_list->show(summaryOf({u"a"_s, u"b"_s}), {});
    m_list->setHasFocus(true);
    m_list->setPlace(2);
    connect(m_list.get(), &MarketList::modelReset, this, [this] { m_list->setPlace(0); });
    m_list->show(summaryOf({u"a"_s, u"b"_s, u"c"_s}), {});
    QCOMPARE(m_list->place(), 2);
    m_list->setPlace(4);
    m_list->setPlace(-1);
    QCOMPARE(m_list->place(), 2);
}

QTEST_MAIN(MarketListTest)
#include "MarketListTest.moc"
