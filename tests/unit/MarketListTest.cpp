#include "MarketList.h"
#include "Rows.h"
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
    void init()
    {
        m_tester.reset();
        m_list = std::make_unique<MarketList>();
        m_tester = std::make_unique<QAbstractItemModelTester>(m_list.get());
    }

    void pickerIsShownFromTwoMarketsOn_data()
    {
        rows<QString, QStringList>({"markets", "chips"},
                                   {{"none", {}, {}},
                                    {"one", u"a"_s, {}},
                                    {"two", u"b a"_s, {u"All markets"_s, u"B"_s, u"A"_s}},
                                    {"two with the same slug", u"a a"_s, {u"All markets"_s, u"A"_s, u"A"_s}}});
    }

    void pickerIsShownFromTwoMarketsOn()
    {
        QFETCH(QString, markets);
        QFETCH(QStringList, chips);
        QSignalSpy shown(m_list.get(), &MarketList::isShownChanged);
        show(markets);
        QStringList titles;
        for (int row = 0; row < m_list->rowCount(); ++row)
            titles.append(text(row, MarketList::TitleRole));
        QCOMPARE(titles, chips);
        QCOMPARE(m_list->isShown(), !chips.isEmpty());
        QCOMPARE(shown.count(), chips.isEmpty() ? 0 : 1);
        m_list->setMarkets({}, {});
        QVERIFY(!m_list->isShown());
        QCOMPARE(shown.count(), chips.isEmpty() ? 0 : 2);
    }

    void chipIsSelectedBySlug_data()
    {
        rows<QString, QStringList>({"selection", "chips"}, {{"all", {}, {u"All markets"_s}},
                                                            {"the first", u"a"_s, {u"A"_s}},
                                                            {"the last", u"b"_s, {u"B"_s}},
                                                            {"unknown market", u"c"_s, {}},
                                                            {"different case", u"A"_s, {}}});
    }

    void chipIsSelectedBySlug()
    {
        QFETCH(QString, selection);
        show(u"a b"_s, selection);
        QTEST(selected(), "chips");
    }

    void chipShowsCutNameAndCount()
    {
        CatalogSummary summary = summaryOf(u"a b"_s);
        summary.markets[0].name = QString(100000, u'W');
        summary.markets[1].name = u"Port\nHarbour"_s;
        summary.markets[1].tapes = 9007199254740993;
        m_list->setMarkets(summary, {});
        QCOMPARE(text(0, MarketList::CountRole), u"99"_s);
        QVERIFY(text(1, MarketList::TitleRole).size() <= MarketList::maxTitleLength + 1);
        QVERIFY(chip(1, MarketList::ExtentRole).toInt() < MarketList::maxTitleWidth + 100);
        QCOMPARE(text(1, MarketList::CountRole), u"1"_s);
        QCOMPARE(text(2, MarketList::TitleRole), u"Port Harbour"_s);
        QCOMPARE(text(2, MarketList::CountRole), u"9007199254740993"_s);
    }

    void chipIsAsWideAsItsTexts()
    {
        show(u"a b"_s);
        const double title = QFontMetricsF(MarketList::titleFont()).horizontalAdvance(u"All markets"_s);
        const double count = QFontMetricsF(MarketList::countFont()).horizontalAdvance(u"99"_s);
        const double room = chip(0, MarketList::ExtentRole).toDouble() - 22 - 10 - 22 - title - count;
        QVERIFY2(room >= 0 && room < 2, qPrintable(QString::number(room)));
    }

    void onlyFirst500MarketsHaveChips()
    {
        QStringList slugs;
        for (int i = 0; i < 10000; ++i)
            slugs.append(QString::number(i));
        show(slugs.join(u' '), u"499"_s);
        QCOMPARE(m_list->rowCount(), 1 + 500);
        QCOMPARE(selected(), QStringList{u"499"_s});
        QVERIFY(m_list->isShown());
    }

    void onlyChangedMarketsResetList()
    {
        show(u"a b"_s, u"a"_s);
        QSignalSpy reset(m_list.get(), &MarketList::modelReset);
        QSignalSpy changed(m_list.get(), &MarketList::dataChanged);
        show(u"a b"_s, u"a"_s);
        QCOMPARE(changed.count(), 0);
        show(u"a b"_s, u"b"_s);
        QCOMPARE(selected(), QStringList{u"B"_s});
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(2).value<QList<int>>(), QList<int>{MarketList::SelectedRole});
        QCOMPARE(reset.count(), 0);
        show(u"b a"_s, u"b"_s);
        QCOMPARE(reset.count(), 1);
    }

    void pickEmitsSlug()
    {
        QSignalSpy picked(m_list.get(), &MarketList::picked);
        show(u"a b"_s, u"a"_s);
        for (const int row : {2, 0, 3, -1})
            m_list->pick(row);
        QCOMPARE(picked, (QList<QVariantList>{{u"b"_s}, {QString()}}));
    }

    void currentRowStartsAtSelectedMarket_data()
    {
        rows<QString, int>({"selection", "currentRow"}, {{"all markets", {}, 0},
                                                         {"a market", u"b"_s, 2},
                                                         {"first of two equal slugs", u"c"_s, 3},
                                                         {"unknown market", u"x"_s, -1}});
    }

    void currentRowStartsAtSelectedMarket()
    {
        QFETCH(QString, selection);
        show(u"a b c c"_s, selection);
        QTEST(m_list->currentRow(), "currentRow");
    }

    void currentRowReturnsToSelectedMarketWithoutFocus()
    {
        show(u"a b c"_s, u"b"_s);
        focus(3);
        m_list->setHasFocus(false);
        QCOMPARE(m_list->currentRow(), 3);
        show(u"b c"_s, u"b"_s);
        QCOMPARE(m_list->currentRow(), 1);
        show(u"b c"_s, u"c"_s);
        QCOMPARE(m_list->currentRow(), 2);
        // A market that is not in the list has no chip that could be current.
        show(u"b c"_s, u"x"_s);
        QCOMPARE(m_list->currentRow(), 2);
        show(u"b c d"_s, u"x"_s);
        QCOMPARE(m_list->currentRow(), -1);
    }

    void focusedRowFollowsItsMarket_data()
    {
        // Before: a, b, c; the current row is b, the third chip.
        rows<QString, QString, int>({"after", "selection", "currentRow"},
                                    {{"unchanged", u"a b c"_s, {}, 2},
                                     {"another selection", u"a b c"_s, u"c"_s, 2},
                                     {"moved", u"b a"_s, {}, 1},
                                     {"removed", u"a c d"_s, {}, 2},
                                     {"removed, fewer remain", u"c d"_s, {}, 2},
                                     {"duplicated, same row is kept", u"b b"_s, {}, 2}});
    }

    void focusedRowFollowsItsMarket()
    {
        QFETCH(QString, after);
        QFETCH(QString, selection);
        show(u"a b c"_s);
        focus(2);
        show(after, selection);
        QTEST(m_list->currentRow(), "currentRow");
    }

    void hiddenPickerResetsCurrentRow()
    {
        show(u"a b"_s);
        focus(2);
        show(u"a"_s);
        QCOMPARE(m_list->currentRow(), -1);
        show(u"a b"_s);
        QCOMPARE(m_list->currentRow(), 0);
    }

    void invalidRowAndRowDuringResetAreIgnored()
    {
        show(u"a b"_s);
        focus(2);
        m_list->setCurrentRow(3);
        m_list->setCurrentRow(-1);
        QCOMPARE(m_list->currentRow(), 2);
        connect(m_list.get(), &MarketList::modelReset, this, [this] { m_list->setCurrentRow(0); });
        show(u"a b c"_s);
        QCOMPARE(m_list->currentRow(), 2);
    }

