#pragma once

#include "FocusScreen.h"
#include "RemoteInput.h"
#include "ScriptedClock.h"
#include "Stage.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTest>

/** A page with a search field, something below it and its keyboard, before a viewer with a remote and a keyboard. */
struct TypingHouse
{
    ScriptedClock clock;
    Stage stage;
    QQuickItem* house = nullptr;

    explicit TypingHouse(QSize size = {960, 540}) : stage(size)
    {
        new RemoteInput(&stage.window(), clock);
        house = stage.put(u"import Quillmere.Shop\n"
                          "Canvas { FocusScreen { objectName: \"page\"; anchors.fill: parent; focus: true\n"
                          "VeneerBackground { anchors.fill: parent }\n"
                          "Focusable { objectName: \"below\"; x: 90; y: 700; width: 900; height: 300 }\n"
                          "SearchField { id: field; objectName: \"field\"; x: 90; y: 226; width: 1740; "
                          "height: implicitHeight; preferred: true\n"
                          "property int submissions; onSubmitted: ++submissions }\n"
                          "OnScreenKeyboard { objectName: \"keyboard\"; field: field } } }"_qs);
    }

    template<typename T = QQuickItem>
    T* named(const char* name) const
    {
        return house->findChild<T*>(QLatin1String(name));
    }

    QQuickItem* focused() { return stage.window().activeFocusItem(); }
    bool isFieldFocused() { return focused() == named("field"); }

    /** The caption of the key that has the focus; empty when no key has it. */
    QString key() { return focused() ? focused()->property("text").toString() : QString(); }

    FocusScreen* board() const { return named<FocusScreen>("page")->cover(); }
    bool isOpen() const { return board(); }
    QList<QQuickItem*> keys() const { return Stage::all(board(), "PlateButton"); }

    QString text() const { return named("field")->property("text").toString(); }
    void setText(const QString& text) { named("field")->setProperty("text", text); }
    int submissions() const { return named("field")->property("submissions").toInt(); }

    /** Opens the keyboard with the remote. */
    void open() { press(Qt::Key_Select); }

    /** A button of the remote, once for each key. */
    void press(int key, int times = 1)
    {
        for (int i = 0; i < times; ++i, ++presses)
            strike(key);
    }

    /** Walks to a key and selects it. */
    void type(const QString& caption)
    {
        walkTo(caption);
        press(Qt::Key_Select);
    }

    void walkTo(const QString& caption)
    {
        const auto all = keys();
        for (const QQuickItem* key : all) {
            if (key->property("text") != caption)
                continue;
            const auto rest = [&] { return key->position() - focused()->position(); };
            while (!qFuzzyIsNull(rest().y()))
                press(rest().y() > 0 ? Qt::Key_Down : Qt::Key_Up);
            while (!qFuzzyIsNull(rest().x()))
                press(rest().x() > 0 ? Qt::Key_Right : Qt::Key_Left);
            return;
        }
        qFatal("there is no key %s", qPrintable(caption));
    }

    /** A key of a keyboard. */
    void strike(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {})
    {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, modifiers, text);
            QCoreApplication::sendEvent(&stage.window(), &event);
        }
    }

    void strikeReturn() { strike(Qt::Key_Return, u"\r"_qs); }

    void strikeAll(const QString& text)
    {
        for (const QChar character : text)
            strike(character.toUpper().unicode(), character);
    }

    /** What an input method or a dead key writes: first it is only seen, then it stands there. */
    void compose(const QString& preedit, const QString& commit = {})
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
    }

    /** What an input method is told of what has the focus. */
    QVariant described(Qt::InputMethodQuery query) const
    {
        QInputMethodQueryEvent event(query);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
        return event.value(query);
    }

    int presses = 0; ///< of the remote
};
