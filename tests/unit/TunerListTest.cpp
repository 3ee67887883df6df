#include "TunerList.h"
#include "Rows.h"
#include "TestMain.h"

#include <QAbstractItemModelTester>
#include <QFontMetricsF>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the buttons of the tuner strip and the list's current row. */
class TunerListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_tester.reset();
        m_list = std::make_unique<TunerList>();
        m_tester = std::make_unique<QAbstractItemModelTester>(m_list.get());
    }

    void buttonShowsNumberAndLabel()
    {
        m_list->setStations({{u"5"_s, u"5 O'Clock\nNews"_s, u"/a"_s}, {u"7"_s, {}, u"/b"_s}});
        QCOMPARE(m_list->rowCount(), 2);
        QCOMPARE(button(0, TunerList::NumberRole).toString(), u"5"_s);
        QCOMPARE(button(0, TunerList::LabelRole).toString(), u"5 O'Clock News"_s);
        QCOMPARE(button(1, TunerList::LabelRole).toString(), QString());
    }

    void buttonsWithCurrentNumberAreMarked()
    {
        m_list->setStations({{u"5"_s, u"A"_s, u"/a"_s}, {u"5"_s, u"B"_s, u"/b"_s}, {u"6"_s, u"A"_s, u"/a"_s}});
        m_list->setCurrent({u"5"_s, u"elsewhere"_s, u"/c"_s});
        QVERIFY(button(0, TunerList::CurrentRole).toBool());
        QVERIFY(button(1, TunerList::CurrentRole).toBool());
        QVERIFY(!button(2, TunerList::CurrentRole).toBool());
    }

    void veryLongTextsAreCut()
    {
        const QString endless(1'000'000, u'W');
        m_list->setStations({{endless, endless, u"/a"_s}});
        QCOMPARE(button(0, TunerList::NumberRole).toString().size(), 1001);
        QCOMPARE(button(0, TunerList::LabelRole).toString().size(), 1001);
    }

    void buttonIsAtMostAsWideAsStrip_data()
    {
        const QString endless(1000, u'W');
        constexpr double natural = -1;
        rows<QString, QString, double, double, double>({"number", "label", "strip", "numberWidth", "extent"},
                                                       {{"unknown strip width", u"12"_s, endless, 0, natural, natural},
                                                        {"both fit", u"12"_s, u"Parks"_s, 1920, natural, natural},
                                                        {"a long label", u"12"_s, endless, 1920, natural, 1820},
                                                        {"a long number", endless, QString(), 1920, 1718, 1820},
                                                        {"both too long", endless, endless, 1920, 859, 1820},
                                                        {"on a wider strip", u"12"_s, endless, 2560, natural, 2460}});
    }

    void buttonIsAtMostAsWideAsStrip()
    {
        QFETCH(const QString, number);
        QFETCH(const QString, label);
        QFETCH(const double, strip);
        QFETCH(const double, numberWidth);
        QFETCH(const double, extent);
        m_list->setStations({{number, label, u"/a"_s}});
        m_list->setStripWidth(strip);
        const int wholeNumber = qCeil(QFontMetricsF(TunerList::numberFont()).horizontalAdvance(number));
        const int wholeLabel = qCeil(QFontMetricsF(TunerList::labelFont()).horizontalAdvance(label));
        QCOMPARE(button(0, TunerList::NumberWidthRole).toDouble(), numberWidth < 0 ? wholeNumber : numberWidth);
        QCOMPARE(button(0, TunerList::ExtentRole).toDouble(),
                 extent < 0 ? 2.0 * 46 + 10 + wholeNumber + wholeLabel : extent);
    }

    void widthChangeDoesNotResetButtonsThatFit()
    {
        m_list->setStations(stations({u"5"_s, u"6"_s}));
        m_list->setCurrent(station(u"6"_s));
        const QSignalSpy resets(m_list.get(), &QAbstractItemModel::modelReset);
        m_list->setStripWidth(1920);
        m_list->setStripWidth(2560);
        QCOMPARE(resets.count(), 0);
        m_list->setStripWidth(300);
        QCOMPARE(resets.count(), 1);
        QCOMPARE(m_list->currentRow(), 1);
    }

    void onlyFirst500StationsHaveButtons()
    {
        QStringList numbers;
        for (int number = 0; number < 10'000; ++number)
            numbers.append(QString::number(number));
        m_list->setStations(stations(numbers));
        QCOMPARE(m_list->rowCount(), 500);
        QCOMPARE(button(499, TunerList::NumberRole).toString(), u"499"_s);
    }

    void sameStationsAgainChangeNothing()
    {
        m_list->setStations(stations({u"5"_s, u"6"_s}));
        m_list->setCurrent(station(u"5"_s));
        const QSignalSpy resets(m_list.get(), &QAbstractItemModel::modelReset);
        const QSignalSpy changes(m_list.get(), &QAbstractItemModel::dataChanged);
        m_list->setStations(stations({u"5"_s, u"6"_s}));
        m_list->setCurrent(station(u"5"_s));
        QCOMPARE(resets.count() + changes.count(), 0);
        m_list->setCurrent(station(u"6"_s));
        QCOMPARE(resets.count(), 0);
        QCOMPARE(changes.count(), 1);
    }

    void pickEmitsStation()
    {
        m_list->setStations({{u"5"_s, u"A"_s, u"/a"_s}, {u"5"_s, u"B"_s, u"/b"_s}});
        QSignalSpy picks(m_list.get(), &TunerList::picked);
        m_list->pick(1);
        m_list->pick(-1);
        m_list->pick(2);
        QCOMPARE(picks.count(), 1);
        QCOMPARE(picks.at(0).at(0).value<TunerStation>(), (TunerStation{u"5"_s, u"B"_s, u"/b"_s}));
    }

    void currentRowStartsAtCurrentStation()
    {
        m_list->setStations(stations({u"5"_s, u"6"_s, u"7"_s}));
        m_list->setCurrent(station(u"7"_s));
        QCOMPARE(m_list->currentRow(), 2);
        TunerList other;
        other.setCurrent(station(u"7"_s));
        other.setStations(stations({u"5"_s, u"6"_s, u"7"_s}));
        QCOMPARE(other.currentRow(), 2);
    }

    void currentRowFollowsCurrentStation()
    {
        m_list->setStations(stations({u"5"_s, u"6"_s, u"7"_s}));
        m_list->setCurrent(station(u"5"_s));
        m_list->setCurrent(station(u"6"_s));
        QCOMPARE(m_list->currentRow(), 1);
        // The hub inserts another station before it.
        m_list->setStations(stations({u"3"_s, u"5"_s, u"6"_s}));
        QCOMPARE(m_list->currentRow(), 2);
        m_list->setCurrent(station(u"3"_s));
        QCOMPARE(m_list->currentRow(), 0);
    }

    void currentRowStaysAfterViewerMoved()
    {
        m_list->setStations(stations({u"5"_s, u"6"_s, u"7"_s}));
        m_list->setCurrent(station(u"5"_s));
        m_list->setCurrentRow(2);
        m_list->setCurrent(station(u"6"_s));
        QCOMPARE(m_list->currentRow(), 2);
    }

    void currentRowFollowsItsStation_data()
    {
        rows<QStringList, int, QStringList, int>(
            {"before", "currentRow", "after", "newCurrentRow"},
            {{"station added before", QStringList{u"5"_s, u"7"_s}, 1, QStringList{u"5"_s, u"6"_s, u"7"_s}, 2},
             {"station removed", QStringList{u"5"_s, u"6"_s, u"7"_s}, 1, QStringList{u"7"_s, u"5"_s}, 1},
             {"station and current station removed", QStringList{u"5"_s, u"6"_s, u"7"_s}, 2, QStringList{u"8"_s}, 0},
             {"two with the same number", QStringList{u"5"_s, u"5"_s}, 1, QStringList{u"5"_s, u"5"_s, u"6"_s}, 1},
             {"all removed", QStringList{u"5"_s, u"6"_s}, 1, QStringList(), -1}});
    }

    void currentRowFollowsItsStation()
    {
        QFETCH(QStringList, before);
        QFETCH(int, currentRow);
        QFETCH(QStringList, after);
        m_list->setStations(stations(before));
        m_list->setCurrent(station(u"5"_s));
        m_list->setCurrentRow(currentRow);
        m_list->setStations(stations(after));
        QTEST(m_list->currentRow(), "newCurrentRow");
    }

private:
    static TunerStation station(const QString& number)
    {
        return {number, u"Channel "_s + number, u"/live/"_s + number};
    }

    static QList<TunerStation> stations(const QStringList& numbers)
    {
        QList<TunerStation> stations;
        for (const QString& number : numbers)
            stations.append(station(number));
        return stations;
    }

    QVariant button(int row, TunerList::Role role) const { return m_list->index(row).data(role); }

    std::unique_ptr<TunerList> m_list;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

QUILLMERE_TEST(TunerListTest, QGuiApplication)

} // namespace quillmere

#include "TunerListTest.moc"
