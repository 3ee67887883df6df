#include "TapeVisit.h"

#include "Picture.h"
#include "Shop.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto limit = 30s; // for what takes a few seconds, on a busy machine

/** The first second of a recording is as black as a screen that shows none. */
std::optional<int> secondIn(const QImage& picture)
{
    const auto seconds = picture::recordedSeconds(picture);
    return seconds > 0 ? seconds : std::nullopt;
}

} // namespace

bool TapeVisit::open(qint64 tape, std::optional<double> kept)
{
    m_tape = tape;
    const shop::Place place = shop::placeOf(m_hub, tape);
    m_room.switchOn(u"/dev/stderr"_s, kept ? QMap<qint64, double>{{tape, *kept}} : QMap<qint64, double>());
    if (!shop::open(m_room))
        return false;
    shop::walk(m_room, {}, place);
    m_room.press(u"select"_s);
    return reads(shop::detailFacts, u"self-hosted"_s);
}

QString TapeVisit::title()
{
    for (const Shelf& shelf : shop::shelves(m_hub)) {
        for (const VHSCover& cover : shelf.covers) {
            if (cover.id == m_tape)
                return cover.title;
        }
    }
    return {};
}

bool TapeVisit::reads(const QRectF& area, const QString& text, std::chrono::seconds limit)
{
    const bool read = m_room.waitForText(area, text, limit);
    if (!read)
        m_room.screen().look().save(u"journey-seen.png"_s);
    return read;
}

std::optional<int> TapeVisit::second()
{
    return secondIn(m_room.screen().look());
}

std::optional<int> TapeVisit::secondAfter(std::optional<int> last)
{
    std::optional<int> next;
    m_room.screen().waitUntil(
        [&](const QImage& picture) {
            next = secondIn(picture);
            return next && next != last;
        },
        limit);
    return next != last ? next : std::nullopt;
}

bool TapeVisit::playsTo(int second)
{
    return m_room.screen().waitUntil([=](const QImage& picture) { return secondIn(picture).value_or(0) >= second; },
                                     limit);
}

bool TapeVisit::waits()
{
    // What a playing recording writes there changes once a second.
    constexpr int turns = 5;
    const QRect place = picture::pixels(m_room.screen().size(), wheel);
    return m_room.screen().waitUntil(
        [&](const QImage& picture) {
            return m_room.screen().count(1200ms, place).pictures >= turns && second() == secondIn(picture);
        },
        limit);
}
