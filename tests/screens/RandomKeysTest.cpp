#include "FocusTargets.h"
#include "LazyStack.h"
#include "ScrollArea.h"
#include "ShopHouse.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QKeySequence>
#include <QRandomGenerator>
#include <QRegularExpression>

/**
 * Whatever is pressed, and whatever the hub sends meanwhile: one thing has the focus, or the screen itself; once the
 * scrolls have ended it is in view, and so is what it would come to in each row.
 */
class RandomKeysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void oneThingIsAlwaysFocused();

private:
    void pressOrRelease();
    void changeTheWorld();
    void answerSomething();
    QByteArray status();
    QByteArray page();
    QJsonObject tape(int id) const;
    void send(QEvent::Type type, int key, bool isRepeat = false);
    QString complaint() const;
    QString outOfView(const Focusable& focused) const;
    QString outOfView(const LazyStack& stack, const Focusable& focused) const;
    void note(const QString& event);

    std::unique_ptr<ShopHouse> m_house;
    QRandomGenerator m_dice;
    QSet<int> m_down; ///< keys that are held
    int m_keys = 0;
    QStringList m_latest; ///< what happened, for when it goes wrong
};

namespace {

constexpr int keyCount = 20000;
constexpr int width = 320;                              // of the window, in pixels
constexpr qreal halfAPixel = 1920.0 / width / 2 + 1e-6; // points, as scrolls end on whole pixels

template<typename T>
QString nameOf(const T& thing)
{
    QString name;
    QDebug(&name) << thing;
    return name;
}

/** Whether an item will be in view of an area, if it fits in there. */
bool isInView(const ScrollArea& area, const QQuickItem& item)
{
    const QRectF rect = rectOfRest(item, area.contentItem());
    const bool isVertical = area.orientation() == Qt::Vertical;
    const qreal first = isVertical ? rect.top() : rect.left();
    const qreal last = isVertical ? rect.bottom() : rect.right();
    return last - first > area.viewExtent() ||
           (first >= area.aim() - halfAPixel && last <= area.aim() + area.viewExtent() + halfAPixel);
}

int among(QRandomGenerator& dice, std::initializer_list<int> choices)
{
    return choices.begin()[dice.bounded(int(choices.size()))];
}

} // namespace

void RandomKeysTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    bool isSet = false;
    quint32 seed = qEnvironmentVariable("QUILLMERE_SEED").toUInt(&isSet);
    if (!isSet)
        seed = QRandomGenerator::global()->generate();
    qInfo("QUILLMERE_SEED=%u", seed);
    m_dice.seed(seed);
    m_house = std::make_unique<ShopHouse>(
        u"searchScreen: Component { TapeSearchView { store: house.store; hub: house.hub } }\n"
        "playerScreen: Component { FocusScreen { required property QtObject detail } }\n"
        "transcriptScreen: Component { FocusScreen { required property QtObject detail; Focusable { width: 90; "
        "height: 90 } } }"_s,
        QSize(width, width * 9 / 16));
}

void RandomKeysTest::oneThingIsAlwaysFocused()
{
    QElapsedTimer taken;
    taken.start();
    while (m_keys < keyCount) {
        pressOrRelease();
        if (m_dice.bounded(12) == 0)
            changeTheWorld();
        answerSomething();
        QCoreApplication::processEvents();
        if (!m_house->isOpen()) {
            note(u"opened"_s);
            m_house->open();
        }
        // What came last may have to come to an end first.
        for (int turn = 0; turn < 3 && !complaint().isEmpty(); ++turn)
            QCoreApplication::processEvents();
        const QString wrong = complaint();
        QVERIFY2(wrong.isEmpty(),
                 qPrintable(u"after %1 keys: %2\n%3"_s.arg(QString::number(m_keys), wrong, m_latest.join(u'\n'))));
    }
    qInfo("%d keys in %lld ms, %d requests", m_keys, taken.elapsed(), m_house->http.count());
}

void RandomKeysTest::send(QEvent::Type type, int key, bool isRepeat)
{
    note(nameOf(type) + u' ' + QKeySequence(key).toString() + (isRepeat ? u" again"_s : QString()));
    QKeyEvent event(type, key, Qt::NoModifier, QString(), isRepeat);
    QCoreApplication::sendEvent(&m_house->stage.window(), &event);
    m_keys += type == QEvent::KeyPress;
}

void RandomKeysTest::note(const QString& event)
{
    m_latest.append(event);
    if (m_latest.size() > 15)
        m_latest.removeFirst();
}

void RandomKeysTest::pressOrRelease()
{
    const int key =
        among(m_dice, {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Left, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down,
                       Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Select,
                       Qt::Key_Back, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_MediaPlay, Qt::Key_Tab, Qt::Key_A});
    send(QEvent::KeyPress, key, m_down.contains(key));
    m_down.insert(key);
    if (m_dice.bounded(5) == 0)
        return;
    // Held on for a while, or not; sometimes it is another one that is let go.
    for (int repeat = m_dice.bounded(8) == 0 ? m_dice.bounded(12) : 0; repeat > 0; --repeat)
        send(QEvent::KeyPress, key, true);
    for (const int held : QSet(m_down)) {
        if (held == key || m_dice.bounded(2) == 0) {
            send(QEvent::KeyRelease, held);
            m_down.remove(held);
        }
    }
}

