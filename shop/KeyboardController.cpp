#include "KeyboardController.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

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

void KeyboardController::typeAt(Focusable* spot)
{
    spot->setFlag(QQuickItem::ItemAcceptsInputMethod);
    spot->installEventFilter(this);
}

void KeyboardController::tellInputMethod()
{
    // Only an item that has the focus itself does this unasked.
    QGuiApplication::inputMethod()->update(Qt::ImQueryInput);
}

void KeyboardController::open()
{
    if (m_isShown)
        return;
    m_keys.show(Page::Letters);
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
        m_line->setProperty("text", QString());
        break;
    case Action::ShowPage:
        m_keys.show(key.page);
        break;
    case Action::Search:
        submit();
        break;
    }
}

bool KeyboardController::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_line)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
        return take(static_cast<QKeyEvent&>(*event));
    case QEvent::InputMethod:
        QCoreApplication::sendEvent(m_line, event);
        m_isTyping = hasText();
        return true;
    case QEvent::InputMethodQuery:
        describeLine(static_cast<const QQuickItem&>(*watched), static_cast<QInputMethodQueryEvent&>(*event));
        return true;
    default:
        return false;
    }
}

/** Answers whether a key press was for the line; all others are for the screen. */
bool KeyboardController::take(QKeyEvent& event)
{
    if (obey(event))
        return true;
    // Where the on-screen keyboard is, arrows walk on it; elsewhere they move the cursor as far as it goes.
    if (event.key() == Qt::Key_Select || (m_isShown && isArrow(event.key()))) {
        m_isTyping = false;
        return false;
    }
    event.accept();
    QCoreApplication::sendEvent(m_line, &event);
    if (event.isAccepted())
        m_isTyping = hasText();
    return event.isAccepted();
}

/** The remote's short ways, and a keyboard's return after typing. */
bool KeyboardController::obey(const QKeyEvent& event)
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

/** Tells an input method of the line, in the coordinates of what has the focus. */
void KeyboardController::describeLine(const QQuickItem& spot, QInputMethodQueryEvent& event) const
{
    QCoreApplication::sendEvent(m_line, &event);
    for (const auto query : {Qt::ImCursorRectangle, Qt::ImAnchorRectangle, Qt::ImInputItemClipRectangle}) {
        if (event.queries() & query)
            event.setValue(query, spot.mapRectFromItem(m_line, event.value(query).toRectF()));
    }
}

void KeyboardController::write(const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(m_line, &event);
}

void KeyboardController::deleteOne()
{
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier);
    QCoreApplication::sendEvent(m_line, &event);
}

void KeyboardController::submit()
{
    m_isTyping = false;
    close();
    Q_EMIT submitted();
}

bool KeyboardController::hasText() const
{
    return !m_line->property("text").toString().isEmpty();
}
