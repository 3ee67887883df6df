#include "DressingTables.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillmere {

const std::array<TapeRating, 4>& DressingTables::ratings()
{
    static const std::array<TapeRating, 4> rows{{
        {u"P.G."_s, u"PUBLIC GOVERNANCE — all citizens admitted"_s},
        {u"N.R."_s, u"NO RECESS — mature deliberation"_s},
        {u"Q.M."_s, u"QUORUM MET — viewer discretion advised"_s},
        {u"F.O.I.A."_s, u"FREEDOM OF INFO APPROVED"_s},
    }};
    return rows;
}

const std::array<QString, 8>& DressingTables::taglines()
{
    static const std::array<QString, 8> rows{
        u"The fog rolls in. The record rolls on."_s,
        u"One agenda. One lantern. No do-overs."_s,
        u"They came for the minutes. They stayed for the motion."_s,
        u"Every vote leaves a wake."_s,
        u"The public record — uncut, unrated, un-rewound."_s,
        u"Somewhere past the murk, the truth makes quorum."_s,
        u"This session, the water rises."_s,
        u"Captain Lowe lifts the fog — you take the notes."_s,
    };
    return rows;
}

const std::array<QString, 12>& DressingTables::monthNames()
{
    static const std::array<QString, 12> names{u"January"_s,   u"February"_s, u"March"_s,    u"April"_s,
                                               u"May"_s,       u"June"_s,     u"July"_s,     u"August"_s,
                                               u"September"_s, u"October"_s,  u"November"_s, u"December"_s};
    return names;
}

const DressingTables::Genre& DressingTables::genreOf(QStringView loweredText)
{
    struct Rule
    {
        std::array<QStringView, 2> keywords; ///< the second may be empty
        Genre genre;
    };
    static const std::array<Rule, 7> rules{{
        {{u"work session", u"study"}, {u"CIVIC SLOW-BURN"_s, u"Slow Burn & Study Sessions"_s}},
        {{u"planning", u"zoning"}, {u"URBAN PLANNING EPIC"_s, u"City-Building Epics"_s}},
        {{u"budget", u"finance"}, {u"HIGH-STAKES BUDGET HEIST"_s, u"Money on the Table"_s}},
        {{u"commission", {}}, {u"COMMISSION NOIR"_s, u"After Dark: Commission Noir"_s}},
        {{u"committee", {}}, {u"COMMITTEE PROCEDURAL"_s, u"Procedurals"_s}},
        {{u"board", {}}, {u"BOARDROOM THRILLER"_s, u"Boardroom Thrillers"_s}},
        {{u"council", {}}, {u"CHAMBER DRAMA"_s, u"Chamber Drama — New Releases"_s}},
    }};
    static const Genre unmatched{u"PUBLIC RECORD FEATURE"_s, u"Staff Picks"_s};

    const auto rule = std::find_if(rules.begin(), rules.end(), [loweredText](const Rule& candidate) {
        return std::any_of(candidate.keywords.begin(), candidate.keywords.end(), [loweredText](QStringView keyword) {
            return !keyword.isEmpty() && loweredText.contains(keyword);
        });
    });
    return rule == rules.end() ? unmatched : rule->genre;
}

} // namespace quillmere
