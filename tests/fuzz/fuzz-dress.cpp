#include "Dressing.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace quillmere {

namespace {

void demand(bool holds)
{
    if (!holds)
        std::abort();
}

/** Reads the fields of a tape from the start of the fuzzer's bytes. */
class Bytes
{
public:
    Bytes(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}

    template<typename T>
    T number()
    {
        T value{};
        const size_t length = std::min(m_size, sizeof value);
        std::memcpy(&value, m_data, length);
        skip(length);
        return value;
    }

    /** Reads UTF-16 code units unchanged, unpaired surrogates included. */
    QString text()
    {
        const size_t units = std::min<size_t>(number<uint8_t>(), m_size / 2);
        QString result(qsizetype(units), Qt::Uninitialized);
        std::memcpy(result.data(), m_data, units * 2);
        skip(units * 2);
        return result;
    }

private:
    void skip(size_t length)
    {
        m_data += length;
        m_size -= length;
    }

    const uint8_t* m_data;
    size_t m_size;
};

Tape tapeFrom(Bytes& bytes)
{
    const auto present = bytes.number<uint8_t>();
    Tape tape;
    tape.id = bytes.number<qint64>();
    tape.title = bytes.text();
    if (present & 1)
        tape.meetingDate = bytes.text();
    if (present & 2) {
        tape.body.emplace();
        tape.body->slug = bytes.text();
        tape.body->name = bytes.text();
        tape.body->kind = bytes.text();
    }
    // The title often starts with the body's name. Removing that name again is the most complex step of dress().
    if (present & 4 && tape.body)
        tape.title.prepend(tape.body->name);
    tape.hasAgenda = present & 8;
    tape.hasTranscript = present & 16;
    return tape;
}

void demandWellFormedCover(const VHSCover& cover, const Tape& tape)
{
    demand(cover.id == tape.id && cover.hasAgenda == tape.hasAgenda && cover.hasTranscript == tape.hasTranscript);
    demand(!cover.title.isEmpty() && !cover.spineTitle.isEmpty() && !cover.bodyName.isEmpty());
    demand(!cover.genre.isEmpty() && !cover.shelf.isEmpty() && !cover.tagline.isEmpty());
    demand(!cover.rating.code.isEmpty() && !cover.rating.full.isEmpty());
    demand(cover.year.size() >= 4);
    demand(cover.runtime >= 42 && cover.runtime <= 214);
    demand(cover.hue >= 4 && cover.hue <= 330);
    demand(cover.catalogNo.size() == 12 && cover.catalogNo.endsWith(cover.speed));
    demand(cover.barcode.size() == 28);
    demand(std::all_of(cover.barcode.begin(), cover.barcode.end(), [](int width) { return width >= 1 && width <= 4; }));
    demand(cover.synopsis.contains(cover.bodyName) && cover.synopsis.contains(cover.dateLabel));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Bytes bytes(data, size);
    const Tape tape = tapeFrom(bytes);
    const VHSCover cover = dress(tape);
    demandWellFormedCover(cover, tape);
    demand(dress(tape) == cover);

    const QList<Shelf> shelves = buildShelves({tape, tape});
    demand(shelves.size() == 1 && shelves.first().covers == QList<VHSCover>({cover, cover}));
    demand(shelves.first().tapesByID.size() == 1);
    demand(bodySummary(shelves.first().covers) == cover.bodyName);
    return 0;
}

} // namespace quillmere
