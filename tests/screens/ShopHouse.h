#pragma once

#include "FocusScreen.h"
#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "NavigationStack.h"
#include "ScriptedHttpClient.h"
#include "ShelvesOfTapes.h"
#include "Stage.h"
#include "Store.h"

#include <QTest>

/** The shop with a scripted network, opened over a screen as the front screen opens it. */
struct ShopHouse
{
    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(u"https://hub.example.org"_s)};
    MemoryDefaults defaults;
    Store store{hub, defaults};
    Stage stage;
    QQuickItem* house = nullptr;

    /** `more` is QML with further properties of the shop. */
    explicit ShopHouse(const QString& more = {}, QSize size = {960, 540}) : stage(size)
    {
        const QString qml =
            u"import Quillmere.Shop\n"
            "Canvas { id: house; property QtObject store; property QtObject hub; property bool open: true\n"
            "FocusScreen { anchors.fill: parent; focus: true\n"
            "FullScreenCover { anchors.fill: parent; screen: house.open ? shop : null; onDismissed: house.open = false "
            "}\n"
            "Component { id: shop; RewinderyView { store: house.store; hub: house.hub; %1 } } } }"_s;
        house = stage.load(qml.arg(more), {{u"store"_s, QVariant::fromValue<QObject*>(&store)},
                                           {u"hub"_s, QVariant::fromValue<QObject*>(&hub)}});
    }

    bool isOpen() const { return house->property("open").toBool(); }
    void open() { house->setProperty("open", true); }

    /** The screen below the shop, and the shop while it is open. */
    FocusScreen* host() const { return static_cast<FocusScreen*>(Stage::first(house, "FocusScreen")); }
    NavigationStack* shop() const { return static_cast<NavigationStack*>(host()->cover()); }

    /** The screen that receives the keys. */
    FocusScreen* front() const
    {
        FocusScreen* screen = host();
        while (true) {
            const auto* pages = qobject_cast<NavigationStack*>(screen);
            FocusScreen* const inner = screen->cover() || !pages ? screen->cover() : pages->front();
            if (!inner)
                return screen;
            screen = inner;
        }
    }

    /** The active focus item. */
    QQuickItem* focused() { return stage.window().activeFocusItem(); }

    /** The accessible name of the focused item; empty if it has none. */
    QString focusedName() { return focused() ? focused()->property("name").toString() : QString(); }

    void press(std::initializer_list<int> keys)
    {
        for (const int key : keys)
            stage.press(key);
    }

    /** The geometry of an item in points of the canvas. */
    QRectF area(const QQuickItem* item) const
    {
        return item ? item->mapRectToItem(house, QRectF(QPointF(), item->size())) : QRectF();
    }

    bool isOnScreen(const QRectF& area) const { return QRectF(0, 0, 1920, 1080).contains(area); }
    bool isFocusOnScreen() { return isOnScreen(area(focused())); }
    QRectF areaOf(const QString& shown) const { return area(text(shown)); }
    QRectF areaOfFocusable(const QString& name) const { return area(focusable(name)); }

    QQuickItem* text(const QString& text) const
    {
        const auto texts = Stage::texts(house);
        const auto found = std::find_if(texts.cbegin(), texts.cend(), [&text](const QQuickItem* item) {
            return item->property("text").toString() == text;
        });
        return found == texts.cend() ? nullptr : *found;
    }

    /** The visible Focusable with this accessible name; null if there is none. */
    QQuickItem* focusable(const QString& name) const
    {
        for (QQuickItem* item : Stage::all(house, "Focusable")) {
            if (item->isVisible() && item->property("name").toString() == name)
                return item;
        }
        return nullptr;
    }

    void show(const QString& shelves)
    {
        store.setShelves(shelvesOf(shelves));
        stage.waitForFrame();
    }

    /** Sets markets named after their slugs. The first has 1 tape, the next 2, and so on. */
    void showMarkets(const QStringList& slugs)
    {
        TVStatus status = store.status();
        status.rewindery.tapes = 99;
        status.rewindery.markets.clear();
        for (const QString& slug : slugs)
            status.rewindery.markets.append({slug, slug.toUpper(), {}, status.rewindery.markets.size() + 1});
        store.setStatus(status);
        stage.waitForFrame();
    }

    /** Waits for a request for `path` and answers it. */
    void answer(const QString& path, const QByteArray& body, int status = 200)
    {
        QTRY_VERIFY2(http.waitingFor(path) >= 0, qPrintable(path));
        http.answer(http.waitingFor(path), status, body);
    }
};
