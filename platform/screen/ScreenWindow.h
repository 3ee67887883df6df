#pragma once

#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * The only window of the program: full screen, without a mouse pointer. Its `color` fills the margins beside the
 * canvas. Screen thread only; owned by its creator.
 */
class ScreenWindow : public QQuickWindow
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isBlank READ isBlank NOTIFY isBlankChanged FINAL)

public:
    explicit ScreenWindow(QWindow* parent = nullptr);

    /** Shows the window in full screen and activates it, with or without a window manager. */
    void present();

    /** Whether the display sleeps. Then the window must be black, and nothing may be animated. */
    bool isBlank() const { return m_isBlank; }
    void setBlank(bool blank);

Q_SIGNALS:
    void isBlankChanged();

private:
    bool m_isBlank = false;
};

} // namespace quillmere
