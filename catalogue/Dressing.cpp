#include "Dressing.h"

#include "DressingTables.h"
#include "Graphemes.h"
#include "Text.h"

#include <QDate>
#include <QSet>
#include <QStringBuilder>

#include <algorithm>
#include <charconv>
#include <limits>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr quint32 fnvOffsetBasis = 0x811C9DC5;
constexpr quint32 fnvPrime = 0x01000193;

quint32 addToHash(quint32 hash, char16_t unit)
{
    return (hash ^ unit) * fnvPrime;
}

quint32 addToHash(quint32 hash, QStringView text)
{
    for (const QChar unit : text)
        hash = addToHash(hash, unit.unicode());
    return hash;
}

/** The text without blanks at either end. If there are none, the result shares the storage of `text`. */
QString trimmed(const QString& text)
{
    const QStringView rest = trimmedText(text);
    return rest.size() == text.size() ? text : rest.toString();
}

QString titleOf(const Tape& tape)
{
    const QString title = trimmed(tape.title);
    return title.isEmpty() ? u"Untitled Recording"_s : title;
}

bool isDash(QChar unit)
{
    return unit == u'-' || unit == u'–' || unit == u'—';
}

bool isSeparatorAt(QStringView text, qsizetype index)
{
    return isDash(text[index]) && Graphemes::isWholeCharacter(text, index);
}

/** The first non-empty part of a title that is split at dashes. Empty if there is none. */
QStringView firstTitleSegment(QStringView title)
{
    qsizetype start = 0;
    while (start < title.size() && isSeparatorAt(title, start))
        ++start;
    qsizetype end = start;
    while (end < title.size() && !isSeparatorAt(title, end))
        ++end;
    return title.sliced(start, end - start);
}

QString bodyNameFromTitle(const QString& title)
{
    const QStringView name = trimmedText(firstTitleSegment(title));
    if (name.isEmpty() || name.size() == title.size())
        return title;
    return Graphemes::count(name) < Graphemes::count(title) ? name.toString() : title;
}

bool isStrippedFromSpine(QChar unit)
{
    return unit == u' ' || isDash(unit) || unit == u':' || unit == u'·';
}

/** The title without the body's name at its start and without the separators after the name. */
QStringView withoutBodyName(QStringView title, QStringView bodyName)
{
    const qsizetype characters = Graphemes::count(bodyName);
    QStringView rest = title.sliced(Graphemes::prefixLength(title, characters).value_or(title.size()));
    while (!rest.isEmpty() && isStrippedFromSpine(rest.front()) && Graphemes::isWholeCharacter(rest, 0))
        rest = rest.sliced(1);
    return trimmedText(rest);
}

/**
 * The names on a tape's cassette, and their lower-case forms. Texts for hashing (`fullTitle`, `hueKey`) are complete.
 * Texts that are searched or shown are truncated.
 */
struct Names
{
    QString fullTitle;
    QString title;
    QString bodyName;
    QString hueKey;
    QString loweredTitle;
    QString loweredBodyName;
};

Names namesOf(const Tape& tape)
{
    Names names;
    names.fullTitle = titleOf(tape);
    names.title = truncatedText(names.fullTitle, maxTextLength);
    const bool hasName = tape.body && !tape.body->name.isEmpty();
    const QString bodyName = hasName ? tape.body->name : bodyNameFromTitle(names.title);
    names.bodyName = truncatedText(bodyName, maxTextLength);
    const bool hasSlug = tape.body && !tape.body->slug.isEmpty();
    names.hueKey = hasSlug ? tape.body->slug : bodyName;
    names.loweredTitle = names.title.toLower();
    names.loweredBodyName = names.bodyName.toLower();
    return names;
}

/** Joins parts that are already lower-case, because toLower() of each part gives the same as toLower() of the whole. */
const DressingTables::Genre& genreOf(const Names& names, const Tape& tape)
{
    const QString loweredKind = tape.body ? tape.body->kind.toLower() : QString();
    const QString text = names.loweredTitle % u' ' % names.loweredBodyName % u' ' % loweredKind;
    return DressingTables::genreOf(text);
}

QString yearOf(const std::optional<QString>& meetingDate)
{
    if (meetingDate) {
        if (const auto length = Graphemes::prefixLength(*meetingDate, 4))
            return meetingDate->first(*length);
    }
    return u"19XX"_s;
}

/**
 * The date at the start of a text, in English: "2024-03-05T19:00" gives "March 5, 2024". Empty if the first ten
 * characters are not a Gregorian date as year-month-day in ASCII digits.
 */
QString dateLabelOf(QStringView text)
{
    constexpr QStringView format = u"0000-00-00";
    const QStringView date = text.first(std::min(text.size(), format.size()));
    // A combining mark after the tenth code unit belongs to the tenth character, which then is not a digit.
    if (!matchesFormat(date, format) || Graphemes::prefixLength(text, format.size()) != format.size())
        return {};
    const QStringView year = date.first(4);
    const int month = digitsToInt(date.sliced(5, 2));
    const int day = digitsToInt(date.sliced(8, 2));
    if (!QDate::isValid(digitsToInt(year), month, day))
        return {};
    return DressingTables::monthNames()[size_t(month) - 1] % u' ' % QString::number(day) % u", "_s % year;
}

int runtimeOf(quint32 seed)
{
    return int(seed % 173) + 42;
}

