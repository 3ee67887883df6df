#include "NavigationStack.h"

#include "CreateItem.h"

#include <QKeyEvent>
#include <QPropertyAnimation>
#include <QScopedValueRollback>

namespace quillmere {

NavigationStack::NavigationStack(QQuickItem* parent) : FocusScreen(parent)
{
    connect(this, &FocusScreen::appeared, this, &NavigationStack::appear);
    connect(this, &FocusScreen::disappeared, this, &NavigationStack::disappear);
}

NavigationStack::~NavigationStack() = default;

FocusScreen* NavigationStack::front() const
{
    return m_levels.isEmpty() ? nullptr : m_levels.constLast().screen.data();
}

void NavigationStack::setPage(QQmlComponent* page)
{
    if (m_page == page)
        return;
    m_page = page;
    m_isPageInvalid = false;
    applyDepth(true);
    Q_EMIT pageChanged();
}

void NavigationStack::setDepth(int depth)
{
    depth = std::max(depth, 0);
    if (m_depth == depth)
        return;
    m_depth = depth;
    applyDepth(true);
    Q_EMIT depthChanged();
}

void NavigationStack::acquireFocus()
{
    if (coveringScreen() || !front())
        FocusScreen::acquireFocus();
    else
        front()->acquireFocus();
}

void NavigationStack::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Back)
        return FocusScreen::keyPressEvent(event);
    // Auto-repeat does not pop, but is accepted while there are pages.
    event->setAccepted(m_depth > 0);
    if (m_depth > 0 && !event->isAutoRepeat())
        Q_EMIT popped();
}

void NavigationStack::componentComplete()
{
    FocusScreen::componentComplete();
    const auto children = childItems();
    const auto root = std::find_if(children.cbegin(), children.cend(),
                                   [](QQuickItem* child) { return qobject_cast<FocusScreen*>(child); });
    m_levels.append({root == children.cend() ? nullptr : static_cast<FocusScreen*>(*root)});
    if (front())
        front()->setSize(size());
    focusFront();
    applyDepth(false);
}

void NavigationStack::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    FocusScreen::geometryChange(newGeometry, oldGeometry);
    for (const Level& level : std::as_const(m_levels)) {
        if (level.screen)
            level.screen->setSize(newGeometry.size());
    }
}

/** Pushes and pops until the number of pages equals `depth`. Slots called on the way may change it again. */
void NavigationStack::applyDepth(bool isAnimated)
{
    if (m_levels.isEmpty() || m_isChanging)
        return;
    const QScopedValueRollback changing(m_isChanging, true);
    while (m_levels.size() - 1 != m_depth && !(m_isPageInvalid && m_levels.size() - 1 < m_depth))
        updatePages(isAnimated);
}

void NavigationStack::updatePages(bool isAnimated)
{
    const FocusScreen* before = front();
    QList<Level> removed;
    while (m_levels.size() - 1 > m_depth)
        removed.append(m_levels.takeLast());
    while (m_levels.size() - 1 < m_depth && push(isAnimated)) {
    }
    if (front() == before)
        return;
    if (front())
        front()->setVisible(true);
    focusFront();
    for (qsizetype i = 0; i < removed.size(); ++i)
        removePage(removed.at(i).screen, isAnimated && i == 0);
    hideCovered();
    for (const Level& level : std::as_const(removed)) {
        if (level.screen && level.hasAppeared)
            Q_EMIT level.screen->disappeared();
    }
    if (isAnimated)
        appear();
}

bool NavigationStack::push(bool isAnimated)
{
    const auto initialize = [this](QQuickItem& item) {
        item.setSize(size());
        return QVariantMap{{QStringLiteral("level"), int(m_levels.size()) - 1}};
    };
    QQuickItem* item = m_page ? createItem(*m_page, *this, initialize) : nullptr;
    auto screen = qobject_cast<FocusScreen*>(item);
    if (!screen) {
        m_isPageInvalid = true;
        if (item) {
            qWarning("a page of a NavigationStack is no FocusScreen");
            removePage(item, false);
        }
        return false;
    }
    m_levels.append({screen});
    if (isAnimated) {
        screen->setOpacity(0);
        fade(screen, 1);
    }
    return true;
}

/** Removes a page: it is disabled now and destroyed after fading out, or at once. */
void NavigationStack::removePage(QQuickItem* page, bool isAnimated)
{
    if (!page)
        return;
    page->setEnabled(false);
    if (isAnimated) {
        fade(page, 0);
    } else {
        page->setVisible(false);
        page->deleteLater();
    }
}

/** Animates from the current opacity. A page that fades out is destroyed at the end. */
void NavigationStack::fade(QQuickItem* page, qreal opacity)
{
    delete page->findChild<QPropertyAnimation*>(QString(), Qt::FindDirectChildrenOnly);
    auto animation = new QPropertyAnimation(page, "opacity", page);
    animation->setDuration(qRound(fadeDuration * std::abs(opacity - page->opacity())));
    animation->setEndValue(opacity);
    connect(animation, &QPropertyAnimation::finished, this, &NavigationStack::hideCovered);
    if (opacity == 0)
        connect(animation, &QPropertyAnimation::finished, page, &QObject::deleteLater);
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void NavigationStack::hideCovered()
{
    bool isCovered = false;
    for (auto level = m_levels.crbegin(); level != m_levels.crend(); ++level) {
        if (!level->screen)
            continue;
        level->screen->setVisible(!isCovered);
        isCovered = isCovered || level->screen->opacity() == 1;
    }
}

void NavigationStack::focusFront()
{
    if (hasActiveFocus())
        acquireFocus();
    else if (front())
        front()->setFocus(true);
}

void NavigationStack::appear()
{
    if (!front())
        return;
    m_levels.last().hasAppeared = true;
    Q_EMIT front()->appeared();
}

void NavigationStack::disappear()
{
    for (qsizetype i = m_levels.size() - 1; i >= 0; --i) {
        if (m_levels.at(i).screen && std::exchange(m_levels[i].hasAppeared, false))
            Q_EMIT m_levels.at(i).screen->disappeared();
    }
}

} // namespace quillmere
