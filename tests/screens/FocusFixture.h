#pragma once

#include "FocusScreen.h"
#include "FocusSection.h"
#include "ScrollArea.h"
#include "TestScreen.h"

#include <QKeyEvent>
#include <QTest>

namespace quillmere {

using namespace Qt::StringLiterals;

/** Presses a key without releasing it. Returns whether the press was accepted. */
inline bool isAccepted(TestScreen& screen, int key, bool isRepeat = false)
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, {}, isRepeat);
    QCoreApplication::sendEvent(&screen.window(), &press);
    return press.isAccepted();
}

/** The QML of an item. */
inline QString qmlItem(const char* type, const char* name, QRectF rect, const QString& more)
{
    return u"%1 { objectName: \"%2\"; x: %3; y: %4; width: %5; height: %6; %7 }\n"_s
        .arg(QLatin1String(type), QLatin1String(name))
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height())
        .arg(more);
}

inline QString focusable(const char* name, QRectF rect, const char* more = "")
{
    return qmlItem("Focusable", name, rect, QLatin1String(more));
}

inline QString section(QRectF rect, const QString& items)
{
    return qmlItem("FocusSection", "section", rect, items);
}

/** A section with three Focusables "a", "b" and "c"; "b" is nearer to "c" than to "a". */
inline QString row()
{
    return section({250, 200, 500, 100}, focusable("a", {0, 0, 100, 100}) + focusable("b", {200, 0, 100, 100}) +
                                             focusable("c", {310, 0, 100, 100}));
}

/** A scroll area whose viewport is 100 points wide and 1000 points high. */
inline QString scrollArea(int contentExtent, const QString& content)
{
    return qmlItem("ScrollArea", "area", {0, 0, 100, 1000}, u"contentExtent: %1\n"_s.arg(contentExtent) + content);
}

/** A window with one FocusScreen, whose items are identified by their object names. */
class FocusFixture : public TestScreen
{
public:
    /** Shows a screen with these items and gives it the focus. */
    explicit FocusFixture(const QString& items)
        : screen(qobject_cast<FocusScreen*>(load(qmlItem("FocusScreen", "screen", {0, 0, 1920, 1080}, items))))
    {
        screen->acquireFocus();
    }

    template<typename T = Focusable>
    T& named(const char* name)
    {
        auto* const found = screen->findChild<T*>(QLatin1String(name));
        if (!found)
            qFatal("there is no %s", name);
        return *found;
    }

    ScrollArea& area() { return named<ScrollArea>("area"); }

    /** The object name of the active focus item; empty if there is none. */
    QString focusedObjectName() const { return focused() ? focused()->objectName() : QString(); }

    void focus(const char* name, bool immediately = false) { screen->focus(&named(name), immediately); }

    /** Focuses an item, presses an arrow key, and returns the name of the item that then has focus. */
    QString focusedAfter(const char* name, int arrow)
    {
        focus(name);
        press(arrow);
        return focusedObjectName();
    }

    FocusScreen* const screen;
};

} // namespace quillmere
