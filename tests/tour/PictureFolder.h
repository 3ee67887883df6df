#pragma once

#include <QImage>
#include <QString>

namespace quillmere::tour {

/** The tour's pictures of one screen size, written to a folder with numbered names. */
class PictureFolder
{
public:
    /** Deletes the folder's pictures; throws std::runtime_error with a readable message if it cannot be written. */
    explicit PictureFolder(const QString& folder);

    void add(const QString& name, const QImage& picture);

private:
    QString m_folder;
    int m_count = 0;
};

/** Writes a contact sheet of all pictures in the folder and its subfolders, labelled with their file names. */
void writeContactSheet(const QString& folder);

} // namespace quillmere::tour
