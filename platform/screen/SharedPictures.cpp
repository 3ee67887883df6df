#include "SharedPictures.h"

#include <QList>
#include <QMutex>

namespace {

struct Known
{
    SharedPictures::Subject subject;
    std::weak_ptr<const QImage> picture;
};

/** Holds the latest pictures as far as they fit. */
void hold(QList<SharedPictures::Picture>& latest, const SharedPictures::Picture& picture)
{
    latest.removeOne(picture);
    if (picture->sizeInBytes() > SharedPictures::largestUnshown)
        return;
    latest.prepend(picture);
    qint64 bytes = 0;
    for (qsizetype i = 0; i < latest.size(); ++i) {
        bytes += latest.at(i)->sizeInBytes();
        if (bytes > SharedPictures::keptUnshown)
            latest.resize(i);
    }
}

} // namespace

SharedPictures::Picture SharedPictures::get(const Subject& subject, const std::function<QImage()>& paint)
{
    static QMutex mutex; // a render thread is a window's
    static QList<Known> known;
    static QList<Picture> latest;
    const QMutexLocker lock(&mutex);
    known.removeIf([](const Known& one) { return one.picture.expired(); });
    for (const Known& one : std::as_const(known)) {
        if (one.subject == subject) {
            const Picture picture = one.picture.lock();
            if (!picture)
                break;
            hold(latest, picture);
            return picture;
        }
    }
    const auto picture = std::make_shared<const QImage>(paint());
    known.append({subject, picture});
    hold(latest, picture);
    return picture;
}
