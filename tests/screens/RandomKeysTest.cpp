#include "FocusTargets.h"
#include "LazyStack.h"
#include "ScrollArea.h"
#include "ShopFixture.h"
#include "TestMain.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QKeySequence>
#include <QRandomGenerator>

namespace quillmere {

namespace {

constexpr int keyCount = 20000;
constexpr int width = 320;                             // of the window, in pixels
constexpr qreal halfPixel = 1920.0 / width / 2 + 1e-6; // points; scrolls end on whole pixels

/** Whether an item will be completely visible in an area at the end of the scroll, or is too large for it. */
bool isInView(const ScrollArea& area, const QQuickItem& item)
{
    const QRectF rect = restingRect(item, area.contentItem());
    const bool isVertical = area.orientation() == Qt::Vertical;
    const qreal first = isVertical ? rect.top() : rect.left();
    const qreal last = isVertical ? rect.bottom() : rect.right();
    return last - first > area.viewExtent() || (first >= area.targetPosition() - halfPixel &&
                                                last <= area.targetPosition() + area.viewExtent() + halfPixel);
}

int pick(QRandomGenerator& random, std::initializer_list<int> choices)
{
    return choices.begin()[random.bounded(int(choices.size()))];
}

} // namespace

/**
 * Presses random keys while the hub sends random answers. At any time exactly one item has focus, or the screen itself
 * if nothing can be focused. At the end of all scrolls the focused item is visible, and so is the current row of every
 * other list.
 */
class RandomKeysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        bool isSet = false;
        quint32 seed = qEnvironmentVariable("QUILLMERE_SEED").toUInt(&isSet);
        if (!isSet)
            seed = QRandomGenerator::global()->generate();
        qInfo("QUILLMERE_SEED=%u", seed);
        m_random.seed(seed);
        m_fixture = std::make_unique<ShopFixture>(
            u"searchScreen: Component { TapeSearchView { store: canvas.store; hub: canvas.hub } }\n"
            "playerScreen: Component { FocusScreen { required property QtObject detail } }\n"
            "transcriptScreen: Component { FocusScreen { required property QtObject detail; Focusable { width: 90; "
            "height: 90 } } }"_s,
            QSize(width, width * 9 / 16));
    }

    void exactlyOneItemIsAlwaysFocused()
    {
        QElapsedTimer timer;
        timer.start();
        while (m_keys < keyCount) {
            pressOrRelease();
            if (m_random.bounded(12) == 0)
                changeStore();
            answerRandomRequest();
            QCoreApplication::processEvents();
            if (!m_fixture->isOpen()) {
                recordEvent(u"opened"_s);
                m_fixture->open();
            }
            // Queued changes may need some turns of the event loop.
            for (int turn = 0; turn < 3 && !focusError().isEmpty(); ++turn)
                QCoreApplication::processEvents();
            const QString error = focusError();
            QVERIFY2(error.isEmpty(), qPrintable(u"after %1 keys: %2\n%3"_s.arg(QString::number(m_keys), error,
                                                                                m_recentEvents.join(u'\n'))));
        }
        qInfo("%d keys in %lld ms, %d requests", m_keys, timer.elapsed(), m_fixture->http.count());
    }

