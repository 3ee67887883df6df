#pragma once

#include "FocusScreen.h"

#include <QPointer>
#include <QQmlComponent>

namespace quillmere {

/**
 * A stack of screens that acts as one screen. Its first FocusScreen child is the root. `depth` is the number of pages
 * above the root; each is created from `page`, which has a `required property int level` (0 for the first). A pushed
 * page fades in over 0.25 s, a popped one fades out; keys go to the new top screen before the animation. Covered pages
 * are not drawn. Back emits `popped`, once for each press. Root and pages are resized to the stack's size. The stack
 * emits `appeared` of a screen when it becomes the top one, and of the top one when the stack appears. It emits
 * `disappeared` of a popped page, and of every screen when the stack disappears; a covered page has not disappeared.
 * Screen thread only; owned by its parent item.
 */
class NavigationStack : public quillmere::FocusScreen
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQmlComponent* page READ page WRITE setPage NOTIFY pageChanged FINAL)
    Q_PROPERTY(int depth READ depth WRITE setDepth NOTIFY depthChanged FINAL)
    /** The topmost page, or the root. */
    Q_PROPERTY(quillmere::FocusScreen* front READ front NOTIFY depthChanged FINAL)

public:
    explicit NavigationStack(QQuickItem* parent = nullptr);
    ~NavigationStack() override;

    static constexpr int fadeDuration = 250; // milliseconds

    QQmlComponent* page() const { return m_page; }
    void setPage(QQmlComponent* page);
    int depth() const { return m_depth; }
    void setDepth(int depth);
    FocusScreen* front() const;

    void acquireFocus() override;

Q_SIGNALS:
    void pageChanged();
    void depthChanged();

    /** Back was pressed on a page. The owner of `depth` is expected to decrease it. */
    void popped();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    /** The root or a page. */
    struct Level
    {
        QPointer<FocusScreen> screen;
        bool hasAppeared = false; ///< `appeared` was emitted, and no `disappeared` after it
    };

    void applyDepth(bool isAnimated);
    void updatePages(bool isAnimated);
    bool push(bool isAnimated);
    void removePage(QQuickItem* page, bool isAnimated);
    void fade(QQuickItem* page, qreal opacity);
    void hideCovered();
    void focusFront();
    void appear();
    void disappear();

    QPointer<QQmlComponent> m_page;
    int m_depth = 0;
    QList<Level> m_levels; ///< from root to top
    bool m_isChanging = false;
    bool m_isPageInvalid = false; ///< creating a FocusScreen from `page` failed
};

} // namespace quillmere
