#include "ShelfList.h"
#include "Rows.h"
#include "ShelvesOfTapes.h"
#include "TestMain.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace quillmere {

/** Tests the models of the shop's shelves and their current rows. */
class ShelfListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_tester.reset();
        m_list = std::make_unique<ShelfList>();
        m_tester = std::make_unique<QAbstractItemModelTester>(m_list.get());
    }

    void shelvesAndCassettesAreInOrder()
    {
        show(u"B: 4 2; A: 9007199254740993 1"_s);
        QCOMPARE(contents(), u"B: 4 2; A: 9007199254740993 1"_s);
        const QAbstractItemModelTester tester(m_list->row(0));
        QCOMPARE(m_list->row(0)->count(), 2);
        QCOMPARE(m_list->row(0)->caption(), u"City Council · 2024"_s);
        QCOMPARE(m_list->roleNames(),
                 (QHash<int, QByteArray>{{ShelfList::KeyRole, "key"}, {ShelfList::CassettesRole, "cassettes"}}));
        show(u"A: 1"_s);
        QCOMPARE(contents(), u"A: 1"_s);
    }

    void coverWithoutTapeIsCountedButNotShown()
    {
        Shelf shelf = shelfOf(u"A"_s, {1, 2, 3});
        shelf.tapesByID.remove(2);
        m_list->setShelves({shelf});
        QCOMPARE(contents(), u"A: 1 3"_s);
        QCOMPARE(m_list->row(0)->count(), 3);
        QCOMPARE(m_list->row(0)->content().tapes.at(1).title, u"Tape 3"_s);
    }

    void textsAreOneLine()
    {
        Shelf shelf = shelfOf(u"Money\non the Table"_s, {1, 2});
        shelf.covers[0].title = u"Port\nHarbour"_s;
        shelf.covers[1].title = QString(100000, u't');
        for (VHSCover& cover : shelf.covers)
            cover.bodyName = u"City\r\nCouncil"_s;
        m_list->setShelves({shelf});
        const CassetteRow* row = m_list->row(0);
        QCOMPARE(row->name(), u"Money on the Table"_s);
        QCOMPARE(row->caption(), u"City Council · 2024"_s);
        QCOMPARE(row->index(0).data(CassetteRow::TitleRole).toString(), u"Port Harbour"_s);
        QCOMPARE(row->index(1).data(CassetteRow::TitleRole).toString(), QString(1000, u't') + u'…');
    }

    void currentRowIsNoneBeforeFirstMove()
    {
        for (const QString& shelves : {u"A: 1 2; B: 3"_s, u"A: 1; B: 3"_s}) {
            show(shelves);
            QCOMPARE(m_list->currentRow(), -1);
            QCOMPARE(currentRows(), (QList<int>{-1, -1}));
        }
    }

    void onlyMoveToOtherCassetteChangesCurrentRow()
    {
        show(u"A: 1 2; B: 3"_s);
        QSignalSpy moved(m_list.get(), &ShelfList::currentRowChanged);
        makeCurrent(0, 1);
        QCOMPARE(currentTape(), u"A: 2"_s);
        makeCurrent(1, 0);
        QCOMPARE(currentTape(), u"B: 3"_s);
        QCOMPARE(moved.count(), 2);
        makeCurrent(1, 0);
        m_list->setCurrentRow(2);
        m_list->setCurrentRow(-1);
        m_list->row(0)->setCurrentRow(2);
        m_list->row(0)->setCurrentRow(-1);
        QCOMPARE(currentTape(), u"B: 3"_s);
        QCOMPARE(currentRows(), (QList<int>{1, 0}));
        QCOMPARE(moved.count(), 2);
    }

    void equalShelfKeepsItsModelWhenMoved()
    {
        show(u"A: 1; B: 2"_s);
        const CassetteRow* a = m_list->row(0);
        const CassetteRow* b = m_list->row(1);
        const QList<int> keys{keyOf(0), keyOf(1)};
        show(u"B: 2; New: 7; A: 1"_s);
        QCOMPARE(m_list->row(0), b);
        QCOMPARE(m_list->row(2), a);
        QCOMPARE((QList<int>{keyOf(2), keyOf(0)}), keys);
        QVERIFY(!keys.contains(keyOf(1)));
        QCOMPARE(contents(), u"B: 2; New: 7; A: 1"_s);
    }

    void modelOfChangedOrRemovedShelfIsDestroyed_data()
    {
        rows<QString>({"after"}, {{"one more", u"A: 1 2 4; B: 3"_s},
                                  {"one fewer", u"A: 1; B: 3"_s},
                                  {"another order", u"A: 2 1; B: 3"_s},
                                  {"all different", u"A: 4 5; B: 3"_s},
                                  {"no covers", u"A:; B: 3"_s},
                                  {"removed", u"B: 3"_s}});
    }

    void modelOfChangedOrRemovedShelfIsDestroyed()
    {
        QFETCH(QString, after);
        show(u"A: 1 2; B: 3"_s);
        const int key = keyOf(0);
        QSignalSpy destroyed(m_list->row(0), &QObject::destroyed);
        show(after);
        QCOMPARE(contents(), after);
        QVERIFY(keyOf(0) != key);
        QCOMPARE(destroyed.count(), 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(destroyed.count(), 1);
        QCOMPARE(m_list->findChildren<CassetteRow*>().size(), m_list->rowCount());
    }

    void shelvesWithSameNameHaveSeparateModels()
    {
        show(u"A: 1; A: 2"_s);
        const CassetteRow* first = m_list->row(0);
        const CassetteRow* second = m_list->row(1);
        QVERIFY(first != second);
        show(u"A: 1; A: 2; A: 3"_s);
        QCOMPARE(m_list->row(0), first);
        QCOMPARE(m_list->row(1), second);
        QCOMPARE(contents(), u"A: 1; A: 2; A: 3"_s);
    }

    void currentRowFollowsItsTape_data()
    {
        // Before: "A: 1 2 3; B: 4 5 6; C: 7 8"; the current cassette is 5.
        rows<QString, QString>({"after", "currentTape"},
                               {{"unchanged", u"A: 1 2 3; B: 4 5 6; C: 7 8"_s, u"B: 5"_s},
                                {"moved in its shelf", u"A: 1 2 3; B: 9 8 6 4 5; C: 7"_s, u"B: 5"_s},
                                {"its shelf moved", u"B: 4 5 6; A: 1 2 3; C: 7 8"_s, u"B: 5"_s},
                                {"a new shelf above", u"New: 9; A: 1 2 3; B: 4 5 6; C: 7 8"_s, u"B: 5"_s},
                                {"moved to another shelf", u"A: 1 2 3; B: 4 6; C: 7 8 5"_s, u"C: 5"_s},
                                {"moved to another shelf, its shelf removed", u"A: 1 5 2; C: 7"_s, u"A: 5"_s},
                                {"moved to a new shelf", u"A: 1; New: 6 5"_s, u"New: 5"_s},
                                {"duplicated: the tape that stayed", u"A: 5; B: 5 5; C: 5"_s, u"B: 5"_s},
                                {"duplicated: the tape on its shelf", u"A: 5 1; B: 6 4 5; C: 7"_s, u"B: 5"_s},
                                {"tape removed: the next one in its row", u"A: 1 2 3; B: 4 6; C: 7 8"_s, u"B: 6"_s},
                                {"last tape removed: the one before it", u"A: 1 2 3; B: 4; C: 7 8"_s, u"B: 4"_s},
                                {"tape removed from a shelf that moved", u"B: 4 6; A: 1 2 3"_s, u"B: 6"_s},
                                {"shelf removed: the shelf with its index", u"A: 1 2 3; C: 7 8"_s, u"C: 8"_s},
                                {"shelf removed, the next shelf is shorter", u"A: 1 2 3; C: 7"_s, u"C: 7"_s},
                                {"shelf and all later shelves removed", u"A: 1"_s, u"A: 1"_s},
                                {"shelf became empty: the next shelf", u"A: 1 2 3; B:; C: 7 8"_s, u"C: 8"_s},
                                {"its shelf and the next became empty", u"A: 1 2 3; B:; C:"_s, u"A: 2"_s},
                                {"all shelves replaced", u"X: 21; Y: 22 23; Z: 24"_s, u"Y: 23"_s},
                                {"no shelves", {}, {}},
                                {"only empty shelves", u"A:; B:"_s, {}}});
    }

    void currentRowFollowsItsTape()
    {
        QFETCH(QString, after);
        show(u"A: 1 2 3; B: 4 5 6; C: 7 8"_s);
        makeCurrent(1, 1);
        show(after);
        QTEST(currentTape(), "currentTape");
        QCOMPARE(contents(), after);
    }

    void focusedShelfKeepsItsModelWhenChanged()
    {
        show(u"A: 1 2 3; B: 4 5 6"_s);
        makeCurrent(1, 1);
        const CassetteRow* b = m_list->row(1);
        const int key = keyOf(1);
        show(u"B: 9 4 5 6; A: 1 2 3"_s);
        QCOMPARE(m_list->row(0), b);
        QCOMPARE(keyOf(0), key);
        show(u"B: 9 4"_s);
        QCOMPARE(m_list->row(0), b);
        QCOMPARE(currentTape(), u"B: 4"_s);
    }

    void changedShelfWithoutFocusResetsCurrentRow()
    {
        show(u"A: 1 2 3; B: 4 5 6"_s);
        makeCurrent(1, 2);
        makeCurrent(0, 2);
        m_list->setHasFocus(false);
        show(u"A: 1 2 3 9; B: 4 5 6"_s);
        QCOMPARE(currentRows(), (QList<int>{-1, 2}));
        QCOMPARE(m_list->currentRow(), -1);
        show(u"B: 4 5 6"_s);
        QCOMPARE(currentRows(), QList<int>{2});
    }

    void onlyFocusedShelfKeepsCurrentRowWhenChanged()
    {
        show(u"A: 1 2 3; B: 4 5 6; C: 7; D: 8 9"_s);
        makeCurrent(1, 2);
        makeCurrent(0, 1);
        makeCurrent(3, 1);
        makeCurrent(2, 0);
        show(u"A: 3 2; B:; C: 10 7; D: 8 9"_s);
        QCOMPARE(currentRows(), (QList<int>{-1, -1, 1, 1}));
        QCOMPARE(currentTape(), u"C: 7"_s);
        // The shelf that receives the focus of a removed shelf keeps its own current row.
        show(u"A: 3 2; B: 9 4; D: 8 9"_s);
        QCOMPARE(currentTape(), u"D: 9"_s);
        QCOMPARE(currentRows(), (QList<int>{-1, -1, 1}));
    }

    void anotherMarketResetsAllCurrentRows()
    {
        show(u"A: 1 2 3; B: 4 5 6; C: 7 8"_s);
        makeCurrent(2, 1);
        makeCurrent(1, 2);
        makeCurrent(0, 2);
        m_list->setHasFocus(false);
        const QList<int> keys{keyOf(0), keyOf(1), keyOf(2)};
        // The shelf "A" is reset too, although it is unchanged in the other market.
        m_list->setShelves(shelvesOf(u"A: 1 2 3; B: 5 6; C: 7 8"_s), ShelfList::Market::Another);
        QCOMPARE(currentRows(), (QList<int>{-1, -1, -1}));
        QCOMPARE(m_list->currentRow(), -1);
        for (int shelf = 0; shelf < 3; ++shelf)
            QVERIFY(!keys.contains(keyOf(shelf)));
    }

    void anotherMarketKeepsFocusOnItsTape_data()
    {
        // Before: "A: 1 2 3; B: 4 5 6; C: 7 8"; the current cassette is 5, after 3 and 8.
        rows<QString, QString>({"after", "currentTape"},
                               {{"on its shelf", u"A: 1 2 3; B: 5 6"_s, u"B: 5"_s},
                                {"on an equal shelf", u"A: 1; B: 4 5 6"_s, u"B: 5"_s},
                                {"on another shelf", u"A: 1; C: 8 5"_s, u"C: 5"_s},
                                {"tape removed: the first of its shelf", u"A: 1 2 3; B: 21 4 6; C: 7 8"_s, u"B: 21"_s},
                                {"shelf removed: the first of the next shelf", u"A: 1 2 3; C: 7 8"_s, u"C: 7"_s},
                                {"all shelves removed", u"X: 21 22"_s, u"X: 21"_s},
                                {"no shelves", {}, {}}});
    }

    void anotherMarketKeepsFocusOnItsTape()
    {
        QFETCH(QString, after);
        show(u"A: 1 2 3; B: 4 5 6; C: 7 8"_s);
        makeCurrent(0, 2);
        makeCurrent(2, 1);
        makeCurrent(1, 1);
        m_list->setShelves(shelvesOf(after), ShelfList::Market::Another);
        QTEST(currentTape(), "currentTape");
        for (int shelf = 0; shelf < m_list->rowCount(); ++shelf)
            QCOMPARE(m_list->row(shelf)->currentRow() >= 0, shelf == m_list->currentRow());
    }

    void newerTapeWithSameIdReplacesOlder()
    {
        show(u"A: 1 2"_s);
        makeCurrent(0, 0);
        QSignalSpy reset(m_list->row(0), &CassetteRow::modelReset);
        Shelf shelf = shelfOf(u"A"_s, {1, 2});
        shelf.covers.last().title = u"Fresher"_s;
        shelf.tapesByID[2].title = u"Fresher"_s;
        m_list->setShelves({shelf});
        QCOMPARE(reset.count(), 1);
        QCOMPARE(m_list->row(0)->content().tapes.at(1).title, u"Fresher"_s);
        QCOMPARE(m_list->row(0)->index(1).data(CassetteRow::CoverRole).value<VHSCover>().title, u"Fresher"_s);
    }

    void newerTapeWithEqualCoverReplacesOlder()
    {
        show(u"A: 1 2"_s);
        const CassetteRow* a = m_list->row(0);
        Shelf shelf = shelfOf(u"A"_s, {1, 2});
        shelf.tapesByID[2].hasAgenda = true;
        m_list->setShelves({shelf});
        QCOMPARE(m_list->row(0), a);
        QVERIFY(a->content().tapes.at(1).hasAgenda);
        // The cover has no tape any more. The current row is limited, although the covers are equal.
        makeCurrent(0, 1);
        shelf.tapesByID.remove(2);
        m_list->setShelves({shelf});
        QCOMPARE(m_list->row(0), a);
        QCOMPARE(currentTape(), u"A: 1"_s);
    }

    void moveIsIgnoredDuringReset()
    {
        show(u"A: 1 2; B: 3 4"_s);
        makeCurrent(1, 1);
        // Imitates a list on screen that loses its focused item: it reports another one.
        connect(m_list->row(1), &CassetteRow::modelReset, this, [this] {
            m_list->row(1)->setCurrentRow(0);
            m_list->setCurrentRow(0);
        });
        connect(m_list.get(), &ShelfList::modelReset, this, [this] { m_list->setCurrentRow(0); });
        show(u"A: 1 2; B: 3 4"_s);
        QCOMPARE(currentTape(), u"B: 4"_s);
        m_list->setCurrentRow(0);
        QCOMPARE(m_list->currentRow(), 0);
    }

    void rowsAreUpdatedBeforeListAndCurrentRowIsNotifiedLast()
    {
        show(u"A: 1 2; B: 3"_s);
        makeCurrent(0, 1);
        const CassetteRow* row = m_list->row(0);
        QStringList notifications;
        connect(row, &CassetteRow::currentRowChanged, this,
                [&] { notifications.append(u"row's currentRow %1"_s.arg(row->currentRow())); });
        connect(row, &CassetteRow::modelReset, this, [&] { notifications.append(u"row"_s); });
        connect(m_list.get(), &ShelfList::currentRowChanged, this,
                [&] { notifications.append(u"list's currentRow %1"_s.arg(m_list->currentRow())); });
        connect(m_list.get(), &ShelfList::modelReset, this,
                [&] { notifications.append(contents() + u" at "_s + currentTape()); });
        show(u"B: 3 4; A: 2 1"_s);
        QCOMPARE(notifications, (QStringList{u"row"_s, u"row's currentRow 0"_s, u"B: 3 4; A: 2 1 at A: 2"_s,
                                             u"list's currentRow 1"_s}));
    }

    void emptiedListResetsCurrentRow()
    {
        show(u"A: 1 2"_s);
        makeCurrent(0, 1);
        show({});
        QCOMPARE(m_list->rowCount(), 0);
        QCOMPARE(m_list->currentRow(), -1);
        show(u"A: 1 2"_s);
        QCOMPARE(m_list->currentRow(), -1);
        QCOMPARE(currentRows(), QList<int>{-1});
    }

private:
    void show(const QString& text) { m_list->setShelves(shelvesOf(text)); }

    /** Makes a cassette current, in the order in which the lists on screen report it. */
    void makeCurrent(int shelf, int cassette)
    {
        m_list->row(shelf)->setCurrentRow(cassette);
        m_list->setCurrentRow(shelf);
        m_list->setHasFocus(true);
    }

    int keyOf(int shelf) const { return m_list->index(shelf).data(ShelfList::KeyRole).toInt(); }

    /** The current row of each shelf. */
    QList<int> currentRows() const
    {
        QList<int> all;
        for (int shelf = 0; shelf < m_list->rowCount(); ++shelf)
            all.append(m_list->row(shelf)->currentRow());
        return all;
    }

    /** The current cassette as "shelf name: id"; empty if there is none. */
    QString currentTape() const
    {
        const CassetteRow* row = m_list->row(m_list->currentRow());
        if (!row)
            return {};
        const VHSCover cover = row->content().covers.value(row->currentRow());
        return row->name() + u": "_s + QString::number(cover.id);
    }

    QString contents() const
    {
        QStringList all;
        for (int shelf = 0; shelf < m_list->rowCount(); ++shelf) {
            const auto* row = m_list->index(shelf).data(ShelfList::CassettesRole).value<CassetteRow*>();
            QStringList line{row->name() + u':'};
            for (int cassette = 0; cassette < row->rowCount(); ++cassette) {
                const QModelIndex index = row->index(cassette);
                const auto cover = index.data(CassetteRow::CoverRole).value<VHSCover>();
                line.append(index.data(CassetteRow::KeyRole) == cover.id ? QString::number(cover.id) : u"?"_s);
            }
            all.append(line.join(u' '));
        }
        return all.join(u"; "_s);
    }

    std::unique_ptr<ShelfList> m_list;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

QUILLMERE_TEST(ShelfListTest, QCoreApplication)

} // namespace quillmere

#include "ShelfListTest.moc"
