#pragma once

#include "FocusScreen.h"
#include "Stage.h"

/** A stage with one FocusScreen whose things are told apart by their names. */
class FocusStage : public Stage
{
public:
    /** One thing of a scene, in QML. */
    static QString thing(const char* name, QRectF rect, const char* more = "")
    {
        return item("Focusable", name, rect, QLatin1String(more));
    }

    static QString item(const char* type, const char* name, QRectF rect, const QString& more)
    {
        return QStringLiteral("%1 { objectName: \"%2\"; x: %3; y: %4; width: %5; height: %6; %7 }\n")
            .arg(QLatin1String(type), QLatin1String(name))
            .arg(rect.x())
            .arg(rect.y())
            .arg(rect.width())
            .arg(rect.height())
            .arg(more);
    }

    /** A section of three things "a", "b" and "c", the middle one nearer to the last. */
    static QString row()
    {
        const QString things =
            thing("a", {0, 0, 100, 100}) + thing("b", {200, 0, 100, 100}) + thing("c", {310, 0, 100, 100});
        return item("FocusSection", "row", {250, 200, 500, 100}, things);
    }

    /** Shows a screen of these things, in front. */
    FocusScreen& walk(const QString& things)
    {
        m_screen = qobject_cast<FocusScreen*>(put(item("FocusScreen", "screen", {0, 0, 1920, 1080}, things)));
        m_screen->takeFocus();
        return *m_screen;
    }

    FocusScreen& screen() { return *m_screen; }

    template<typename T = Focusable>
    T& named(const char* name)
    {
        auto* const found = m_screen->findChild<T*>(QLatin1String(name));
        if (!found)
            qFatal("there is no %s", name);
        return *found;
    }

    /** What the keys go to. */
    QString focused()
    {
        const QQuickItem* const item = window().activeFocusItem();
        return item ? item->objectName() : QString();
    }

    /** Gives one thing the focus and answers where an arrow leads from there. */
    QString after(const char* name, int arrow)
    {
        m_screen->focus(&named(name));
        press(arrow);
        return focused();
    }

private:
    FocusScreen* m_screen = nullptr;
};
