#include "RandomGenerator.h"
#include "SampleTape.h"

#include <chrono>
#include <cstdio>

namespace quillmere::demo {

namespace {

constexpr std::int64_t newestId = 7240;
constexpr std::int64_t singleShelfNewestId = 12000; // apart from the other ids: transcripts are cached by tape id
constexpr std::size_t longestTranscriptWords = 60000;
constexpr std::size_t longestTranscriptAt = 5; // the sixth tape of the list

struct Genre
{
    const char* kind;
    std::array<Body, 3> bodies; // one for each market
    const char* fixedTitle;     // part of every title, or empty
};

// One row for each shelf. Keywords in the names decide the shelf, so a row's names must not contain the keywords of
// another row.
const std::array<Genre, 8> genres = {{
    {"council",
     {{{"city-council", "City Council", ""},
       {"town-council", "Town Council", ""},
       {"village-council", "Village Council", ""}}},
     ""},
    {"commission",
     {{{"planning-commission", "Planning Commission", ""},
       {"zoning-appeals", "Zoning Appeals", ""},
       {"planning-commission", "Planning Commission", ""}}},
     ""},
    {"board",
     {{{"school-board", "School Board", ""},
       {"ferry-board", "Ferry Board", ""},
       {"board-of-trustees", "Board of Trustees", ""}}},
     ""},
    {"commission",
     {{{"harbor-commission", "Harbor Commission", ""},
       {"shellfish-commission", "Shellfish Commission", ""},
       {"water-commission", "Water Commission", ""}}},
     ""},
    {"committee",
     {{{"budget-committee", "Budget Committee", ""},
       {"finance-committee", "Finance Committee", ""},
       {"budget-committee", "Budget Committee", ""}}},
     ""},
    {"committee",
     {{{"library-committee", "Library Committee", ""},
       {"parks-committee", "Parks Committee", ""},
       {"railroad-committee", "Railroad Committee", ""}}},
     ""},
    {"council",
     {{{"city-council", "City Council", ""},
       {"town-council", "Town Council", ""},
       {"village-council", "Village Council", ""}}},
     "Work Session"},
    {"assembly",
     {{{"town-assembly", "Town Assembly", ""},
       {"citizens-forum", "Citizens' Forum", ""},
       {"water-users-assembly", "Water Users' Assembly", ""}}},
     ""},
}};

const std::array<const char*, 20> topics = {"The Fog Horn",
                                            "Mill Creek Footbridge",
                                            "Ferry Fares",
                                            "The Library Roof",
                                            "Salt for the Winter",
                                            "Night Trains",
                                            "The Pie Fair",
                                            "Street Trees",
                                            "Beavers at the Weir",
                                            "Parking on Ferry Street",
                                            "The Clock Tower",
                                            "Short-Term Rentals",
                                            "Bees in the Bell Tower",
                                            "The Old Cannery",
                                            "Storm Drains",
                                            "Bus Route 9",
                                            "The Skating Pond",
                                            "Noise after Ten",
                                            "Well No. 4",
                                            "Names for the New Bridge"};

const std::array<const char*, 6> halls = {"Council Chamber, Town Hall", "Grange Hall, 12 Ferry Street",
                                          "Library, upper floor",       "Fire Station No. 2",
                                          "School gymnasium",           "Net Loft, North Mole"};

const std::array<const char*, 7> papers = {
    "Minutes of the last meeting", "Staff report",    "Map of the site",  "Letters received",
    "Engineer's survey",           "Draft ordinance", "Treasurer's table"};

std::string titleFor(const Genre& genre, const std::string& bodyName, RandomGenerator& random)
{
    const std::string topic = random.oneOf(topics);
    if (*genre.fixedTitle) {
        return random.below(2) ? bodyName + " " + genre.fixedTitle + " - " + topic
                               : bodyName + " — " + genre.fixedTitle + ": " + topic;
    }
    switch (random.below(6)) {
    case 0:
        return bodyName + " Regular Meeting";
    case 1:
        return bodyName + " - " + topic;
    case 2:
        return bodyName + ": Special Meeting on " + topic;
    case 3:
        return bodyName + " – Public Hearing, " + topic;
    case 4:
        return bodyName + " — " + topic;
    default:
        return bodyName + " - Regular Meeting, " + topic;
    }
}

/// The date of tape `index` of `count`: dates are spread evenly from the middle of 2026 back to the start of 2019.
std::string dateFor(std::size_t index, std::size_t count, RandomGenerator& random)
{
    using namespace std::chrono;
    const sys_days newest = 2026y / June / 24;
    const sys_days oldest = 2019y / January / 15;
    const auto span = static_cast<std::size_t>((newest - oldest).count());
    const std::size_t step = span / count;
    const year_month_day day{newest - days{static_cast<int>(index * step + random.below(step))}};
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    return text.data();
}

std::vector<Document> documentsFor(bool hasAgenda, RandomGenerator& random)
{
    std::vector<Document> documents;
    if (hasAgenda) {
        documents.push_back({"agenda", "Agenda packet"});
    }
    const std::size_t more = random.below(6);
    const std::size_t first = random.below(papers.size());
    for (std::size_t i = 0; i < more; ++i) {
        documents.push_back({"exhibit", papers[(first + i) % papers.size()]});
    }
    return documents;
}

SampleTape ordinaryTape(const std::array<Market, 3>& markets, const Genre& genre, std::size_t index, std::size_t count)
{
    RandomGenerator random(20190115 + index);
    SampleTape tape;
    const std::size_t town = index % markets.size();
    tape.id = newestId - static_cast<std::int64_t>(index);
    tape.market = &markets[town];
    tape.body = Body{markets[town].slug + "-" + genre.bodies[town].slug, genre.bodies[town].name, genre.kind};
    tape.title = titleFor(genre, tape.body->name, random);
    tape.date = dateFor(index, count, random);
    tape.recording = recordingNames[(index + index / genres.size()) % recordingNames.size()];
    tape.stream = recordingPath(tape.recording);
    tape.sizeBytes = static_cast<std::int64_t>(80'000'000 + random.below(3'400'000'000));
    tape.hasAgenda = random.below(3) > 0;
    tape.location = random.oneOf(halls);
    tape.documents = documentsFor(tape.hasAgenda, random);
    if (index < genres.size() || random.below(6) > 0) {
        tape.transcript = TranscriptState::Archived;
        tape.transcriptWords = index == longestTranscriptAt ? longestTranscriptWords : 3000 + random.below(6000);
    }
    return tape;
}

} // namespace

std::string recordingPath(const std::string& recording)
{
    return "/recordings/" + recording + "/index.m3u8";
}

std::vector<SampleTape> ordinaryTapes(const std::array<Market, 3>& markets, std::size_t count)
{
    std::vector<SampleTape> tapes;
    for (std::size_t i = 0; i < count; ++i) {
        tapes.push_back(ordinaryTape(markets, genres[i % genres.size()], i, count));
    }
    return tapes;
}

std::vector<SampleTape> singleShelfTapes(const std::array<Market, 3>& markets, std::size_t count)
{
    std::vector<SampleTape> tapes;
    for (std::size_t i = 0; i < count; ++i) {
        tapes.push_back(ordinaryTape(markets, genres.front(), i, count));
        tapes.back().id = singleShelfNewestId - static_cast<std::int64_t>(i);
    }
    return tapes;
}

} // namespace quillmere::demo