private:
    /** Markets named after their slugs; the first has 1 tape, the second 2, and so on. */
    static CatalogSummary summaryOf(const QString& slugs)
    {
        CatalogSummary summary;
        summary.tapes = 99;
        const auto all = slugs.split(u' ', Qt::SkipEmptyParts);
        for (const QString& slug : all)
            summary.markets.append({slug, slug.toUpper(), {}, summary.markets.size() + 1});
        return summary;
    }

    void show(const QString& slugs, const QString& selection = {}) { m_list->setMarkets(summaryOf(slugs), selection); }

    void focus(int row)
    {
        m_list->setHasFocus(true);
        m_list->setCurrentRow(row);
    }

    QVariant chip(int row, MarketList::Role role) const { return m_list->index(row).data(role); }
    QString text(int row, MarketList::Role role) const { return chip(row, role).toString(); }

    QStringList selected() const
    {
        QStringList titles;
        for (int row = 0; row < m_list->rowCount(); ++row) {
            if (chip(row, MarketList::SelectedRole).toBool())
                titles.append(text(row, MarketList::TitleRole));
        }
        return titles;
    }

    std::unique_ptr<MarketList> m_list;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

QUILLMERE_TEST(MarketListTest, QGuiApplication)

} // namespace quillmere

#include "MarketListTest.moc"
