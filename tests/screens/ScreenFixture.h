#pragma once

#include "FocusScreen.h"
#include "StoreFixture.h"
#include "TestScreen.h"

#include <QQmlComponent>

#include <functional>

namespace quillmere {

/** A screen of the program on a canvas, with a store, a scripted network and a scripted clock. */
class ScreenFixture : public StoreFixture, public TestScreen
{
public:
    using TestScreen::TestScreen;

    QQuickItem* canvas = nullptr;

    /**
     * Shows a canvas with these contents, which can use canvas.store, canvas.hub and canvas.clock. `properties` are
     * initial values of properties that the contents declare.
     */
    void loadCanvas(const QString& imports, const QString& contents, QVariantMap properties = {})
    {
        properties.insert(u"store"_s, QVariant::fromValue<QObject*>(store.get()));
        properties.insert(u"hub"_s, QVariant::fromValue<QObject*>(&hub));
        properties.insert(u"clock"_s, QVariant::fromValue<QObject*>(&clock));
        const QString canvasWith = u"\nCanvas { id: canvas; property QtObject store; property QtObject hub; "
                                   "property QtObject clock\n%1 }"_s;
        canvas = load(imports + canvasWith.arg(contents), properties);
    }

    /** Shows a screen on an empty canvas after its first frames. `prepare` is called before the screen is complete. */
    FocusScreen* openScreen(const QByteArray& qml, const QVariantMap& properties,
                            const std::function<void(FocusScreen*)>& prepare = {})
    {
        canvas = load(u"Canvas { focus: true }"_s);
        QQmlComponent component(&engine());
        component.setData(qml, {});
        auto* const screen = qobject_cast<FocusScreen*>(component.beginCreate(engine().rootContext()));
        if (!screen)
            qFatal("%s", qPrintable(component.errorString()));
        component.setInitialProperties(screen, properties);
        if (prepare)
            prepare(screen);
        screen->setParent(canvas);
        screen->setParentItem(canvas);
        screen->setSize(canvas->size());
        component.completeCreate();
        screen->acquireFocus();
        Q_EMIT screen->appeared();
        return screen;
    }

    /** The first item of this type; null if there is none. */
    QQuickItem* item(const QByteArray& type) const { return first(canvas, type); }
    bool shows(const QByteArray& type) const { return item(type) && item(type)->isVisible(); }

    /** The visible text item with exactly these words; null if there is none. */
    QQuickItem* text(const QString& words) const
    {
        for (QQuickItem* item : texts(canvas)) {
            if (item->property("text").toString() == words)
                return item;
        }
        return nullptr;
    }
    bool showsText(const QString& words) const { return text(words); }

    /** The geometry of an item in points of the canvas. */
    QRectF areaOnCanvas(const QQuickItem* item) const
    {
        return item ? item->mapRectToItem(canvas, QRectF(QPointF(), item->size())) : QRectF();
    }
    QRectF areaOf(const QString& words) const { return areaOnCanvas(text(words)); }
};

} // namespace quillmere
