#include "SharedPictures.h"

#include <QList>
#include <QMutex>

namespace {

struct Entry
{
    SharedPictures::Subject subject;
    std::weak_ptr<const QImage> picture;
};

/** Moves `picture` to the front of the kept images, and removes the oldest beyond the limit. */
void keepLatest(QList<SharedPictures::Picture>& latest, const SharedPictures::Picture& picture)
{
    latest.removeOne(picture);
    if (picture->sizeInBytes() > SharedPictures::maxUnusedPictureBytes)
        return;
    latest.prepend(picture);
    qint64 bytes = 0;
    for (qsizetype i = 0; i < latest.size(); ++i) {
        bytes += latest.at(i)->sizeInBytes();
        if (bytes > SharedPictures::maxUnusedBytes)
            latest.resize(i);
    }
}

} // namespace

SharedPictures::Picture SharedPictures::get(const Subject& subject, const std::function<QImage()>& paint)
{
    static QMutex mutex; // each window may have its own render thread
    static QList<Entry> entries;
    static QList<Picture> latest;
    const QMutexLocker lock(&mutex);
    entries.removeIf([](const Entry& entry) { return entry.picture.expired(); });
    for (const Entry& entry : std::as_const(entries)) {
        if (entry.subject == subject) {
            const Picture picture = entry.picture.lock();
            if (!picture)
                break;
            keepLatest(latest, picture);
            return picture;
        }
    }
    const auto picture = std::make_shared<const QImage>(paint());
    entries.append({subject, picture});
    keepLatest(latest, picture);
    return picture;
}
