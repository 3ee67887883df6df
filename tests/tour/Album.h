#pragma once

#include <QImage>
#include <QString>

namespace tour {

/** The tour's pictures of one screen size, numbered in a folder. */
class Album
{
public:
    /** Empties the folder's pictures; throws std::runtime_error with a sentence when it cannot be written. */
    explicit Album(const QString& folder);

    void add(const QString& name, const QImage& picture);

private:
    QString m_folder;
    int m_count = 0;
};

/** Lays all pictures of the folder and of those in it on one sheet, labelled by their file names. */
void makeContactSheet(const QString& folder);

} // namespace tour
