#pragma once

namespace quillmere {

/** Texts that the program shows to viewers. Texts that never change are in StationTexts instead. */
// clang-format off
inline constexpr const char16_t* viewerTexts[] = {
    u"The tower is lit — tune in.", u"Next broadcast · ",
    u"The tower is dark. Colour bars and a countdown until it isn't.", u"Checking what's on the shelf…", u"1 market",
    u" markets", u" tapes in stock · ", u" · every one plays right here",
    u"Tuning in…", u"Press ▶︎ to refresh", u"5 O'Clock News",
    u"Channel ", u"CHECKING THE TOWER…", u"TRANSMISSION WILL RESUME — THIS SET IS WATCHING THE TOWER",
    u"no broadcast scheduled", u"last on the schedule · ", u"THIS IS THE 5 O'CLOCK NEWS · QUILLMERE TELEVISION · ",
    u"   ·   ", u"channels", u"1d 01:01:01", u"23:59:59", u"Rewindery", u"HOME VIDEO", u"Rewindery Home Video",
    u" — ", u"A Captain Lowe of the Waterways Production", u". ", u"Be Kind, Please Rewind.",
    u" tapes in stock — pull one off the shelf and push it into the set. Every tape here plays on this television.",
    u"Search the stacks", u"All markets", u"Checking the shelves…", u"No tapes on the shelf for this view.",
    u"Try again", u"2019–2026", u"F.O.I.A.", u"FREEDOM OF INFO APPROVED", u"N.R.", u"NO RECESS — mature deliberation",
    u"P.G.", u"PUBLIC GOVERNANCE — all citizens admitted", u"Q.M.", u"QUORUM MET — viewer discretion advised", u"X",
    u"RATED ", u"TRACKING", u"SP", u"LP", u"EP", u" MODE", u" MIN", u" MIN · ", u"CC", u"19XX", u"RW ", u"Cat. ",
    u"BOARDROOM THRILLER", u"CHAMBER DRAMA", u"CIVIC SLOW-BURN", u"COMMISSION NOIR", u"COMMITTEE PROCEDURAL",
    u"HIGH-STAKES BUDGET HEIST", u"PUBLIC RECORD FEATURE", u"URBAN PLANNING EPIC", u"After Dark: Commission Noir",
    u"Boardroom Thrillers", u"Chamber Drama — New Releases", u"City-Building Epics", u"Money on the Table",
    u"Procedurals", u"Slow Burn & Study Sessions", u"Staff Picks", u"Untitled Recording",
    u"Captain Lowe and his crew sail the municipal waterways, lifting the fog off the public record so anyone can follow along.",
    u"Captain Lowe lifts the fog — you take the notes.", u"Every vote leaves a wake.",
    u"One agenda. One lantern. No do-overs.", u"Somewhere past the murk, the truth makes quorum.",
    u"The fog rolls in. The record rolls on.", u"This session, the water rises.",
    u"The public record — uncut, unrated, un-rewound.", u"They came for the minutes. They stayed for the motion.",
    u"When ", u" convenes", u" on ",
    u", First Mate Coral dives for the sunken agenda while Captain Lowe raises his lantern over the murk of civic jargon. Tally tallies every vote from the wheelhouse of the steamboat ",
    u"Recorded live off the public record — no agenda packet located.",
    u"SPECIAL FEATURE: the original agenda packet is enclosed on this tape.",
    u"A name, a street, a motion — titles and spoken transcripts both.", u"No tapes match “",
    u"”. Try a different word.", u"1 tape found", u"12 tapes found", u"Search", u"Back to the shelves",
    u"Back to the tape", u"Body", u"Market", u"Location", u"Recorded", u"Transcript", u"Bonus materials",
    u"Tape size", u"archived", u"None harvested", u"Push it in", u"Resume at 1:02:05", u"Start over",
    u"Read the transcript", u"◈ AGENDA ENCLOSED", u"Searchable transcript on file (CC)", u"“…”",
    u"0 MB · self-hosted", u"1.0 GB · self-hosted", u"A · B · C +2 more", u"January 3, 2024", u"THE SPOKEN RECORD · ",
    u"Pulling the transcript…", u"Couldn't reach the transcript. ",
    u"No transcript has been harvested for this tape yet.", u" words",
    u"This tape has no playable copy on the shelf.", u"The tape wouldn't play. It may still be being archived.",
    u"That address didn't resolve.", u"The hub answered ", u"The hub sent something this app couldn't read.",
};
// clang-format on

} // namespace quillmere