private:
    void pressOrRelease()
    {
        const int key =
            pick(m_random, {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Left, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down,
                            Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Select,
                            Qt::Key_Back, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_MediaPlay, Qt::Key_Tab, Qt::Key_A});
        send(QEvent::KeyPress, key, m_pressedKeys.contains(key));
        m_pressedKeys.insert(key);
        if (m_random.bounded(5) == 0)
            return;
        // Sometimes the key repeats, and sometimes other pressed keys are released too.
        for (int repeat = m_random.bounded(8) == 0 ? m_random.bounded(12) : 0; repeat > 0; --repeat)
            send(QEvent::KeyPress, key, true);
        for (const int pressed : QSet(m_pressedKeys)) {
            if (pressed == key || m_random.bounded(2) == 0) {
                send(QEvent::KeyRelease, pressed);
                m_pressedKeys.remove(pressed);
            }
        }
    }

    void changeStore()
    {
        Store& store = *m_fixture->store;
        const int change = m_random.bounded(7);
        recordEvent(u"change %1"_s.arg(change));
        if (change == 0)
            store.setStatus({});
        else if (change == 1)
            store.setShelves({});
        else if (change == 2)
            store.setMarket(u"m%1"_s.arg(m_random.bounded(4)));
        else if (change == 3)
            store.setLastError(m_random.bounded(2) == 0 ? std::optional<QString>() : u"X"_s);
        else if (m_fixture->http.count() < 100000 && !store.isLoading())
            store.refresh();
    }

    void answerRandomRequest()
    {
        ScriptedHttpClient& http = m_fixture->http;
        for (int call = http.count() - 1; call >= std::max(0, http.count() - 8); --call) {
            if (!http.isWaiting(call) || m_random.bounded(3) != 0)
                continue;
            const QString path = http.request(call).url.path();
            recordEvent(u"answer to "_s + path);
            if (m_random.bounded(10) == 0)
                http.fail(call, u"X"_s);
            else if (path == u"/api/tv/status")
                http.answer(call, 200, status());
            else if (path == u"/api/tv/tapes")
                http.answer(call, 200, page());
            else
                http.answer(call, 200, QJsonDocument(tape(path.section(u'/', -1).toInt())).toJson());
            return;
        }
    }

    QByteArray status()
    {
        QJsonArray markets;
        for (int market = m_random.bounded(12); market > 0; --market) {
            const int number = m_random.bounded(12);
            markets.append(QJsonObject{{u"slug"_s, u"m%1"_s.arg(number)},
                                       {u"name"_s, u"Market number %1"_s.arg(number)},
                                       {u"tapes"_s, number}});
        }
        return QJsonDocument(QJsonObject{{u"rewindery"_s, QJsonObject{{u"tapes"_s, 99}, {u"markets"_s, markets}}}})
            .toJson();
    }

    /** A random selection of tapes in random order. */
    QByteArray page()
    {
        QJsonArray items;
        const int count = m_random.bounded(4) == 0 ? m_random.bounded(3) : m_random.bounded(60);
        for (int item = 0; item < count; ++item)
            items.append(tape(m_random.bounded(1, 60)));
        return QJsonDocument(QJsonObject{{u"items"_s, items}}).toJson();
    }

    QJsonObject tape(int id) const
    {
        static const QStringList kinds{u"council"_s, u"commission"_s, u"board"_s, u"committee"_s, u"other"_s};
        const QString& kind = kinds.at(id % kinds.size());
        return {{u"id"_s, id},
                {u"title"_s, u"Tape %1"_s.arg(id) + (id % 7 == 0 ? u" on Zoning "_s.repeated(40) : QString())},
                {u"meeting_date"_s, u"2024-01-02"_s},
                {u"has_transcript"_s, id % 2 == 0},
                {u"body"_s, QJsonObject{{u"slug"_s, kind}, {u"name"_s, kind}, {u"kind"_s, kind}}}};
    }

    void send(QEvent::Type type, int key, bool isRepeat = false)
    {
        recordEvent(QDebug::toString(type) + u' ' + QKeySequence(key).toString() +
                    (isRepeat ? u" again"_s : QString()));
        QKeyEvent event(type, key, Qt::NoModifier, QString(), isRepeat);
        QCoreApplication::sendEvent(&m_fixture->window(), &event);
        m_keys += type == QEvent::KeyPress;
    }

    /** Describes what is wrong with the focus; empty if nothing is. */
    QString focusError() const
    {
        const FocusScreen* front = m_fixture->front();
        const QQuickItem* focused = m_fixture->focused();
        int active = 0;
        bool canAnyHaveFocus = false;
        QList<const QQuickItem*> items{m_fixture->canvas};
        while (!items.isEmpty()) {
            const QQuickItem* item = items.takeLast();
            const auto children = item->childItems();
            std::copy(children.cbegin(), children.cend(), std::back_inserter(items));
            if (const auto* focusable = qobject_cast<const Focusable*>(item)) {
                active += focusable->hasActiveFocus() ? 1 : 0;
                canAnyHaveFocus |= focusable->isFocusable() && FocusScreen::enclosingScreen(focusable) == front;
            }
        }
        if (!canAnyHaveFocus)
            return focused == front ? QString()
                                    : u"nothing can have focus, but %1 has it"_s.arg(QDebug::toString(focused));
        if (active != 1)
            return u"%1 items are focused, and %2 is the active focus item on %3"_s.arg(
                QString::number(active), QDebug::toString(focused), QDebug::toString(front));
        const auto* focusable = qobject_cast<const Focusable*>(focused);
        if (!focusable || FocusScreen::enclosingScreen(focusable) != front)
            return u"the focused item is not on the front screen"_s;
        if (!focusable->isFocusable())
            return u"the focused item cannot have focus"_s;
        QString error = visibilityError(*focusable);
        for (const QQuickItem* item : TestScreen::all(m_fixture->canvas, "LazyStack")) {
            if (error.isEmpty() && item->isVisible() && FocusScreen::enclosingScreen(item) == front)
                error = visibilityError(static_cast<const LazyStack&>(*item), *focusable);
        }
        return error;
    }

    /** Describes a scroll area in which the focused item will not be visible; empty if there is none. */
    QString visibilityError(const Focusable& focused) const
    {
        for (const QQuickItem* item = focused.parentItem(); item; item = item->parentItem()) {
            const auto* area = qobject_cast<const ScrollArea*>(item);
            if (area && !isInView(*area, focused))
                return u"%1, which is focused, is not visible in %2"_s.arg(QDebug::toString(&focused),
                                                                           QDebug::toString(area));
        }
        return {};
    }

    /** Describes a list outside of which the focus is and whose current row will not be visible; empty if it will be. */
    QString visibilityError(const LazyStack& stack, const Focusable& focused) const
    {
        const QQuickItem* item = stack.parentItem();
        const ScrollArea* area = nullptr;
        for (; item && !area; item = item->parentItem()) {
            area = qobject_cast<const ScrollArea*>(item);
            area = area && area->orientation() == stack.orientation() ? area : nullptr;
        }
        if (!area || area->isAncestorOf(&focused) || !stack.model() || stack.model()->rowCount() == 0)
            return {};
        const QQuickItem* row = stack.itemAt(stack.currentRow());
        if (!row)
            return area->targetPosition() == 0 ? QString() : u"a list without a current row is not at its beginning"_s;
        return isInView(*area, *row)
                   ? QString()
                   : u"row %1 of %2 is not visible"_s.arg(stack.currentRow()).arg(QDebug::toString(&stack));
    }

    void recordEvent(const QString& event)
    {
        m_recentEvents.append(event);
        if (m_recentEvents.size() > 15)
            m_recentEvents.removeFirst();
    }

    std::unique_ptr<ShopFixture> m_fixture;
    QRandomGenerator m_random;
    QSet<int> m_pressedKeys; ///< keys that are pressed
    int m_keys = 0;
    QStringList m_recentEvents; ///< the latest events, for the failure message
};

QUILLMERE_TEST(RandomKeysTest, QGuiApplication)

} // namespace quillmere

#include "RandomKeysTest.moc"
