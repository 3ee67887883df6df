#include "NavigationStack.h"

#include "MadeItem.h"

#include <QKeyEvent>
#include <QPropertyAnimation>
#include <QScopedValueRollback>

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
    m_isRefused = false;
    followDepth(true);
    Q_EMIT pageChanged();
}

void NavigationStack::setDepth(int depth)
{
    depth = std::max(depth, 0);
    if (m_depth == depth)
        return;
    m_depth = depth;
    followDepth(true);
    Q_EMIT depthChanged();
}

void NavigationStack::takeFocus()
{
    if (cover() || !front())
        FocusScreen::takeFocus();
    else
        front()->takeFocus();
}

void NavigationStack::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Back)
        return FocusScreen::keyPressEvent(event);
    // A button that is held on is no second press, but the stack's all the same while it has pages.
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
    giveKeysToFront();
    followDepth(false);
}

void NavigationStack::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    FocusScreen::geometryChange(newGeometry, oldGeometry);
    for (const Level& level : std::as_const(m_levels)) {
        if (level.screen)
            level.screen->setSize(newGeometry.size());
    }
}

/** Pushes and pops until there are as many pages as wanted; what is told on the way may change the depth again. */
void NavigationStack::followDepth(bool isSeen)
{
    if (m_levels.isEmpty() || m_isChanging)
        return;
    const QScopedValueRollback changing(m_isChanging, true);
    while (m_levels.size() - 1 != m_depth && !(m_isRefused && m_levels.size() - 1 < m_depth))
        change(isSeen);
}

void NavigationStack::change(bool isSeen)
{
    const FocusScreen* before = front();
    QList<Level> gone;
    while (m_levels.size() - 1 > m_depth)
        gone.append(m_levels.takeLast());
    while (m_levels.size() - 1 < m_depth && push(isSeen)) {
    }
    if (front() == before)
        return;
    if (front())
        front()->setVisible(true);
    giveKeysToFront();
    for (qsizetype i = 0; i < gone.size(); ++i)
        retire(gone.at(i).screen, isSeen && i == 0);
    hideCovered();
    for (const Level& level : std::as_const(gone)) {
        if (level.screen && level.hasAppeared)
            Q_EMIT level.screen->disappeared();
    }
    if (isSeen)
        appear();
}

bool NavigationStack::push(bool isSeen)
{
    const auto begin = [this](QQuickItem& item) {
        item.setSize(size());
        return QVariantMap{{QStringLiteral("level"), int(m_levels.size()) - 1}};
    };
    QQuickItem* item = m_page ? madeItem(*m_page, *this, begin) : nullptr;
    auto screen = qobject_cast<FocusScreen*>(item);
    if (!screen) {
        m_isRefused = true;
        if (item) {
            qWarning("a page of a NavigationStack is no FocusScreen");
            retire(item, false);
        }
        return false;
    }
    m_levels.append({screen});
    if (isSeen) {
        screen->setOpacity(0);
        fade(screen, 1);
    }
    return true;
}

/** The page has gone for everybody but the eye. */
void NavigationStack::retire(QQuickItem* page, bool isSeen)
{
    if (!page)
        return;
    page->setEnabled(false);
    if (isSeen) {
        fade(page, 0);
    } else {
        page->setVisible(false);
        page->deleteLater();
    }
}

/** From what it is at; a page that was to go is destroyed at the end. */
void NavigationStack::fade(QQuickItem* page, qreal opacity)
{
    delete page->findChild<QPropertyAnimation*>(QString(), Qt::FindDirectChildrenOnly);
    auto animation = new QPropertyAnimation(page, "opacity", page);
    animation->setDuration(qRound(fadeTime * std::abs(opacity - page->opacity())));
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

void NavigationStack::giveKeysToFront()
{
    if (hasActiveFocus())
        takeFocus();
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