/** The tape speed for a recording of `runtime` minutes: the longer the recording, the slower the tape. */
QString speedOf(int runtime)
{
    if (runtime <= 95)
        return u"SP"_s;
    return runtime <= 150 ? u"LP"_s : u"EP"_s;
}

/** The row whose index is the seed, as a signed integer, arithmetically shifted right, modulo the table's size. */
template<typename Table>
const auto& pick(const Table& table, quint32 seed, int shift)
{
    const int size = int(table.size());
    const int index = qint32(seed) >> shift;
    return table[size_t((index % size + size) % size)];
}

QString spineTitleOf(const Names& names, const QString& dateLabel)
{
    if (names.bodyName.isEmpty() || !names.loweredTitle.startsWith(names.loweredBodyName))
        return names.title;
    const QStringView rest = withoutBodyName(names.title, names.bodyName);
    if (!rest.isEmpty())
        return rest.toString();
    return dateLabel.isEmpty() ? names.title : dateLabel;
}

QString catalogNoOf(quint32 seed, const QString& speed)
{
    return u"RW "_s % QString::number(seed % 8999 + 1000) % u" · "_s % speed;
}

QString synopsisOf(const QString& bodyName, const QString& dateLabel, bool hasAgenda)
{
    const QString on = dateLabel.isEmpty() ? QString() : u" on "_s;
    const QString feature = hasAgenda ? u"SPECIAL FEATURE: the original agenda packet is enclosed on this tape."_s
                                      : u"Recorded live off the public record — no agenda packet located."_s;
    return u"When "_s % bodyName % u" convenes"_s % on % dateLabel %
           u", First Mate Coral dives for the sunken agenda while Captain Lowe raises his lantern over the murk of "
           u"civic jargon. Tally tallies every vote from the wheelhouse of the steamboat \"Public Record.\" "_s %
           feature %
           u" Captain Lowe and his crew sail the municipal waterways, lifting the fog off the public record so anyone "
           u"can follow along."_s;
}

QList<int> barcodeOf(quint32 seed)
{
    constexpr int bars = 28;
    QList<int> widths(bars);
    for (int& width : widths) {
        seed = (seed ^ (seed >> 15)) * 0x85EBCA77U;
        width = int(seed & 3) + 1;
    }
    return widths;
}

} // namespace

quint32 fnv1a32(QStringView text)
{
    return addToHash(fnvOffsetBasis, text);
}

quint32 dressingSeed(qint64 id, QStringView title)
{
    std::array<char, std::numeric_limits<qint64>::digits10 + 2> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), id).ptr;
    quint32 hash = fnvOffsetBasis;
    for (const char* digit = digits.data(); digit != end; ++digit)
        hash = addToHash(hash, char16_t(*digit));
    return addToHash(addToHash(hash, u'|'), title);
}

VHSCover dress(const Tape& tape)
{
    const Names names = namesOf(tape);
    const quint32 seed = dressingSeed(tape.id, names.fullTitle);
    const DressingTables::Genre& genre = genreOf(names, tape);

    VHSCover cover;
    cover.id = tape.id;
    cover.title = names.title;
    cover.bodyName = names.bodyName;
    cover.genre = genre.genre;
    cover.shelf = genre.shelf;
    cover.year = yearOf(tape.meetingDate);
    cover.dateLabel = tape.meetingDate ? dateLabelOf(*tape.meetingDate) : QString();
    cover.runtime = runtimeOf(seed);
    cover.speed = speedOf(cover.runtime);
    cover.rating = pick(DressingTables::ratings(), seed, 3);
    cover.tagline = pick(DressingTables::taglines(), seed, 7);
    cover.hue = DressingTables::hues[fnv1a32(names.hueKey) % DressingTables::hues.size()];
    cover.spineTitle = spineTitleOf(names, cover.dateLabel);
    cover.catalogNo = catalogNoOf(seed, cover.speed);
    cover.synopsis = synopsisOf(cover.bodyName, cover.dateLabel, tape.hasAgenda);
    cover.barcode = barcodeOf(seed);
    cover.hasAgenda = tape.hasAgenda;
    cover.hasTranscript = tape.hasTranscript;
    return cover;
}

QList<Shelf> buildShelves(const QList<Tape>& tapes)
{
    TapesByID tapesByID;
    tapesByID.reserve(tapes.size());
    QList<Shelf> shelves;
    for (const Tape& tape : tapes) {
        VHSCover cover = dress(tape);
        tapesByID.insert(tape.id, tape);
        auto shelf = std::find_if(shelves.begin(), shelves.end(),
                                  [&cover](const Shelf& candidate) { return candidate.name == cover.shelf; });
        if (shelf == shelves.end())
            shelf = shelves.insert(shelf, Shelf{cover.shelf, {}, {}});
        shelf->covers.append(std::move(cover));
    }
    for (Shelf& shelf : shelves)
        shelf.tapesByID = tapesByID;
    return shelves;
}

QString bodySummary(const QList<VHSCover>& covers)
{
    constexpr qsizetype shown = 2;
    QSet<QString> names;
    QStringList first;
    for (const VHSCover& cover : covers) {
        const bool isRepeated = names.contains(cover.bodyName);
        names.insert(cover.bodyName);
        if (!isRepeated && first.size() < shown)
            first.append(cover.bodyName);
    }
    QString summary = first.join(u" · "_s);
    if (names.size() > shown)
        summary += u" +"_s % QString::number(names.size() - shown) % u" more"_s;
    return summary;
}

} // namespace quillmere
