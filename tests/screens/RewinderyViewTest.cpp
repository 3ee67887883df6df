#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "ScriptedHttpClient.h"
#include "Store.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using namespace Qt::StringLiterals;

/** The shop's plain list as QML makes it, with a player screen that plays nothing. */
class RewinderyViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void anEmptyListIsNotABlankScreen();
    void theCurrentRowOutlivesARefresh();
    void selectPlaysAndEndingReturnsToTheRow();

private:
    void show(const QList<qint64>& ids);
    QQuickItem* shownText(const QString& text) const;
    QString current() const;

    ScriptedHttpClient m_http;
    HubAPI m_hub{m_http, QUrl(u"https://hub.example"_s)};
    MemoryDefaults m_defaults;
    std::unique_ptr<Store> m_store;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_view;
};

void RewinderyViewTest::init()
{
    m_view.reset();
    m_store = std::make_unique<Store>(m_hub, m_defaults);
    m_engine.addImportPath(u":/qt/qml"_s);
    QQmlComponent component(&m_engine);
    component.setData("import QtQuick\nimport Quillmere.Shop\n"
                      "RewinderyView { playerScreen: Component { Item {} } }",
                      {});
    std::unique_ptr<QObject> made(
        component.createWithInitialProperties({{u"store"_s, QVariant::fromValue<QObject*>(m_store.get())}}));
    QVERIFY2(made, qPrintable(component.errorString()));
    m_view.reset(qobject_cast<QQuickItem*>(made.release()));
    m_window.resize(1920, 1080);
    m_view->setParentItem(m_window.contentItem());
    m_view->setSize({1920, 1080});
    m_window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m_window));
    m_view->forceActiveFocus();
}

void RewinderyViewTest::show(const QList<qint64>& ids)
{
    Shelf shelf;
    shelf.name = u"Shelf"_s;
    for (const qint64 id : ids) {
        VHSCover cover;
        cover.id = id;
        cover.title = u"Tape %1"_s.arg(id);
        shelf.covers.append(cover);
        Tape tape;
        tape.id = id;
        tape.title = cover.title;
        shelf.tapesByID.insert(id, tape);
    }
    m_store->setShelves({shelf});
}

QQuickItem* RewinderyViewTest::shownText(const QString& text) const
{
    for (QQuickItem* item : m_view->childItems()) {
        if (item->isVisible() && item->property("text").toString() == text)
            return item;
    }
    return nullptr;
}

/** What the row with the focus reads, as the view itself has it. */
QString RewinderyViewTest::current() const
{
    for (const QQuickItem* item : m_view->childItems()) {
        if (const auto* row = item->property("currentItem").value<QQuickItem*>())
            return row->property("text").toString();
    }
    return {};
}

void RewinderyViewTest::anEmptyListIsNotABlankScreen()
{
    QVERIFY(shownText(u"Checking what's on the shelf…"_s));
    m_store->setLastError(u"The hub answered 503."_s);
    QVERIFY(shownText(u"The hub answered 503."_s));
    show({1});
    QVERIFY(!shownText(u"The hub answered 503."_s));
    QCOMPARE(current(), u"Tape 1"_s);
}

void RewinderyViewTest::theCurrentRowOutlivesARefresh()
{
    show({1, 2, 3, 4});
    QTest::keyClick(&m_window, Qt::Key_Down);
    QTest::keyClick(&m_window, Qt::Key_Down);
    QCOMPARE(current(), u"Tape 3"_s);
    show({1, 2, 3, 4});
    QCOMPARE(current(), u"Tape 3"_s);
    show({3, 1});
    QCOMPARE(current(), u"Tape 3"_s);
    show({});
    show({5, 6});
    QCOMPARE(current(), u"Tape 5"_s);
}

void RewinderyViewTest::selectPlaysAndEndingReturnsToTheRow()
{
    QTest::keyClick(&m_window, Qt::Key_Select);
    QVERIFY(!m_view->property("playing").toBool());
    show({1, 2});
    QTest::keyClick(&m_window, Qt::Key_Down);
    QTest::keyClick(&m_window, Qt::Key_Select);
    QVERIFY(m_view->property("playing").toBool());
    QCOMPARE(m_view->property("chosen").value<Tape>().title, u"Tape 2"_s);
    m_view->setProperty("playing", false);
    QTest::keyClick(&m_window, Qt::Key_Up);
    QCOMPARE(current(), u"Tape 1"_s);
}

QTEST_MAIN(RewinderyViewTest)
#include "RewinderyViewTest.moc"
