#include "KeyboardController.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace quillmere {

using KeyboardLayout::Action;
using KeyboardLayout::Page;

namespace {

bool isArrow(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Left || key == Qt::Key_Right;
}

} // namespace

QString KeyboardController::placeholder()
{
    return u"Search"_s;
}

void KeyboardController::addInputItem(Focusable* item)
{
    item->setFlag(QQuickItem::ItemAcceptsInputMethod);
    item->installEventFilter(this);
}

void KeyboardController::updateInputMethod()
{
    // Qt does this by itself only for an item that has the focus.
    QGuiApplication::inputMethod()->update(Qt::ImQueryInput);
}

void KeyboardController::open()
{
    if (m_isShown)
        return;
    m_keys.setPage(Page::Letters);
    m_isShown = true;
    Q_EMIT shownChanged();
}

void KeyboardController::close()
{
    if (!m_isShown)
        return;
    m_isShown = false;
    Q_EMIT shownChanged();
}

void KeyboardController::press(int row)
{
    const KeyboardLayout::Key key = m_keys.key(row);
    switch (key.action) {
    case Action::Write:
        write(key.text);
        break;
    case Action::Delete:
        deleteOne();
        break;
    case Action::Clear:
        m_textInput->setProperty("text", QString());
        break;
    case Action::ShowPage:
        m_keys.setPage(key.page);
        break;
    case Action::Search:
        submit();
        break;
    }
}

bool KeyboardController::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_textInput)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
        return handleKey(static_cast<QKeyEvent&>(*event));
    case QEvent::InputMethod:
        QCoreApplication::sendEvent(m_textInput, event);
        m_isTyping = hasText();
        return true;
    case QEvent::InputMethodQuery:
        answerQuery(static_cast<const QQuickItem&>(*watched), static_cast<QInputMethodQueryEvent&>(*event));
        return true;
    default:
        return false;
    }
}

/** Returns whether a key press was used for the text; others go on to the screen. */
bool KeyboardController::handleKey(QKeyEvent& event)
{
    if (handleShortcut(event))
        return true;
    // While the on-screen keyboard is shown, arrows move the focus on it; else they move the cursor, where possible.
    if (event.key() == Qt::Key_Select || (m_isShown && isArrow(event.key()))) {
        m_isTyping = false;
        return false;
    }
    event.accept();
    QCoreApplication::sendEvent(m_textInput, &event);
    if (event.isAccepted())
        m_isTyping = hasText();
    return event.isAccepted();
}

/** Handles the remote's shortcuts and, after typing, a keyboard's return key. */
bool KeyboardController::handleShortcut(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_AudioRewind:
        deleteOne();
        return true;
    case Qt::Key_MediaTogglePlayPause:
    case Qt::Key_MediaPlay:
        submit();
        return true;
    case Qt::Key_Select: // a return key has a text, the remote's select has none
        if (!m_isTyping || event.text().isEmpty())
            return false;
        submit();
        return true;
    default:
        return false;
    }
}

/** Answers an input method's query about the text input, in the coordinates of the item that has the focus. */
void KeyboardController::answerQuery(const QQuickItem& item, QInputMethodQueryEvent& event) const
{
    QCoreApplication::sendEvent(m_textInput, &event);
    for (const auto query : {Qt::ImCursorRectangle, Qt::ImAnchorRectangle, Qt::ImInputItemClipRectangle}) {
        if (event.queries() & query)
            event.setValue(query, item.mapRectFromItem(m_textInput, event.value(query).toRectF()));
    }
}

void KeyboardController::write(const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(m_textInput, &event);
}

void KeyboardController::deleteOne()
{
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier);
    QCoreApplication::sendEvent(m_textInput, &event);
}

void KeyboardController::submit()
{
    m_isTyping = false;
    close();
    Q_EMIT submitted();
}

bool KeyboardController::hasText() const
{
    return !m_textInput->property("text").toString().isEmpty();
}

} // namespace quillmere
