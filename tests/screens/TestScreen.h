#pragma once

#include <QEasingCurve>
#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <initializer_list>
#include <memory>

namespace quillmere {

/** A window in which a test shows a screen of the program. It sends keys and grabs pictures. */
class TestScreen
{
public:
    explicit TestScreen(QSize size = {1920, 1080});
    ~TestScreen();

    /**
     * Creates the item of a QML document and shows it; the usual imports are added. Aborts the test if the document
     * does not load.
     */
    QQuickItem* load(const QString& qml, const QVariantMap& properties = {});

    QQuickWindow& window() { return *m_window; }
    QQmlEngine& engine() { return m_engine; }

    /** The picture of the window once all animations have ended. */
    QImage picture();
    /** The picture of the next frame, even during an animation. */
    QImage currentPicture();

    /** Presses and releases one key. */
    void press(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {});
    void press(std::initializer_list<int> keys);
    void pressAndWait(int key);

    /** Waits until no frame has been drawn for a tenth of a second. */
    void waitUntilIdle();

    /**
     * Waits until a frame that began after this call has been drawn, so that all bindings and layouts are up to date.
     */
    void waitForFrame();

    int frames() const { return m_frames; }
    /** The number of frames drawn in this time once all animations have ended. */
    int framesAtRest(int milliseconds);

    /** The active focus item; null if there is none. */
    QQuickItem* focused() const { return m_window->activeFocusItem(); }
    /** The accessible name of the active focus item; empty if it has none. */
    QString focusedName() const { return focused() ? focused()->property("name").toString() : QString(); }

    /** `root` and the items below it whose QML type is named `type`, in item order. */
    static QList<QQuickItem*> all(QQuickItem* root, const QByteArray& type);
    static QQuickItem* first(QQuickItem* root, const QByteArray& type);

    /** The visible text items below `root`. */
    static QList<QQuickItem*> texts(QQuickItem* root);
    /** What they say. */
    static QStringList words(QQuickItem* root);
    /** Whether there are texts below `root`, none of which is parsed as markup. */
    static bool textsArePlain(QQuickItem* root);

    /** The durations, in milliseconds, of the animations that belong to `root` and the objects below it. */
    static QList<int> animationTimes(const QQuickItem* root);

    /** The easing curves of the same animations. */
    static QList<QEasingCurve> animationCurves(const QQuickItem* root);

    /** The geometry of an item in device pixels of the window. */
    static QRectF area(const QQuickItem* item);

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickItem> m_item;
    int m_frames = 0;
};

} // namespace quillmere
