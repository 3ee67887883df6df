#pragma once

#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

/**
 * The set's one window: the whole display, without a pointer. Its `color` fills what the canvas leaves free.
 * Screen thread only; whoever made it owns it.
 */
class ScreenWindow : public QQuickWindow
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isBlank READ isBlank NOTIFY isBlankChanged FINAL)

public:
    explicit ScreenWindow(QWindow* parent = nullptr);

    /** Covers the display and takes the keys, with or without a window manager. */
    void present();

    /** While the display sleeps: what is shown must be black, and nothing may move. */
    bool isBlank() const { return m_isBlank; }
    void setBlank(bool blank);

Q_SIGNALS:
    void isBlankChanged();

private:
    bool m_isBlank = false;
};
