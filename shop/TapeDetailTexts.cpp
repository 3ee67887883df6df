#include "TapeDetailTexts.h"

#include "ClockText.h"
#include "Text.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <charconv>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr double megabyte = 1048576;
constexpr double megabytesPerGigabyte = 1024;
constexpr qsizetype maxDocumentTitles = 3;
constexpr qsizetype maxShownLength = 4000; // UTF-16 units, about 50 lines; limits the length of the page

// std::to_chars rounds exact ties to even; QString::number() rounds them up.
QString fixed(double value, int decimals)
{
    std::array<char, 40> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals).ptr;
    return QString::fromLatin1(digits.data(), end - digits.data());
}

} // namespace

QString TapeDetailTexts::play(double resumePosition)
{
    return resumePosition > 0 ? u"Resume at "_s + clockText(resumePosition) : u"Push it in"_s;
}

QString TapeDetailTexts::title(const VHSCover& cover)
{
    return shortenedText(cover.title, maxShownLength);
}

QString TapeDetailTexts::synopsis(const VHSCover& cover)
{
    return shortenedText(cover.synopsis, maxShownLength);
}

QString TapeDetailTexts::runtimeBadge(const VHSCover& cover)
{
    return QString::number(cover.runtime) + u" MIN"_s;
}

QString TapeDetailTexts::speedBadge(const VHSCover& cover)
{
    return cover.speed + u" MODE"_s;
}

QString TapeDetailTexts::agendaBadge(const VHSCover& cover)
{
    return cover.hasAgenda ? u"◈ AGENDA ENCLOSED"_s : QString();
}

QString TapeDetailTexts::tagline(const VHSCover& cover)
{
    return u'“' + cover.tagline + u'”';
}

QString TapeDetailTexts::catalogueLine(const VHSCover& cover)
{
    return u"Cat. "_s + cover.catalogNo + u" · "_s + cover.rating.full;
}

QString TapeDetailTexts::size(qint64 bytes)
{
    const double megabytes = double(bytes) / megabyte;
    const QString amount = megabytes >= megabytesPerGigabyte ? fixed(megabytes / megabytesPerGigabyte, 1) + u" GB"_s
                                                             : fixed(megabytes, 0) + u" MB"_s;
    return amount + u" · self-hosted"_s;
}

QString TapeDetailTexts::documents(const QList<TapeDocument>& documents)
{
    QStringList titles;
    for (const TapeDocument& document : documents.first(std::min(maxDocumentTitles, documents.size())))
        titles.append(shortenedText(document.title));
    const qsizetype more = documents.size() - titles.size();
    return titles.join(u" · "_s) + (more > 0 ? u" +"_s + QString::number(more) + u" more"_s : QString());
}

QList<TapeFact> TapeDetailTexts::facts(const Tape& tape, const VHSCover& cover)
{
    QList<TapeFact> facts{{u"BODY"_s, shortenedText(cover.bodyName, maxShownLength)}};
    const auto addUnlessEmpty = [&facts](const QString& label, const QString& value) {
        if (!value.isEmpty())
            facts.append({label, shortenedText(value, maxShownLength)});
    };
    addUnlessEmpty(u"RECORDED"_s, cover.dateLabel);
    addUnlessEmpty(u"MARKET"_s, tape.market.name);
    addUnlessEmpty(u"LOCATION"_s, tape.location);
    facts.append({u"TAPE SIZE"_s, size(tape.sizeBytes)});
    facts.append({u"TRANSCRIPT"_s, tape.hasTranscript ? u"Searchable transcript on file (CC)"_s : u"None harvested"_s});
    if (!tape.documents.isEmpty())
        facts.append({u"BONUS MATERIALS"_s, documents(tape.documents)});
    return facts;
}

} // namespace quillmere
