#pragma once

#include "FocusScreen.h"
#include "TestScreen.h"

namespace quillmere {

/** A window with one FocusScreen, whose items are identified by their object names. */
class FocusFixture : public TestScreen
{
public:
    /** The QML of one Focusable. */
    static QString focusable(const char* name, QRectF rect, const char* more = "")
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

    /** A section with three Focusables "a", "b" and "c"; "b" is nearer to "c" than to "a". */
    static QString row()
    {
        const QString items =
            focusable("a", {0, 0, 100, 100}) + focusable("b", {200, 0, 100, 100}) + focusable("c", {310, 0, 100, 100});
        return item("FocusSection", "row", {250, 200, 500, 100}, items);
    }

    /** Shows a screen with these items and gives it the focus. */
    FocusScreen& showScreen(const QString& items)
    {
        m_screen = qobject_cast<FocusScreen*>(load(item("FocusScreen", "screen", {0, 0, 1920, 1080}, items)));
        m_screen->acquireFocus();
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

    /** The object name of the active focus item; empty if there is none. */
    QString focusedObjectName() const { return focused() ? focused()->objectName() : QString(); }

    /** Focuses an item, presses an arrow key, and returns the name of the item that then has focus. */
    QString focusedAfter(const char* name, int arrow)
    {
        m_screen->focus(&named(name));
        press(arrow);
        return focusedObjectName();
    }

private:
    FocusScreen* m_screen = nullptr;
};

} // namespace quillmere
