#include "LazyStackFixture.h"
#include "TestMain.h"

namespace quillmere {

/** The delegate items of a stack when its model changes. */
class LazyStackModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itemsGetRequiredPropertiesFromRoles()
    {
        RowsFixture fixture(3);
        QQuickItem* item = fixture.row->itemAt(2);
        QCOMPARE(item->property("index").toInt(), 2);
        QCOMPARE(item->property("title").toString(), u"2, round 0"_s);
        QVERIFY(!item->property("key").isValid());
        QCOMPARE(item->parentItem(), fixture.row);
    }

    void itemOfKeptKeyIsReusedWithNewValues()
    {
        RowsFixture fixture(QStringList{u"a"_s, u"b"_s, u"c"_s});
        const QPointer<QQuickItem> a = fixture.row->itemAt(0);
        const QPointer<QQuickItem> b = fixture.row->itemAt(1);
        const QPointer<QQuickItem> c = fixture.row->itemAt(2);
        fixture.rows.change({u"c"_s, u"new"_s, u"a"_s}, -1);
        QCOMPARE(fixture.row->itemAt(0), c.data());
        QCOMPARE(fixture.row->itemAt(2), a.data());
        QCOMPARE(a->property("index").toInt(), 2);
        QCOMPARE(a->property("title").toString(), u"a, round 1"_s);
        QCOMPARE(a->x(), 2 * pitch);
        QCOMPARE(fixture.row->itemAt(1)->property("title").toString(), u"new, round 1"_s);
        QVERIFY(!b || !b->isVisible());
        QTRY_VERIFY(!b);
        QCOMPARE(fixture.row->itemCount(), 3);
    }

    void duplicateKeysAreMatchedInOrder()
    {
        RowsFixture fixture(QStringList{u"a"_s, u"a"_s, u"b"_s});
        QQuickItem* first = fixture.row->itemAt(0);
        QQuickItem* second = fixture.row->itemAt(1);
        fixture.rows.change({u"b"_s, u"a"_s, u"a"_s, u"a"_s}, -1);
        QCOMPARE(fixture.row->itemAt(1), first);
        QCOMPARE(fixture.row->itemAt(2), second);
        QVERIFY(fixture.row->itemAt(3) != second);
        QCOMPARE(fixture.row->itemAt(3)->property("index").toInt(), 3);
    }

    void stackIsEmptyWhenModelIsDestroyed()
    {
        auto rows = std::make_unique<Rows>(20);
        LazyStackFixture fixture(rows.get());
        QVERIFY(fixture.row->itemCount() > 0);
        rows.reset();
        QCOMPARE(fixture.row->itemCount(), 0);
        QCOMPARE(fixture.row->implicitWidth(), 0.0);
        QTRY_COMPARE(fixture.screen->focused()->objectName(), u"below"_s);
    }

    void modelCanChangeWhileItemsAreCreated()
    {
        RowsFixture fixture(200);
        for (const int count : {200, 1, 0, 3, 200}) {
            fixture.rows.change(Rows(count).keys(), count > 0 ? 0 : -1);
            QCoreApplication::processEvents();
            fixture.rows.change(Rows(count).keys().mid(1), -1);
        }
        QTRY_COMPARE(fixture.row->itemCount(), 9);
    }

    void delegateCanChangeModelInOnCompleted()
    {
        Rows rows(200);
        rows.setRemovals(20);
        LazyStackFixture fixture(&rows,
                                 u"LazyStack { orientation: Qt.Horizontal; extent: 250; spacing: 40; cacheBuffer: 600;"
                                 "  model: screen.rows; delegate: Focusable { required property int index;"
                                 "    required property string title; width: 250; height: 390;"
                                 "    Component.onCompleted: screen.rows.removeFirstRow() } }"_s);
        QCOMPARE(rows.rowCount(), 180);
        QTRY_COMPARE(fixture.row->itemCount(), 9);
        QCOMPARE(fixture.existing(), (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
        for (int i = 0; i < 9; ++i) {
            QCOMPARE(fixture.row->itemAt(i)->property("index").toInt(), i);
            QCOMPARE(fixture.row->itemAt(i)->property("title").toString(), u"%1, round 20"_s.arg(i + 20));
            QCOMPARE(fixture.row->itemAt(i)->x(), i * pitch);
        }
    }

    void invalidDelegateIsReportedOnce()
    {
        Rows rows(20);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"nothing can be shown: .*missing.*"_s));
        QTest::failOnWarning(QRegularExpression(u"nothing can be shown"_s));
        LazyStackFixture fixture(&rows, u"LazyStack { orientation: Qt.Horizontal; extent: 250; model: screen.rows;"
                                        "  delegate: Item { required property int missing } }"_s);
        QCOMPARE(fixture.row->itemCount(), 0);
        rows.change({u"x"_s}, 0);
        QCOMPARE(fixture.row->itemCount(), 0);
        QTRY_COMPARE(fixture.row->childItems().size(), 0);
    }
};

QUILLMERE_TEST(LazyStackModelTest, QGuiApplication)

} // namespace quillmere

#include "LazyStackModelTest.moc"
