#include "MarketList.h"
#include "TestMain.h"

#include <QAbstractItemModelTester>
#include <QFontMetricsF>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the chips of the market picker and the list's current row. */
class MarketListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void pickerIsShownFromTwoMarketsOn_data();
    void pickerIsShownFromTwoMarketsOn();
    void chipIsSelectedBySlug_data();
    void chipIsSelectedBySlug();
    void chipShowsNameAndCount();
    void chipIsAsWideAsItsTexts();
    void longNameIsCut();
    void onlyFirst500MarketsHaveChips();
    void sameMarketsAgainChangeNothing();
    void anotherSelectionChangesOnlySelectedRole();
    void pickEmitsSlug();
    void currentRowStartsAtSelectedMarket_data();
    void currentRowStartsAtSelectedMarket();
    void currentRowReturnsToSelectedMarketWithoutFocus();
    void selectionChangeKeepsFocusedRow();
    void currentRowFollowsItsMarket_data();
    void currentRowFollowsItsMarket();
    void hiddenPickerResetsCurrentRow();
    void currentRowIsUnchangedByRowThatDoesNotExist();
    void setCurrentRowIsIgnoredDuringReset();

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

/** Markets named after their slugs; the first has 1 tape, the second 2, and so on. */
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

void MarketListTest::pickerIsShownFromTwoMarketsOn_data()
{
    QTest::addColumn<QStringList>("markets");
    QTest::addColumn<QStringList>("chips");
    QTest::newRow("none") << QStringList() << QStringList();
    QTest::newRow("one") << QStringList{u"a"_s} << QStringList();
    QTest::newRow("two") << QStringList{u"b"_s, u"a"_s} << QStringList{u"All markets"_s, u"B"_s, u"A"_s};
    QTest::newRow("two with the same slug")
        << QStringList{u"a"_s, u"a"_s} << QStringList{u"All markets"_s, u"A"_s, u"A"_s};
}

void MarketListTest::pickerIsShownFromTwoMarketsOn()
{
    QFETCH(QStringList, markets);
    QFETCH(QStringList, chips);
    QSignalSpy shown(m_list.get(), &MarketList::isShownChanged);
    m_list->setMarkets(summaryOf(markets), {});
    QStringList titles;
    for (int row = 0; row < m_list->rowCount(); ++row)
        titles.append(chip(row, MarketList::TitleRole).toString());
    QCOMPARE(titles, chips);
    QCOMPARE(m_list->isShown(), !chips.isEmpty());
    QCOMPARE(shown.count(), chips.isEmpty() ? 0 : 1);
    m_list->setMarkets({}, {});
    QVERIFY(!m_list->isShown());
    QCOMPARE(shown.count(), chips.isEmpty() ? 0 : 2);
}

void MarketListTest::chipIsSelectedBySlug_data()
{
    QTest::addColumn<QString>("selection");
    QTest::addColumn<QStringList>("chips");
    QTest::newRow("all") << QString() << QStringList{u"All markets"_s};
    QTest::newRow("the first") << u"a"_s << QStringList{u"A"_s};
    QTest::newRow("the last") << u"b"_s << QStringList{u"B"_s};
    QTest::newRow("unknown market") << u"c"_s << QStringList();
    QTest::newRow("different case") << u"A"_s << QStringList();
}

void MarketListTest::chipIsSelectedBySlug()
{
    QFETCH(QString, selection);
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), selection);
    QTEST(selected(), "chips");
}

void MarketListTest::chipShowsNameAndCount()
{
    CatalogSummary summary = summaryOf({u"a"_s, u"b"_s});
    summary.markets[1].name = u"Port\nHarbour"_s;
    summary.markets[1].tapes = 9007199254740993;
    m_list->setMarkets(summary, {});
    QCOMPARE(chip(0, MarketList::CountRole).toString(), u"99"_s);
    QCOMPARE(chip(1, MarketList::CountRole).toString(), u"1"_s);
    QCOMPARE(chip(2, MarketList::TitleRole).toString(), u"Port Harbour"_s);
    QCOMPARE(chip(2, MarketList::CountRole).toString(), u"9007199254740993"_s);
}

void MarketListTest::chipIsAsWideAsItsTexts()
{
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), {});
    const double title = QFontMetricsF(MarketList::titleFont()).horizontalAdvance(u"All markets"_s);
    const double count = QFontMetricsF(MarketList::countFont()).horizontalAdvance(u"99"_s);
    const double room = chip(0, MarketList::ExtentRole).toDouble() - 22 - 10 - 22 - title - count;
    QVERIFY2(room >= 0 && room < 2, qPrintable(QString::number(room)));
}

void MarketListTest::longNameIsCut()
{
    CatalogSummary summary = summaryOf({u"a"_s, u"b"_s});
    summary.markets[0].name = QString(100000, u'W');
    m_list->setMarkets(summary, {});
    QVERIFY(chip(1, MarketList::TitleRole).toString().size() <= MarketList::maxTitleLength + 1);
    QVERIFY(chip(1, MarketList::ExtentRole).toInt() < MarketList::maxTitleWidth + 100);
}

void MarketListTest::onlyFirst500MarketsHaveChips()
{
    QStringList slugs;
    for (int i = 0; i < 10000; ++i)
        slugs.append(QString::number(i));
    m_list->setMarkets(summaryOf(slugs), u"499"_s);
    QCOMPARE(m_list->rowCount(), 1 + 500);
    QCOMPARE(selected(), QStringList{u"499"_s});
    QVERIFY(m_list->isShown());
}

