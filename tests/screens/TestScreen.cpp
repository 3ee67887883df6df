#include "TestScreen.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int quietTime = 100; // milliseconds without a frame that count as idle
constexpr int longestWait = 5000;

void collect(QQuickItem* item, const QByteArrayList& types, QList<QQuickItem*>& found)
{
    for (const QMetaObject* meta = item->metaObject(); meta; meta = meta->superClass()) {
        const QByteArray name = QByteArray(meta->className()).replace("quillmere::", "");
        const auto isCalled = [&name](const QByteArray& type) {
            return name == type || name.startsWith(type + "_QML");
        };
        if (std::any_of(types.begin(), types.end(), isCalled)) {
            found.append(item);
            break;
        }
    }
    const auto children = item->childItems();
    for (QQuickItem* child : children)
        collect(child, types, found);
}

template<typename Value>
QList<Value> valuesOfAnimations(const QQuickItem* root, const char* property)
{
    QList<Value> values;
    const auto objects = root->findChildren<QObject*>();
    for (const QObject* object : objects) {
        if (object->inherits("QQuickPropertyAnimation"))
            values.append(object->property(property).value<Value>());
    }
    return values;
}

} // namespace

TestScreen::TestScreen(QSize size) : m_window(std::make_unique<QQuickWindow>())
{
    m_engine.addImportPath(u":/qt/qml"_s);
    m_window->setColor(Qt::black);
    m_window->resize(size);
    QObject::connect(m_window.get(), &QQuickWindow::frameSwapped, m_window.get(), [this] { ++m_frames; });
}

TestScreen::~TestScreen()
{
    m_item.reset();
}

QQuickItem* TestScreen::load(const QString& qml, const QVariantMap& properties)
{
    QQmlComponent component(&m_engine);
    component.setData("import QtQuick\nimport Quillmere.Front\nimport Quillmere.Screen\n" + qml.toUtf8(), QUrl());
    if (!QTest::qWaitFor([&] { return component.isReady(); }))
        qFatal("%s", qPrintable(component.errorString()));
    m_item.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(properties)));
    if (!m_item) {
        qFatal("%s", qPrintable(component.errorString()));
    }
    m_item->setParentItem(m_window->contentItem());
    m_window->show();
    m_window->requestActivate();
    if (!QTest::qWaitForWindowActive(m_window.get()))
        QTest::qFail("the window is not active", __FILE__, __LINE__);
    waitUntilIdle();
    return m_item.get();
}

QImage TestScreen::picture()
{
    waitUntilIdle();
    return m_window->grabWindow().convertToFormat(QImage::Format_RGB32);
}

QImage TestScreen::currentPicture()
{
    waitForFrame();
    return m_window->grabWindow().convertToFormat(QImage::Format_RGB32);
}

void TestScreen::press(int key, const QString& text, Qt::KeyboardModifiers modifiers)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        QCoreApplication::sendEvent(m_window.get(), &event);
    }
}

void TestScreen::press(std::initializer_list<int> keys)
{
    for (const int key : keys)
        press(key);
}

void TestScreen::pressAndWait(int key)
{
    press(key);
    waitUntilIdle();
}

void TestScreen::waitUntilIdle()
{
    QElapsedTimer sinceStart;
    sinceStart.start();
    int seen = -1;
    while (seen != m_frames && sinceStart.elapsed() < longestWait) {
        seen = m_frames;
        QTest::qWait(quietTime);
    }
}

void TestScreen::waitForFrame()
{
    const int seen = m_frames;
    m_window->update();
    if (!QTest::qWaitFor([&] { return m_frames > seen; }))
        QTest::qFail("no frame is drawn", __FILE__, __LINE__);
}

QList<int> TestScreen::animationTimes(const QQuickItem* root)
{
    return valuesOfAnimations<int>(root, "duration");
}

QList<QEasingCurve> TestScreen::animationCurves(const QQuickItem* root)
{
    return valuesOfAnimations<QEasingCurve>(root, "easing");
}

int TestScreen::framesAtRest(int milliseconds)
{
    waitUntilIdle();
    const int before = m_frames;
    QTest::qWait(milliseconds);
    return m_frames - before;
}

QList<QQuickItem*> TestScreen::all(QQuickItem* root, const QByteArray& type)
{
    QList<QQuickItem*> found;
    collect(root, {type}, found);
    return found;
}

QQuickItem* TestScreen::first(QQuickItem* root, const QByteArray& type)
{
    const auto found = all(root, type);
    return found.isEmpty() ? nullptr : found.constFirst();
}

QList<QQuickItem*> TestScreen::texts(QQuickItem* root)
{
    QList<QQuickItem*> found;
    collect(root, {"StationText", "QQuickText"}, found);
    found.removeIf([](const QQuickItem* item) { return !item->isVisible(); });
    return found;
}

bool TestScreen::textsArePlain(QQuickItem* root)
{
    // A StationText draws with a TextEdit.
    QList<QQuickItem*> drawn;
    collect(root, {"QQuickTextEdit", "QQuickText"}, drawn);
    return !drawn.isEmpty() && std::all_of(drawn.cbegin(), drawn.cend(), [](const QQuickItem* item) {
        return item->property("textFormat").toInt() == int(Qt::PlainText);
    });
}

QStringList TestScreen::words(QQuickItem* root)
{
    QStringList all;
    for (const QQuickItem* item : texts(root))
        all.append(item->property("text").toString());
    return all;
}

QRectF TestScreen::area(const QQuickItem* item)
{
    return item->mapRectToScene(QRectF(QPointF(), item->size()));
}

} // namespace quillmere
