#include "TapeVisit.h"

#include "Picture.h"
#include "Shop.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr auto limit = 30s; // for actions that take a few seconds, on a busy machine

/** The second shown in the picture. Second 0 is as black as an empty screen, so it counts as none. */
std::optional<int> secondIn(const QImage& picture)
{
    const auto seconds = picture::recordedSeconds(picture);
    return seconds > 0 ? seconds : std::nullopt;
}

} // namespace

bool TapeVisit::open(qint64 tape, std::optional<double> savedPosition)
{
    m_tape = tape;
    const shop::Position shopPosition = shop::positionOf(m_hub, tape);
    m_viewer.switchOn(u"/dev/stderr"_s,
                      savedPosition ? QMap<qint64, double>{{tape, *savedPosition}} : QMap<qint64, double>());
    if (!shop::open(m_viewer))
        return false;
    shop::moveFocus(m_viewer, {}, shopPosition);
    m_viewer.press(u"select"_s);
    return waitForText(shop::detailFacts, u"self-hosted"_s);
}

QString TapeVisit::expectedTitle()
{
    for (const Shelf& shelf : shop::shelves(m_hub)) {
        for (const VHSCover& cover : shelf.covers) {
            if (cover.id == m_tape)
                return cover.title;
        }
    }
    return {};
}

bool TapeVisit::waitForText(const QRectF& area, const QString& text, std::chrono::seconds limit)
{
    const bool read = m_viewer.waitForText(area, text, limit);
    if (!read)
        m_viewer.screen().grab().save(u"journey-seen.png"_s);
    return read;
}

std::optional<int> TapeVisit::shownSecond()
{
    return secondIn(m_viewer.screen().grab());
}

std::optional<int> TapeVisit::waitForNextSecond(std::optional<int> last)
{
    std::optional<int> next;
    m_viewer.screen().waitUntil(
        [&](const QImage& picture) {
            next = secondIn(picture);
            return next && next != last;
        },
        limit);
    return next != last ? next : std::nullopt;
}

bool TapeVisit::waitForSecond(int second)
{
    return m_viewer.screen().waitUntil([=](const QImage& picture) { return secondIn(picture).value_or(0) >= second; },
                                       limit);
}

bool TapeVisit::waitForSpinner()
{
    // The spinner changes the picture several times a second; a playing recording changes it there once a second.
    constexpr int turns = 5;
    const QRect area = picture::pixels(m_viewer.screen().size(), spinner);
    return m_viewer.screen().waitUntil(
        [&](const QImage& picture) {
            return m_viewer.screen().count(1200ms, area).pictures >= turns && shownSecond() == secondIn(picture);
        },
        limit);
}

} // namespace quillmere