void RandomKeysTest::changeTheWorld()
{
    Store& store = m_house->store;
    const int change = m_dice.bounded(7);
    note(u"change %1"_s.arg(change));
    switch (change) {
    case 0:
        store.setStatus({});
        break;
    case 1:
        store.setShelves({});
        break;
    case 2:
        store.setMarket(u"m%1"_s.arg(m_dice.bounded(4)));
        break;
    case 3:
        store.setLastError(m_dice.bounded(2) == 0 ? std::optional<QString>() : u"X"_s);
        break;
    default:
        if (m_house->http.count() < 100000 && !store.isLoading())
            store.refresh();
        break;
    }
}

void RandomKeysTest::answerSomething()
{
    ScriptedHttpClient& http = m_house->http;
    for (int call = http.count() - 1; call >= std::max(0, http.count() - 8); --call) {
        if (!http.isWaiting(call) || m_dice.bounded(3) != 0)
            continue;
        const QString path = http.request(call).url.path();
        note(u"answer to "_s + path);
        if (m_dice.bounded(10) == 0)
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

QByteArray RandomKeysTest::status()
{
    QJsonArray markets;
    for (int market = m_dice.bounded(12); market > 0; --market) {
        const int number = m_dice.bounded(12);
        markets.append(QJsonObject{
            {u"slug"_s, u"m%1"_s.arg(number)}, {u"name"_s, u"Market number %1"_s.arg(number)}, {u"tapes"_s, number}});
    }
    return QJsonDocument(QJsonObject{{u"rewindery"_s, QJsonObject{{u"tapes"_s, 99}, {u"markets"_s, markets}}}})
        .toJson();
}

/** Some of the tapes that there are, in some order. */
QByteArray RandomKeysTest::page()
{
    QJsonArray items;
    const int count = m_dice.bounded(4) == 0 ? m_dice.bounded(3) : m_dice.bounded(60);
    for (int item = 0; item < count; ++item)
        items.append(tape(m_dice.bounded(1, 60)));
    return QJsonDocument(QJsonObject{{u"items"_s, items}}).toJson();
}

QJsonObject RandomKeysTest::tape(int id) const
{
    static const QStringList kinds{u"council"_s, u"commission"_s, u"board"_s, u"committee"_s, u"other"_s};
    const QString& kind = kinds.at(id % kinds.size());
    return {{u"id"_s, id},
            {u"title"_s, u"Tape %1"_s.arg(id) + (id % 7 == 0 ? u" on Zoning "_s.repeated(40) : QString())},
            {u"meeting_date"_s, u"2024-01-02"_s},
            {u"has_transcript"_s, id % 2 == 0},
            {u"body"_s, QJsonObject{{u"slug"_s, kind}, {u"name"_s, kind}, {u"kind"_s, kind}}}};
}

/** What is wrong with the focus; nothing when it is as it should be. */
QString RandomKeysTest::complaint() const
{
    const FocusScreen* front = m_house->front();
    const QQuickItem* focused = m_house->focused();
    int active = 0;
    bool isAnyPossible = false;
    QList<const QQuickItem*> items{m_house->house};
    while (!items.isEmpty()) {
        const QQuickItem* item = items.takeLast();
        const auto children = item->childItems();
        std::copy(children.cbegin(), children.cend(), std::back_inserter(items));
        if (const auto* thing = qobject_cast<const Focusable*>(item)) {
            active += thing->hasActiveFocus() ? 1 : 0;
            isAnyPossible |= thing->canHoldFocus() && FocusScreen::around(thing) == front;
        }
    }
    if (!isAnyPossible)
        return focused == front ? QString() : u"nothing can be focused, but %1 is"_s.arg(nameOf(focused));
    if (active != 1)
        return u"%1 things are focused, and %2 has the keys of %3"_s.arg(QString::number(active), nameOf(focused),
                                                                         nameOf(front));
    const auto* thing = qobject_cast<const Focusable*>(focused);
    if (!thing || FocusScreen::around(thing) != front)
        return u"what is focused is not on the screen in front"_s;
    if (!thing->canHoldFocus())
        return u"what is focused cannot be"_s;
    QString wrong = outOfView(*thing);
    for (const QQuickItem* item : Stage::all(m_house->house, "LazyStack")) {
        if (wrong.isEmpty() && item->isVisible() && FocusScreen::around(item) == front)
            wrong = outOfView(static_cast<const LazyStack&>(*item), *thing);
    }
    return wrong;
}

/** Whether the focused thing will be in view of the areas around it. */
QString RandomKeysTest::outOfView(const Focusable& focused) const
{
    for (const QQuickItem* item = focused.parentItem(); item; item = item->parentItem()) {
        const auto* area = qobject_cast<const ScrollArea*>(item);
        if (area && !isInView(*area, focused))
            return u"%1, which is focused, is out of view of %2"_s.arg(nameOf(&focused), nameOf(area));
    }
    return {};
}

/** Whether that of a stack will be in view to which the focus would come, while it is not in the stack's area. */
QString RandomKeysTest::outOfView(const LazyStack& stack, const Focusable& focused) const
{
    const QQuickItem* item = stack.parentItem();
    const ScrollArea* area = nullptr;
    for (; item && !area; item = item->parentItem()) {
        area = qobject_cast<const ScrollArea*>(item);
        area = area && area->orientation() == stack.orientation() ? area : nullptr;
    }
    if (!area || area->isAncestorOf(&focused) || !stack.model() || stack.model()->rowCount() == 0)
        return {};
    const QQuickItem* row = stack.itemAt(stack.place());
    if (!row)
        return area->aim() == 0 ? QString() : u"a row that was not entered is not at its beginning"_s;
    return isInView(*area, *row) ? QString() : u"row %1 of %2 is out of view"_s.arg(stack.place()).arg(nameOf(&stack));
}

QTEST_MAIN(RandomKeysTest)
#include "RandomKeysTest.moc"
