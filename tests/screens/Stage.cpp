#include "Stage.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int quietTime = 100; // milliseconds without a frame that count as idle
constexpr int longestWait = 5000;

void collect(QQuickItem* item, const QByteArrayList& types, QList<QQuickItem*>& found)
{
    for (const QMetaObject* meta = item->metaObject(); meta; meta = meta->superClass()) {
        const QByteArray name = meta->className();
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

Stage::Stage(QSize size) : m_window(std::make_unique<QQuickWindow>())
{
    m_engine.addImportPath(u":/qt/qml"_s);
    m_window->setColor(Qt::black);
    m_window->resize(size);
    QObject::connect(m_window.get(), &QQuickWindow::frameSwapped, m_window.get(), [this] { ++m_frames; });
}

Stage::~Stage()
{
    m_item.reset();
}

QQuickItem* Stage::load(const QString& qml, const QVariantMap& properties)
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

QImage Stage::picture()
{
    waitUntilIdle();
    return m_window->grabWindow().convertToFormat(QImage::Format_RGB32);
}

void Stage::press(int key)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &event);
    }
}

void Stage::waitUntilIdle()
{
    QElapsedTimer sinceStart;
    sinceStart.start();
    int seen = -1;
    while (seen != m_frames && sinceStart.elapsed() < longestWait) {
        seen = m_frames;
        QTest::qWait(quietTime);
    }
}

void Stage::waitForFrame()
{
    const int seen = m_frames;
    m_window->update();
    if (!QTest::qWaitFor([&] { return m_frames > seen; }))
        QTest::qFail("no frame is drawn", __FILE__, __LINE__);
}

QList<int> Stage::animationTimes(const QQuickItem* root)
{
    return valuesOfAnimations<int>(root, "duration");
}

QList<QEasingCurve> Stage::animationCurves(const QQuickItem* root)
{
    return valuesOfAnimations<QEasingCurve>(root, "easing");
}

QList<QQuickItem*> Stage::all(QQuickItem* root, const QByteArray& type)
{
    QList<QQuickItem*> found;
    collect(root, {type}, found);
    return found;
}

QQuickItem* Stage::first(QQuickItem* root, const QByteArray& type)
{
    const auto found = all(root, type);
    return found.isEmpty() ? nullptr : found.constFirst();
}

QList<QQuickItem*> Stage::texts(QQuickItem* root)
{
    QList<QQuickItem*> found;
    collect(root, {"StationText", "QQuickText"}, found);
    found.removeIf([](const QQuickItem* item) { return !item->isVisible(); });
    return found;
}

QRectF Stage::area(const QQuickItem* item)
{
    return item->mapRectToScene(QRectF(QPointF(), item->size()));
}
