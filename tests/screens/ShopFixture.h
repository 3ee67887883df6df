#pragma once

#include "NavigationStack.h"
#include "ScreenFixture.h"
#include "ShelvesOfTapes.h"

#include <QRegularExpression>

namespace quillmere {

/** A screen to which a test sends many keys. */
struct KeysFixture : ScreenFixture
{
    using ScreenFixture::ScreenFixture;

    using ScreenFixture::press;
    void press(int key, int times)
    {
        for (int i = 0; i < times; ++i)
            press(key);
    }

    /** The accessible name of the focused item after these key presses. */
    QString focusedAfter(int key, int times = 1)
    {
        press(key, times);
        return focusedName();
    }
    QString focusedAfter(std::initializer_list<int> keys)
    {
        press(keys);
        return focusedName();
    }
};

/** The shop, opened over a screen as the front screen opens it. Every warning fails the test. */
struct ShopFixture : KeysFixture
{
    /** `more` is QML with further properties of the shop. */
    explicit ShopFixture(const QString& more = {}, QSize size = {960, 540}) : KeysFixture(size)
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        const QString contents =
            u"property bool open: true\n"
            "FocusScreen { anchors.fill: parent; focus: true\n"
            "FullScreenCover { anchors.fill: parent; screen: canvas.open ? shop : null; onDismissed: canvas.open = "
            "false }\n"
            "Component { id: shop; RewinderyView { store: canvas.store; hub: canvas.hub; %1 } } }"_s;
        loadCanvas(u"import Quillmere.Shop"_s, contents.arg(more));
    }

    bool isOpen() const { return canvas->property("open").toBool(); }
    void open() { canvas->setProperty("open", true); }

    /** The screen below the shop, and the shop while it is open. */
    FocusScreen* host() const { return static_cast<FocusScreen*>(item("FocusScreen")); }
    NavigationStack* shop() const { return static_cast<NavigationStack*>(host()->coveringScreen()); }

    /** The screen that receives the keys. */
    FocusScreen* front() const
    {
        FocusScreen* screen = host();
        while (true) {
            const auto* pages = qobject_cast<NavigationStack*>(screen);
            FocusScreen* const inner = screen->coveringScreen() || !pages ? screen->coveringScreen() : pages->front();
            if (!inner)
                return screen;
            screen = inner;
        }
    }

    bool isOnScreen(const QRectF& area) const { return QRectF(0, 0, 1920, 1080).contains(area); }
    bool isFocusOnScreen() const { return isOnScreen(areaOnCanvas(focused())); }
    QRectF areaOfFocusable(const QString& name) const { return areaOnCanvas(focusable(name)); }

    /** The visible Focusable with this accessible name; null if there is none. */
    QQuickItem* focusable(const QString& name) const
    {
        for (QQuickItem* item : all(canvas, "Focusable")) {
            if (item->isVisible() && item->property("name").toString() == name)
                return item;
        }
        return nullptr;
    }

    void show(const QString& shelves)
    {
        store->setShelves(shelvesOf(shelves));
        waitForFrame();
    }

    /** The text of a shelf of tapes with consecutive ids, for show(). */
    static QString shelf(const QString& name, int first, int count)
    {
        QString text = name + u':';
        for (int id = first; id < first + count; ++id)
            text += u' ' + QString::number(id);
        return text;
    }

    static QStringList slugs(int count, const QString& pattern = u"market number %1"_s)
    {
        QStringList all;
        for (int market = 0; market < count; ++market)
            all.append(pattern.arg(market));
        return all;
    }

    /** Sets markets named after their slugs. The first has 1 tape, the next 2, and so on. */
    void showMarkets(const QStringList& slugs)
    {
        TVStatus status = store->status();
        status.rewindery.tapes = 99;
        status.rewindery.markets.clear();
        for (const QString& slug : slugs)
            status.rewindery.markets.append({slug, slug.toUpper(), {}, status.rewindery.markets.size() + 1});
        store->setStatus(status);
        waitForFrame();
    }
};

} // namespace quillmere
