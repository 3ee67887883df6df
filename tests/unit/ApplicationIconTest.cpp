#include "ApplicationIcon.h"
#include "SvgPicture.h"
#include "TestMain.h"

#include <QFile>
#include <QPainter>
#include <QPainterPath>
#include <QTest>

namespace quillmere {

/** Tests the installed application icon. */
class ApplicationIconTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void iconFileEqualsIconDrawnByProgram()
    {
        QFile file(QStringLiteral(QUILLMERE_SOURCES "/packaging/desktop/quillmere-tv.svg"));
        QVERIFY(file.open(QFile::ReadOnly));
        const QByteArray drawn = svgOf(&ApplicationIcon::paint, ApplicationIcon::side);
        QVERIFY2(file.readAll() == drawn, "create it again with: cmake --build build/release --target icon");
    }

    void curveAndTransparentColourAreWrittenAsSvg()
    {
        const QByteArray svg = svgOf([](QPainter& painter) {
            painter.setRenderHint(QPainter::Antialiasing);
            QPainterPath path(QPointF(1, 2));
            path.cubicTo(1, 3, 2, 4, 3, 4);
            path.lineTo(1, 2);
            painter.fillPath(path, QColor(255, 0, 16, 51));
        });
        QVERIFY2(svg.contains(R"(<path d="M1 2C1 3 2 4 3 4Z" fill="#ff0010" fill-opacity="0.2"/>)"), svg.constData());
    }

    void numbersHaveAtMostTwoDecimals()
    {
        const QByteArray svg = svgOf([](QPainter& painter) {
            painter.scale(1.0 / 3, 0.5);
            painter.fillRect(QRectF(1, 1, 1, 1), Qt::white);
        });
        QVERIFY2(svg.contains("M0.33 0.5L0.67 0.5L0.67 1L0.33 1Z"), svg.constData());
    }

private:
    static QByteArray svgOf(const std::function<void(QPainter&)>& draw, int side = 10)
    {
        SvgPicture picture(side);
        QPainter painter(&picture);
        draw(painter);
        painter.end();
        return picture.svg();
    }
};

QUILLMERE_TEST(ApplicationIconTest, QGuiApplication)

} // namespace quillmere

#include "ApplicationIconTest.moc"
