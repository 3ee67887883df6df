#include "PlaybackTexts.h"

#include "ClockText.h"
#include "HubError.h"
#include "Text.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

QString languageText(const QString& language)
{
    const QLocale::Language known = QLocale::codeToLanguage(language.section(u'-', 0, 0));
    return known == QLocale::AnyLanguage || known == QLocale::C ? QString() : QLocale::languageToString(known);
}

} // namespace

QString remainingText(double position, double duration)
{
    return u'-' + clockText(std::floor(duration) - std::floor(position));
}

QString scrubbingText(int speed)
{
    return (speed < 0 ? u"Rewind %1×"_s : u"Fast forward %1×"_s).arg(std::abs(speed));
}

QString trackText(const MediaTrack& track)
{
    if (!track.title.isEmpty())
        return shortenedLine(track.title);
    const QString language = languageText(track.language);
    return language.isEmpty() ? u"Track %1"_s.arg(track.id) : language;
}

QString failureText(const std::optional<VideoFailure>& failure)
{
    using enum VideoFailure::Cause;
    switch (failure ? failure->cause : Unknown) {
    case Unknown:
        break;
    case NoPlugin:
        return u"The player couldn't be started."_s;
    case NoPicture:
        return u"This set has no way to show the picture."_s;
    case BadAddress:
        return u"The tape's address can't be opened."_s;
    case Status:
        return HubError::http(failure->httpStatus).errorDescription();
    case Refused:
        return u"The connection was refused."_s;
    case Certificate:
        return u"The hub's certificate isn't valid."_s;
    case TimedOut:
        return u"The hub stopped answering."_s;
    case Network:
        return u"The hub couldn't be reached."_s;
    case Unplayable:
        return u"What the hub sent can't be played."_s;
    case BrokenStream:
        return u"The tape broke off, and the hub doesn't give the rest."_s;
    }
    return {};
}

QList<MetadataItem> metadataItems(const VHSCover& cover)
{
    using enum MetadataItem::Identifier;
    const MetadataItem all[] = {
        {Title, cover.title},
        {SubTitle, cover.genre + u" · "_s + cover.bodyName},
        {Description, cover.synopsis},
        {Publisher, u"Rewindery Home Video"_s},
    };
    QList<MetadataItem> items;
    for (const MetadataItem& item : all) {
        if (!item.value.isEmpty())
            items.append(item);
    }
    return items;
}

} // namespace quillmere
