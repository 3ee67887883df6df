#include "LazyStackFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

/** The current row of a stack, and the focus that follows it. */
class LazyStackCurrentRowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void focusMovesToCurrentRowWhenModelChanges_data()
    {
        const auto letters = [](const QString& keys) { return keys.split(QString(), Qt::SkipEmptyParts); };
        // The rows before are abcde, with the focus on c.
        rows<QStringList, int, QString>(
            {"after", "currentRow", "focused"},
            {{"nothing changes", letters(u"abcde"_s), 2, u"c"_s},
             {"rows inserted before", letters(u"xyzabcde"_s), 5, u"c"_s},
             {"rows before removed", letters(u"cde"_s), 0, u"c"_s},
             {"order reversed", letters(u"edcba"_s), 2, u"c"_s},
             {"moved to the end", letters(u"abdec"_s), 4, u"c"_s},
             {"removed", letters(u"abde"_s), 2, u"d"_s},
             {"removed with all after it", letters(u"ab"_s), 1, u"b"_s},
             {"all rows replaced", letters(u"xyz"_s), 1, u"y"_s},
             {"owner sets another row", letters(u"abcde"_s), 0, u"a"_s},
             {"owner sets a distant row", letters(u"abcdefghijklmnopqrstuvwxyz"_s), 25, u"z"_s},
             {"all rows removed", {}, -1, {}}});
    }

    void focusMovesToCurrentRowWhenModelChanges()
    {
        QFETCH(QStringList, after);
        QFETCH(int, currentRow);
        QFETCH(QString, focused);
        RowsFixture fixture(QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
        fixture.focusRow(2);
        QCOMPARE(fixture.rows.currentRow(), 2);
        fixture.waitUntilIdle();
        fixture.rows.change(after, currentRow);
        QCOMPARE(fixture.rows.currentRow(), currentRow);
        if (focused.isEmpty()) {
            QTRY_COMPARE(fixture.screen->focused()->objectName(), u"below"_s);
            return;
        }
        // Immediately, so that the next key already acts on that row.
        QCOMPARE(fixture.focusedTitle(), focused + u", round 1"_s);
        fixture.waitUntilIdle();
        QCOMPARE(fixture.focusedTitle(), focused + u", round 1"_s);
        QCOMPARE(fixture.rows.currentRow(), currentRow);
        QVERIFY(fixture.isFocusVisible(fixture.area->position()));
    }

    void focusOutsideStackIsKept()
    {
        RowsFixture fixture(QStringList{u"a"_s, u"b"_s, u"c"_s});
        fixture.screen->focus(fixture.below);
        fixture.rows.change({u"x"_s, u"y"_s}, 1);
        QVERIFY(fixture.below->hasActiveFocus());
        fixture.rows.setCurrentRow(0);
        QVERIFY(fixture.below->hasActiveFocus());
        fixture.rows.change({}, -1);
        fixture.waitUntilIdle();
        QVERIFY(fixture.below->hasActiveFocus());
    }

    void focusedItemStaysVisibleWhenItMoves_data() { rows<bool>({"isSeen"}, {{"visible", true}, {"hidden", false}}); }

    void focusedItemStaysVisibleWhenItMoves()
    {
        QFETCH(bool, isSeen);
        RowsFixture fixture(3);
        fixture.focusRow(2);
        fixture.area->setVisible(isSeen);
        QStringList keys = fixture.rows.keys();
        for (int i = 100; i < 150; ++i)
            keys.prepend(QString::number(i));
        const QPointer<Focusable> focused = fixture.screen->focused();
        fixture.rows.change(keys, 52);
        QCOMPARE(fixture.screen->focused(), focused.data());
        QCOMPARE(focused->x(), 52 * pitch);
        QCOMPARE(fixture.area->position(), 52 * pitch + extent + 6 - viewportExtent);
    }

    void currentRowIsVisibleWhenFocusIsElsewhere_data()
    {
        const auto keys = [](int first, int count) {
            QStringList all;
            for (int key = first; key < first + count; ++key)
                all.append(QString::number(key));
            return all;
        };
        // Before: 13 rows; the current row is the last.
        rows<QStringList, int>({"after", "currentRow"},
                               {{"all replaced, no current row", keys(100, 12), -1},
                                {"all replaced, first is current", keys(100, 12), 0},
                                {"all replaced, last is current", keys(100, 12), 11},
                                {"all replaced by many, middle is current", keys(100, 200), 100},
                                {"all replaced by few that fit", keys(100, 3), 2},
                                {"last row removed, no current row", keys(0, 12), -1},
                                {"rows appended, another is current", keys(0, 13) + keys(13, 40), 5},
                                {"same rows, no current row", keys(0, 13), -1},
                                {"same rows, another is current", keys(0, 13), 3}});
    }

    void currentRowIsVisibleWhenFocusIsElsewhere()
    {
        QFETCH(QStringList, after);
        QFETCH(int, currentRow);
        RowsFixture fixture(13);
        for (int row = 1; row < 13; ++row)
            fixture.press(Qt::Key_Right);
        fixture.screen->focus(fixture.below);
        fixture.waitUntilIdle();
        QCOMPARE(fixture.area->position(), 12 * pitch + extent + 6 - viewportExtent);

        fixture.rows.change(after, currentRow);
        const qreal position = fixture.area->position();
        const qreal x = 6 + std::max(currentRow, 0) * pitch - position;
        QVERIFY2(x >= 0 && x + extent <= viewportExtent, qPrintable(QString::number(x)));
        if (currentRow < 0)
            QCOMPARE(position, 0.0);
        // Nothing scrolls now, and nothing scrolls when the focus arrives.
        QCOMPARE(fixture.area->targetPosition(), position);
        fixture.waitUntilIdle();
        fixture.press(Qt::Key_Up);
        QCOMPARE(fixture.focusedTitle(), u"%1, round 1"_s.arg(after.at(std::max(currentRow, 0))));
        QCOMPARE(fixture.area->targetPosition(), position);
    }

    void focusedItemNextToStackStaysVisible()
    {
        Rows rows(40);
        TestScreen fixture;
        auto screen = static_cast<FocusScreen*>(
            fixture.load(u"FocusScreen { id: screen; width: 1920; height: 1080; property var rows\n"
                         "ScrollArea { width: 800; height: 400; contentExtent: 150 + column.height\n"
                         "Focusable { objectName: 'above'; width: 300; height: 100 }\n"
                         "LazyStack { id: column; y: 150; extent: 250; spacing: 40; model: screen.rows\n"
                         "delegate: Focusable { width: 250; height: 250 } } }\n"
                         "Focusable { objectName: 'beside'; x: 900; width: 300; height: 100 } }"_s,
                         {{u"rows"_s, QVariant::fromValue<QObject*>(&rows)}}));
        auto area = static_cast<ScrollArea*>(TestScreen::first(screen, "ScrollArea"));
        screen->acquireFocus();
        screen->focus(screen->findChild<Focusable*>(u"above"_s));
        rows.setCurrentRow(20);
        QCOMPARE(area->targetPosition(), 0.0);
        rows.change(rows.keys(), 30);
        QCOMPARE(area->targetPosition(), 0.0);
        screen->focus(screen->findChild<Focusable*>(u"beside"_s));
        rows.setCurrentRow(20);
        QCOMPARE(area->position(), 150 + 20 * pitch + extent - 400);
    }

    void hasFocusChangesOnceAsFocusEntersOrLeaves()
    {
        RowsFixture fixture(3);
        QVERIFY(fixture.rows.hasFocus());
        QSignalSpy changes(&fixture.rows, &CurrentRowModel::hasFocusChanged);
        fixture.press(Qt::Key_Right);
        QCOMPARE(changes.count(), 0);
        fixture.press(Qt::Key_Down);
        QCOMPARE(changes.count(), 1);
        QVERIFY(!fixture.rows.hasFocus());
        fixture.press(Qt::Key_Up);
        QCOMPARE(changes.count(), 2);
        // One change replaces the focused row and all others.
        fixture.rows.change({u"x"_s, u"y"_s}, 1);
        QCOMPARE(changes.count(), 2);
        QVERIFY(fixture.rows.hasFocus());
        fixture.rows.change({}, -1);
        QTRY_VERIFY(fixture.below->hasActiveFocus());
        QCOMPARE(changes.count(), 3);
        QVERIFY(!fixture.rows.hasFocus());
    }

    void currentRowChangesOncePerKeyPress()
    {
        RowsFixture fixture(5);
        QCOMPARE(fixture.rows.currentRow(), 0);
        const QSignalSpy changes(&fixture.rows, &CurrentRowModel::currentRowChanged);
        fixture.press(Qt::Key_Right);
        QCOMPARE(fixture.rows.currentRow(), 1);
        QCOMPARE(changes.count(), 1);
        fixture.focusRow(1);
        QCOMPARE(changes.count(), 1);
        fixture.rows.setCurrentRow(3);
        QCOMPARE(fixture.focusedTitle(), u"3, round 0"_s);
        QCOMPARE(changes.count(), 2);
    }

    void sectionIsEnteredAtCurrentRow()
    {
        RowsFixture fixture(200);
        auto section = static_cast<FocusSection*>(TestScreen::first(fixture.screen, "FocusSection"));
        fixture.screen->focus(fixture.below);
        fixture.rows.setCurrentRow(150);
        QCOMPARE(section->current(), static_cast<Focusable*>(fixture.row->itemAt(150)));
        fixture.press(Qt::Key_Up);
        QCOMPARE(fixture.focusedTitle(), u"150, round 0"_s);
    }

    void sectionIsEnteredBesideDisabledCurrentRow()
    {
        RowsFixture fixture(13);
        fixture.press(Qt::Key_Down);
        fixture.row->itemAt(0)->setEnabled(false);
        fixture.press(Qt::Key_Up);
        QCOMPARE(fixture.focusedTitle(), u"1, round 0"_s);
    }

    void newStackStartsAtCurrentRowWithoutScrolling()
    {
        Rows rows(200);
        rows.setCurrentRow(100);
        LazyStackFixture fixture(&rows, u"Item { }"_s);
        QQmlComponent component(&fixture.engine());
        component.setData(
            "import QtQuick\nimport Quillmere.Screen\n"
            "ScrollArea { id: area; property var rows; x: 70; width: 1780; height: 400; revealMargin: 100;"
            "  orientation: Qt.Horizontal; contentExtent: line.width + 12;"
            "  LazyStack { id: line; x: 6; orientation: Qt.Horizontal; extent: 250; spacing: 40;"
            "    cacheBuffer: 600; model: area.rows; delegate: Focusable { width: 250; height: 390 } } }",
            {});
        std::unique_ptr<QObject> object(
            component.createWithInitialProperties({{u"rows"_s, QVariant::fromValue<QObject*>(&rows)}}));
        auto area = qobject_cast<ScrollArea*>(object.get());
        QVERIFY2(area, qPrintable(component.errorString()));
        QCOMPARE(area->position(), 100 * pitch + extent + 6 + 100 - viewportExtent);
        area->setParentItem(fixture.screen);
        fixture.waitUntilIdle();
        QCOMPARE(area->position(), 100 * pitch + extent + 6 + 100 - viewportExtent);
        QVERIFY(!static_cast<LazyStack*>(TestScreen::first(area, "LazyStack"))->itemAt(0));
    }

    void currentRowOutOfRangeIsIgnored()
    {
        RowsFixture fixture(3);
        fixture.focusRow(1);
        fixture.rows.setCurrentRow(1000);
        QCOMPARE(fixture.focusedTitle(), u"1, round 0"_s);
        fixture.rows.change({u"x"_s, u"y"_s}, 1000);
        QTRY_VERIFY(fixture.focusedTitle().endsWith(u"round 1"_s));
        fixture.rows.change({u"x"_s, u"y"_s}, -7);
        QCOMPARE(fixture.row->itemCount(), 2);
    }
};

QUILLMERE_TEST(LazyStackCurrentRowTest, QGuiApplication)

} // namespace quillmere

#include "LazyStackCurrentRowTest.moc"
