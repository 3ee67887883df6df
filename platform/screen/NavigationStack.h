#pragma once

#include "FocusScreen.h"

#include <QPointer>
#include <QQmlComponent>

/**
 * Screens pushed one over the other, themselves one screen. Its first FocusScreen child is the root; `depth` says how
 * many pages lie over it, each made from `page`, which has a `required property int level` (0 for the first). A push
 * fades in within 0.25 s, a pop out; the keys belong to the page that comes at once, and a page that is covered is not
 * drawn. Back asks to pop, once a press. Root and pages are given the stack's size.
 * Pages are FocusScreens; the stack tells them when they appear and disappear, also because itself does.
 * Screen thread only; its parent item owns it.
 */
class NavigationStack : public FocusScreen
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQmlComponent* page READ page WRITE setPage NOTIFY pageChanged FINAL)
    Q_PROPERTY(int depth READ depth WRITE setDepth NOTIFY depthChanged FINAL)
    /** The page in front, or the root. */
    Q_PROPERTY(FocusScreen* front READ front NOTIFY depthChanged FINAL)

public:
    explicit NavigationStack(QQuickItem* parent = nullptr);
    ~NavigationStack() override;

    static constexpr int fadeTime = 250; // milliseconds

    QQmlComponent* page() const { return m_page; }
    void setPage(QQmlComponent* page);
    int depth() const { return m_depth; }
    void setDepth(int depth);
    FocusScreen* front() const;

    void takeFocus() override;

Q_SIGNALS:
    void pageChanged();
    void depthChanged();

    /** The viewer wants back from a page; whoever owns the path shortens it. */
    void popped();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    /** The root, or a page. */
    struct Level
    {
        QPointer<FocusScreen> screen;
        bool hasAppeared = false; ///< and not disappeared since
    };

    void followDepth(bool isSeen);
    void change(bool isSeen);
    bool push(bool isSeen);
    void retire(QQuickItem* page, bool isSeen);
    void fade(QQuickItem* page, qreal opacity);
    void hideCovered();
    void giveKeysToFront();
    void appear();
    void disappear();

    QPointer<QQmlComponent> m_page;
    int m_depth = 0;
    QList<Level> m_levels; ///< the root first
    bool m_isChanging = false;
    bool m_isRefused = false; ///< `page` makes no screen
};
