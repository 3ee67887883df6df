#include "SharedPictures.h"

#include <QCache>
#include <QList>
#include <QMutex>

namespace quillmere {

namespace {

struct Entry
{
    SharedPictures::Key key;
    std::weak_ptr<const QImage> picture;
};

/** The most recently used small images, which are kept without a user. */
using LatestPictures = QCache<const QImage*, SharedPictures::Picture>;

/** Makes `picture` the most recently used one if it is small. */
void keepLatest(LatestPictures& latest, const SharedPictures::Picture& picture)
{
    if (picture->sizeInBytes() <= SharedPictures::maxUnusedPictureBytes && !latest.object(picture.get()))
        latest.insert(picture.get(), new SharedPictures::Picture(picture), picture->sizeInBytes());
}

} // namespace

SharedPictures::Picture SharedPictures::get(const Key& key, const std::function<QImage()>& paint)
{
    static QMutex mutex; // each window may have its own render thread
    static QList<Entry> entries;
    static LatestPictures latest(maxUnusedBytes);
    const QMutexLocker lock(&mutex);
    entries.removeIf([](const Entry& entry) { return entry.picture.expired(); });
    for (const Entry& entry : std::as_const(entries)) {
        if (entry.key == key) {
            const Picture picture = entry.picture.lock();
            if (!picture)
                break;
            keepLatest(latest, picture);
            return picture;
        }
    }
    const auto picture = std::make_shared<const QImage>(paint());
    entries.append({key, picture});
    keepLatest(latest, picture);
    return picture;
}

} // namespace quillmere
