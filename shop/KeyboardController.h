#pragma once

#include "Focusable.h"
#include "KeyList.h"

#include <QPointer>

class QInputMethodQueryEvent;
class QKeyEvent;

namespace quillmere {

/**
 * Input of a search field. Forwards events of real keyboards and input methods from the items that can have the focus
 * to the text input, and handles the keys of the on-screen keyboard. Screen thread only; the field owns it.
 */
class KeyboardController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /** The TextInput with the text; owned by the field. It never has the focus itself. */
    Q_PROPERTY(QQuickItem* textInput MEMBER m_textInput FINAL)
    Q_PROPERTY(QString placeholder READ placeholder CONSTANT FINAL)
    /** Maximum length of the text, in UTF-16 units. */
    Q_PROPERTY(int longestText READ longestText CONSTANT FINAL)
    /** Whether the on-screen keyboard is shown. */
    Q_PROPERTY(bool shown READ isShown NOTIFY shownChanged FINAL)
    Q_PROPERTY(quillmere::KeyList* keys READ keys CONSTANT FINAL)

public:
    using QObject::QObject;

    static constexpr int longestText() { return 200; }

    static QString placeholder();
    bool isShown() const { return m_isShown; }
    KeyList* keys() { return &m_keys; }

    /** From now on, what is typed while `item` has the focus goes into the text input. */
    Q_INVOKABLE void addInputItem(quillmere::Focusable* item);

    /** The text input has changed: an active input method queries it again. */
    Q_INVOKABLE void updateInputMethod();

    /** Shows the on-screen keyboard with the page of letters. */
    Q_INVOKABLE void open();
    Q_INVOKABLE void close();

    /** The viewer selected the key in this row of `keys`. */
    Q_INVOKABLE void press(int row);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void shownChanged();

    /** The viewer submitted the text; the on-screen keyboard is already closed. */
    void submitted();

private:
    bool handleKey(QKeyEvent& event);
    bool handleShortcut(const QKeyEvent& event);
    void answerQuery(const QQuickItem& item, QInputMethodQueryEvent& event) const;
    void write(const QString& text);
    void deleteOne();
    void submit();
    bool hasText() const;

    QPointer<QQuickItem> m_textInput;
    KeyList m_keys;
    bool m_isShown = false;
    bool m_isTyping = false; ///< the viewer typed last with a real keyboard or an input method
};

} // namespace quillmere