void MarketListTest::sameMarketsAgainChangeNothing()
{
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), u"a"_s);
    QSignalSpy reset(m_list.get(), &MarketList::modelReset);
    QSignalSpy changed(m_list.get(), &MarketList::dataChanged);
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), u"a"_s);
    QCOMPARE(reset.count(), 0);
    QCOMPARE(changed.count(), 0);
    m_list->setMarkets(summaryOf({u"b"_s, u"a"_s}), u"a"_s);
    QCOMPARE(reset.count(), 1);
}

void MarketListTest::anotherSelectionChangesOnlySelectedRole()
{
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), u"a"_s);
    QSignalSpy reset(m_list.get(), &MarketList::modelReset);
    QSignalSpy changed(m_list.get(), &MarketList::dataChanged);
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), u"b"_s);
    QCOMPARE(selected(), QStringList{u"B"_s});
    QCOMPARE(reset.count(), 0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(2).value<QList<int>>(), QList<int>{MarketList::SelectedRole});
}

void MarketListTest::pickEmitsSlug()
{
    QSignalSpy picked(m_list.get(), &MarketList::picked);
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), u"a"_s);
    m_list->pick(2);
    m_list->pick(0);
    m_list->pick(3);
    m_list->pick(-1);
    QCOMPARE(picked, (QList<QVariantList>{{u"b"_s}, {QString()}}));
}

void MarketListTest::currentRowStartsAtSelectedMarket_data()
{
    QTest::addColumn<QString>("selection");
    QTest::addColumn<int>("currentRow");
    QTest::newRow("all markets") << QString() << 0;
    QTest::newRow("a market") << u"b"_s << 2;
    QTest::newRow("first of two equal slugs") << u"c"_s << 3;
    QTest::newRow("unknown market") << u"x"_s << -1;
}

void MarketListTest::currentRowStartsAtSelectedMarket()
{
    QFETCH(QString, selection);
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s, u"c"_s, u"c"_s}), selection);
    QTEST(m_list->currentRow(), "currentRow");
}

void MarketListTest::currentRowReturnsToSelectedMarketWithoutFocus()
{
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s, u"c"_s}), u"b"_s);
    m_list->setHasFocus(true);
    m_list->setCurrentRow(3);
    m_list->setHasFocus(false);
    QCOMPARE(m_list->currentRow(), 3);
    m_list->setMarkets(summaryOf({u"b"_s, u"c"_s}), u"b"_s);
    QCOMPARE(m_list->currentRow(), 1);
    m_list->setMarkets(summaryOf({u"b"_s, u"c"_s}), u"c"_s);
    QCOMPARE(m_list->currentRow(), 2);
    // A market that is not in the list has no chip that could be current.
    m_list->setMarkets(summaryOf({u"b"_s, u"c"_s}), u"x"_s);
    QCOMPARE(m_list->currentRow(), 2);
    m_list->setMarkets(summaryOf({u"b"_s, u"c"_s, u"d"_s}), u"x"_s);
    QCOMPARE(m_list->currentRow(), -1);
}

void MarketListTest::selectionChangeKeepsFocusedRow()
{
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s, u"c"_s}), u"b"_s);
    m_list->setHasFocus(true);
    m_list->setCurrentRow(1);
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s, u"c"_s}), u"c"_s);
    QCOMPARE(m_list->currentRow(), 1);
}

void MarketListTest::currentRowFollowsItsMarket_data()
{
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<int>("currentRow");
    // Before: a, b, c; the current row is b, the third chip.
    QTest::newRow("unchanged") << QStringList{u"a"_s, u"b"_s, u"c"_s} << 2;
    QTest::newRow("moved") << QStringList{u"b"_s, u"a"_s} << 1;
    QTest::newRow("removed") << QStringList{u"a"_s, u"c"_s, u"d"_s} << 2;
    QTest::newRow("removed, fewer remain") << QStringList{u"c"_s, u"d"_s} << 2;
    QTest::newRow("duplicated, same row is kept") << QStringList{u"b"_s, u"b"_s} << 2;
}

void MarketListTest::currentRowFollowsItsMarket()
{
    QFETCH(QStringList, after);
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s, u"c"_s}), {});
    m_list->setHasFocus(true);
    m_list->setCurrentRow(2);
    m_list->setMarkets(summaryOf(after), {});
    QTEST(m_list->currentRow(), "currentRow");
}

void MarketListTest::hiddenPickerResetsCurrentRow()
{
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), {});
    m_list->setHasFocus(true);
    m_list->setCurrentRow(2);
    m_list->setMarkets(summaryOf({u"a"_s}), {});
    QCOMPARE(m_list->currentRow(), -1);
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), {});
    QCOMPARE(m_list->currentRow(), 0);
}

void MarketListTest::setCurrentRowIsIgnoredDuringReset()
{
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), {});
    m_list->setHasFocus(true);
    m_list->setCurrentRow(2);
    connect(m_list.get(), &MarketList::modelReset, this, [this] { m_list->setCurrentRow(0); });
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s, u"c"_s}), {});
    QCOMPARE(m_list->currentRow(), 2);
}

void MarketListTest::currentRowIsUnchangedByRowThatDoesNotExist()
{
    m_list->setMarkets(summaryOf({u"a"_s, u"b"_s}), {});
    m_list->setHasFocus(true);
    m_list->setCurrentRow(2);
    m_list->setCurrentRow(3);
    m_list->setCurrentRow(-1);
    QCOMPARE(m_list->currentRow(), 2);
}

QUILLMERE_TEST(MarketListTest, QGuiApplication)

} // namespace quillmere

#include "MarketListTest.moc"
