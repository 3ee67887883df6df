// Yardstick of ./bench: an empty Qt Quick window of the screen's size that changes its colour at every key press.

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int count, char** arguments)
{
    QGuiApplication application(count, arguments);
    QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/empty-window/EmptyWindow.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
