#include "RemoteControl.h"

#include <QThread>

#include <stdexcept>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

struct Button
{
    const char16_t* name;
    const char* keysym;
};

constexpr Button table[] = {
    {u"select", "Return"},
    {u"back", "XF86Back"},
    {u"play/pause", "XF86AudioPlay"},
    {u"stop", "XF86AudioStop"},
    {u"forward", "XF86AudioForward"},
    {u"rewind", "XF86AudioRewind"},
    {u"up", "Up"},
    {u"down", "Down"},
    {u"left", "Left"},
    {u"right", "Right"},
    {u"menu", "Menu"},
    {u"page up", "Prior"},
    {u"page down", "Next"},
};

constexpr unsigned long betweenPresses = 15; // milliseconds; a shorter release would look like X key repeat

QByteArray keysymOf(const QString& button)
{
    for (const Button& row : table) {
        if (button == QStringView(row.name))
            return row.keysym;
    }
    return button.toLatin1();
}

} // namespace

RemoteControl::RemoteControl(std::shared_ptr<XConnection> connection) : m_connection(std::move(connection))
{
    int event = 0;
    int error = 0;
    int major = 0;
    int minor = 0;
    if (!XTestQueryExtension(m_connection->display(), &event, &error, &major, &minor))
        throw std::runtime_error("The X display has no XTEST extension.");
}

QStringList RemoteControl::buttons()
{
    QStringList names;
    for (const Button& row : table)
        names.append(QString::fromUtf16(row.name));
    return names;
}

void RemoteControl::press(const QString& button)
{
    send(button, true);
    send(button, false);
    QThread::msleep(betweenPresses);
}

void RemoteControl::keyDown(const QString& button)
{
    send(button, true);
}

void RemoteControl::keyUp(const QString& button)
{
    send(button, false);
}

void RemoteControl::send(const QString& button, bool down)
{
    Display* display = m_connection->display();
    const KeySym keysym = XStringToKeysym(keysymOf(button).constData());
    const KeyCode key = keysym == NoSymbol ? KeyCode(0) : XKeysymToKeycode(display, keysym);
    if (key == 0)
        throw std::invalid_argument(("The display has no key for \""_L1 + button + "\"."_L1).toStdString());
    XTestFakeKeyEvent(display, key, down ? True : False, CurrentTime);
    XSync(display, False); // the server sets the event's time
}

bool RemoteControl::focusTopWindow()
{
    constexpr int large = 400; // pixels; narrower windows are tool tips
    Display* display = m_connection->display();
    Window root = 0;
    Window parent = 0;
    Window* windows = nullptr;
    unsigned count = 0;
    XQueryTree(display, m_connection->root(), &root, &parent, &windows, &count);
    bool given = false;
    for (unsigned i = count; i > 0 && !given; --i) {
        XWindowAttributes window;
        if (XGetWindowAttributes(display, windows[i - 1], &window) && window.map_state == IsViewable &&
            window.width > large) {
            XSetInputFocus(display, windows[i - 1], RevertToPointerRoot, CurrentTime);
            given = true;
        }
    }
    if (windows)
        XFree(windows);
    XSync(display, False);
    return given;
}

} // namespace quillmere
