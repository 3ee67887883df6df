#pragma once

#include "RemoteInput.h"
#include "ScreenFixture.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethodEvent>

namespace quillmere {

/**
 * A page with a search field, a Focusable below it, and the on-screen keyboard; the viewer has a remote and a keyboard.
 */
struct TypingFixture : ScreenFixture
{
    explicit TypingFixture(QSize size = {960, 540}) : ScreenFixture(size)
    {
        new RemoteInput(&window(), clock);
        loadCanvas(u"import Quillmere.Shop"_s,
                   u"FocusScreen { objectName: 'page'; anchors.fill: parent; focus: true\n"
                   "VeneerBackground { anchors.fill: parent }\n"
                   "Focusable { objectName: 'below'; x: 90; y: 700; width: 900; height: 300 }\n"
                   "SearchField { id: field; objectName: 'field'; x: 90; y: 226; width: 1740; height: implicitHeight\n"
                   "preferred: true; property int submissions; onSubmitted: ++submissions }\n"
                   "OnScreenKeyboard { objectName: 'keyboard'; field: field } }"_s);
    }

    template<typename T = QQuickItem>
    T* named(const char* name) const
    {
        return canvas->findChild<T*>(QLatin1String(name));
    }

    bool isFieldFocused() { return focused() == named("field"); }

    /** The caption of the focused key; empty if no key has focus. */
    QString key() { return focused() ? focused()->property("text").toString() : QString(); }

    FocusScreen* board() const { return named<FocusScreen>("page")->coveringScreen(); }
    bool isOpen() const { return board(); }
    QList<QQuickItem*> keys() const { return all(board(), "PlateButton"); }

    QString text() const { return named("field")->property("text").toString(); }
    void setText(const QString& text) { named("field")->setProperty("text", text); }
    int submissions() const { return named("field")->property("submissions").toInt(); }

    /** Opens the keyboard with the remote. */
    void open() { press(Qt::Key_Select); }

    /** Presses a button of the remote `times` times. */
    void press(int key, int times = 1)
    {
        for (int i = 0; i < times; ++i, ++presses)
            typeKey(key);
    }

    /** Moves the focus to a key and selects it. */
    void selectKey(const QString& caption)
    {
        focusKey(caption);
        press(Qt::Key_Select);
    }

    void focusKey(const QString& caption)
    {
        const auto all = keys();
        for (const QQuickItem* key : all) {
            if (key->property("text") != caption)
                continue;
            const auto distance = [&] { return key->position() - focused()->position(); };
            while (!qFuzzyIsNull(distance().y()))
                press(distance().y() > 0 ? Qt::Key_Down : Qt::Key_Up);
            while (!qFuzzyIsNull(distance().x()))
                press(distance().x() > 0 ? Qt::Key_Right : Qt::Key_Left);
            return;
        }
        qFatal("there is no key %s", qPrintable(caption));
    }

    /** Presses and releases a key of a physical keyboard. */
    void typeKey(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {})
    {
        TestScreen::press(key, text, modifiers);
    }

    void typeReturn() { typeKey(Qt::Key_Return, u"\r"_qs); }

    void typeText(const QString& text)
    {
        for (const QChar character : text)
            typeKey(character.toUpper().unicode(), character);
    }

    /** Simulates an input method or a dead key: the preedit text, then the committed text. */
    void compose(const QString& preedit, const QString& commit = {})
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
    }

    /** The focus object's answer to an input method query. */
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const
    {
        QInputMethodQueryEvent event(query);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
        return event.value(query);
    }

    int presses = 0; ///< of the remote
};

struct OpenKeyboardFixture : TypingFixture
{
    OpenKeyboardFixture() { open(); }
};

} // namespace quillmere
