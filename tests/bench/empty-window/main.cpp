// The yardstick of ./bench: an empty Qt Quick window of the screen's size that changes colour at each key.

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int count, char** arguments)
{
    QGuiApplication application(count, arguments);
    QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/empty-window/EmptyWindow.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
