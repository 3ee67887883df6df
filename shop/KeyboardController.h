#pragma once

#include "Focusable.h"
#include "KeyList.h"

#include <QPointer>

class QInputMethodQueryEvent;
class QKeyEvent;

/**
 * What writes into a search field: a real keyboard and the platform's input methods, at whatever thing of the field's has
 * the focus, and the keys of the on-screen keyboard. Screen thread only; the field owns it.
 */
class KeyboardController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /** The TextInput that holds the text, owned by the field; it never has the focus itself. */
    Q_PROPERTY(QQuickItem* line MEMBER m_line FINAL)
    Q_PROPERTY(QString placeholder READ placeholder CONSTANT FINAL)
    /** The longest text, in UTF-16 units. */
    Q_PROPERTY(int longestText READ longestText CONSTANT FINAL)
    /** Whether the on-screen keyboard is there. */
    Q_PROPERTY(bool shown READ isShown NOTIFY shownChanged FINAL)
    Q_PROPERTY(KeyList* keys READ keys CONSTANT FINAL)

public:
    using QObject::QObject;

    static constexpr int longestText() { return 200; }

    static QString placeholder();
    bool isShown() const { return m_isShown; }
    KeyList* keys() { return &m_keys; }

    /** Whatever is typed while `spot` has the focus goes into the line from now on. */
    Q_INVOKABLE void typeAt(Focusable* spot);

    /** The line is not as it was: an input method at work asks about it anew. */
    Q_INVOKABLE void tellInputMethod();

    /** Shows the on-screen keyboard, with its letters. */
    Q_INVOKABLE void open();
    Q_INVOKABLE void close();

    /** The viewer selected a key of `keys`. */
    Q_INVOKABLE void press(int row);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void shownChanged();

    /** The viewer has finished the text; the on-screen keyboard is gone. */
    void submitted();

private:
    bool take(QKeyEvent& event);
    bool obey(const QKeyEvent& event);
    void describeLine(const QQuickItem& spot, QInputMethodQueryEvent& event) const;
    void write(const QString& text);
    void deleteOne();
    void submit();
    bool hasText() const;

    QPointer<QQuickItem> m_line;
    KeyList m_keys;
    bool m_isShown = false;
    bool m_isTyping = false; ///< the viewer's latest step was on a real keyboard, and there is something to search
};
