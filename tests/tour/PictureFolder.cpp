#include "PictureFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QPainter>
#include <QRegularExpression>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace quillmere::tour {

namespace {

const QString sheetName = u"contact-sheet.png"_s;
constexpr int columns = 6;
constexpr QSize cell(384, 216); // one picture, in pixels
constexpr int caption = 28;     // pixels
constexpr int gap = 12;

void save(const QImage& picture, const QString& file)
{
    if (!picture.save(file, "PNG", 80)) // low compression takes a tenth of the time
        throw std::runtime_error((file + " cannot be written."_L1).toStdString());
}

QStringList picturesBelow(const QString& folder)
{
    QStringList files;
    QDirIterator iterator(folder, {u"*.png"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        const QString file = QDir(folder).relativeFilePath(iterator.next());
        if (file != sheetName)
            files.append(file);
    }
    files.sort();
    return files;
}

void drawCell(QPainter& painter, const QPoint& corner, const QImage& picture, const QString& label)
{
    const QImage small = picture.scaled(cell, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    painter.drawImage(corner, small);
    const QRect below(corner.x(), corner.y() + cell.height(), cell.width(), caption);
    const QString text = painter.fontMetrics().elidedText(label, Qt::ElideMiddle, cell.width());
    painter.drawText(below, Qt::AlignLeft | Qt::AlignVCenter, text);
}

} // namespace

PictureFolder::PictureFolder(const QString& folder) : m_folder(folder)
{
    QDir().mkpath(folder);
    for (const QString& old : QDir(folder).entryList({u"*.png"_s}, QDir::Files))
        QFile::remove(folder + u'/' + old);
}

void PictureFolder::add(const QString& name, const QImage& picture)
{
    static const QRegularExpression others(u"[^a-z0-9]+"_s);
    const QString file = u"%1-%2.png"_s.arg(++m_count, 3, 10, QChar(u'0')).arg(name.toLower().replace(others, u"-"_s));
    save(picture, m_folder + u'/' + file);
}

void writeContactSheet(const QString& of)
{
    const QString folder = QDir(of).absolutePath();
    const QStringList files = picturesBelow(folder);
    const int rows = int(files.size() + columns - 1) / columns;
    QImage sheet(gap + columns * (cell.width() + gap), gap + rows * (cell.height() + caption + gap),
                 QImage::Format_RGB32);
    sheet.fill(QColor(32, 32, 36));
    QPainter painter(&sheet);
    painter.setPen(Qt::white);
    QFont font = painter.font();
    font.setPixelSize(17);
    painter.setFont(font);
    for (int i = 0; i < files.size(); ++i) {
        const QPoint corner(gap + (i % columns) * (cell.width() + gap),
                            gap + (i / columns) * (cell.height() + caption + gap));
        drawCell(painter, corner, QImage(folder + u'/' + files[i]), files[i].chopped(4));
    }
    painter.end();
    save(sheet, folder + u'/' + sheetName);
}

} // namespace quillmere::tour
