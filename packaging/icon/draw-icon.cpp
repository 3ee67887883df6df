// Writes the program's icon as an SVG file: draw-icon FILE.svg

#include "ApplicationIcon.h"
#include "SvgPicture.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>

#include <cstdio>

int main(int argc, char* argv[])
{
    using namespace quillmere;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("draw-icon FILE.svg\n", stderr);
        return 2;
    }
    SvgPicture picture(ApplicationIcon::side);
    QPainter painter(&picture);
    ApplicationIcon::paint(painter);
    painter.end();

    QFile file(QFile::decodeName(argv[1]));
    if (file.open(QFile::WriteOnly) && file.write(picture.svg()) == picture.svg().size() && file.flush())
        return 0;
    std::fprintf(stderr, "%s: %s\n", argv[1], qPrintable(file.errorString()));
    return 1;
}
