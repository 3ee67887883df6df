#include "RandomGenerator.h"
#include "Transcripts.h"

#include <array>
#include <sstream>

namespace quillmere::demo {

namespace {

constexpr std::size_t wordsPerCaption = 10;
constexpr std::size_t sentencesPerSpeaker = 5;
const std::string closingSentence = "We stand adjourned.";
constexpr std::size_t closingWords = 3;

const std::array<const char*, 20> people = {
    "Abernathy", "Broome",    "Castellane", "Dunmore", "Eriksen",  "Fenn", "Garrity", "Hale",   "Ibarra",  "Jessop",
    "Kowalczyk", "Lindqvist", "Marchetti",  "Nwosu",   "Oyelaran", "Pike", "Ruddock", "Stroud", "Tamblyn", "Vane"};

const std::array<const char*, 20> places = {
    "Ferry Street",        "the north mole", "Mill Creek",       "the old cannery", "the grange hall",
    "the fire station",    "Lantern Hill",   "the lower meadow", "Station Road",    "the weir",
    "the skating pond",    "Cooper's Yard",  "the reservoir",    "the bus depot",   "the cemetery gate",
    "the school crossing", "Gull Point",     "the salt shed",    "the bandstand",   "the east culvert"};

const std::array<const char*, 20> things = {
    "street lamps",  "storm drains",       "benches",        "the snow plow", "the siren",
    "crosswalks",    "mooring posts",      "the water main", "hydrants",      "bicycle racks",
    "the flag pole", "drinking fountains", "the boiler",     "fences",        "the retaining wall",
    "shade trees",   "parking meters",     "the bell",       "sidewalks",     "the pump house"};

const std::array<const char*, 12> months = {"January", "February", "March",     "April",   "May",      "June",
                                            "July",    "August",   "September", "October", "November", "December"};

// Placeholders: %p a person, %l a location, %t a thing, %m a month, %d an amount in dollars, %n a number.
const std::array<const char*, 36> sentences = {
    "The chair recognizes Member %p.",
    "Thank you, chair, and thank you to the staff for the report.",
    "I have walked past %l every day since %m and nothing has been done about %t.",
    "The estimate for %t at %l comes to %d dollars.",
    "That is %d dollars more than we were told in %m.",
    "Is that with or without the contingency of %n percent?",
    "I would ask the clerk to read docket %n into the record.",
    "The record will show that Member %p left the room and came back.",
    "We have %n letters in favor and %n against, and one that is about something else.",
    "Ms. %p, you have two minutes, please begin when you are ready.",
    "My name is %p, I live near %l, and I have come about %t.",
    "When it rains the water stands as high as the second step at %l.",
    "I do not say that %t should go, I only say that they should go somewhere else.",
    "Staff recommends that the matter be continued to the second meeting in %m.",
    "Could we hear from the engineer about the grade at %l?",
    "The grade is about %n feet in a hundred, which is steep for a cart.",
    "If we put it off until %m the price will only go up.",
    "I move to approve the contract for %t in an amount not to exceed %d dollars.",
    "Second.",
    "It has been moved by %p and seconded by %p.",
    "Is there any discussion on the motion?",
    "I will vote for it, but I want it noted that I asked about %l first.",
    "All in favor say aye.",
    "Aye.",
    "Any opposed?",
    "The motion carries, %n to two.",
    "The motion fails for want of a second.",
    "We will take that up under new business, after the item on %t.",
    "The public hearing on %t is now open.",
    "Seeing no one at the microphone, the hearing is closed.",
    "Member %p has a question about page %n of the packet.",
    "On page %n it says %l, and I believe that it ought to say %l.",
    "The grant pays for half of %t, and the other half is ours to find.",
    "The crew was out at %l for %n nights in %m.",
    "I would like to thank the volunteers who painted %t.",
    "Let us take five minutes, and then go on with %l."};

std::string fillPattern(const char* pattern, RandomGenerator& random)
{
    std::string text;
    for (const char* at = pattern; *at; ++at) {
        if (*at != '%') {
            text += *at;
            continue;
        }
        switch (*++at) {
        case 'p':
            text += random.oneOf(people);
            break;
        case 'l':
            text += random.oneOf(places);
            break;
        case 't':
            text += random.oneOf(things);
            break;
        case 'm':
            text += random.oneOf(months);
            break;
        case 'd':
            text += std::to_string(1 + random.below(380)) + "," + std::to_string(100 + random.below(900));
            break;
        default:
            text += std::to_string(3 + random.below(96));
            break;
        }
    }
    return text;
}

/// Collects words into caption lines. A line ends when it is full or when the speaker changes.
class Captions
{
public:
    explicit Captions(std::string opening) : m_text(std::move(opening))
    {
        if (!m_text.empty() && m_text.back() != '\n') {
            m_text += '\n';
        }
        std::istringstream words(m_text);
        for (std::string word; words >> word;) {
            ++m_words;
        }
    }

    std::size_t words() const { return m_words; }
    std::string take() { return std::move(m_text); }

    void add(const std::string& sentence)
    {
        std::istringstream words(sentence);
        for (std::string word; words >> word; ++m_words) {
            if (m_onLine == wordsPerCaption) {
                newLine();
            }
            m_text += (m_onLine++ ? " " : "") + word;
        }
    }

    void newLine()
    {
        if (m_onLine > 0) {
            m_text += '\n';
            m_onLine = 0;
        }
    }

private:
    std::string m_text;
    std::size_t m_words = 0;
    std::size_t m_onLine = 0;
};

std::size_t wordsIn(const std::string& sentence)
{
    std::istringstream words(sentence);
    std::size_t count = 0;
    for (std::string word; words >> word;) {
        ++count;
    }
    return count;
}

} // namespace

std::string generateTranscript(const SampleTape& tape, const std::string& beginning)
{
    RandomGenerator random(static_cast<std::uint64_t>(tape.id) * 2654435761u);
    Captions captions(beginning);
    for (std::size_t turn = 0; captions.words() + closingWords < tape.transcriptWords; ++turn) {
        std::string sentence = fillPattern(random.oneOf(sentences), random);
        if (turn % sentencesPerSpeaker == 0) {
            captions.newLine();
            sentence.insert(0, std::string("MEMBER ").append(random.oneOf(people)).append(": "));
        }
        const bool fits = captions.words() + wordsIn(sentence) + closingWords <= tape.transcriptWords;
        captions.add(fits ? sentence : "Aye.");
    }
    captions.newLine();
    captions.add(closingSentence);
    captions.newLine();
    return captions.take();
}

} // namespace quillmere::demo
