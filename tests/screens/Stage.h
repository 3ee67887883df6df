#pragma once

#include <QEasingCurve>
#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

/** A window on which a test puts a screen of the set, and the eyes and the remote in front of it. */
class Stage
{
public:
    explicit Stage(QSize size = {1920, 1080});
    ~Stage();

    /** Makes the QML document's item and shows it; the imports are written already. Ends the test when it does not load. */
    QQuickItem* put(const QString& qml, const QVariantMap& properties = {});

    QQuickWindow& window() { return *m_window; }
    QQmlEngine& engine() { return m_engine; }

    /** What is on the glass once nothing moves any more. */
    QImage picture();

    /** Presses and releases one key. */
    void press(int key);

    /** Waits until no frame has been drawn for a tenth of a second. */
    void settle();

    /** Waits until a frame begun after this call has been drawn, so that everything stands where it should. */
    void waitForFrame();

    int frames() const { return m_frames; }

    /** The items at and below `root` whose type is called `type`, in their order. */
    static QList<QQuickItem*> all(QQuickItem* root, const QByteArray& type);
    static QQuickItem* first(QQuickItem* root, const QByteArray& type);

    /** The visible texts below `root`. */
    static QList<QQuickItem*> texts(QQuickItem* root);

    /** The durations of the animations made at and below `root`, in milliseconds. */
    static QList<int> animationTimes(const QQuickItem* root);

    /** How they run from their beginnings to their ends. */
    static QList<QEasingCurve> animationCurves(const QQuickItem* root);

    /** Where an item is on the glass, in device pixels. */
    static QRectF area(const QQuickItem* item);

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickItem> m_item;
    int m_frames = 0;
};
